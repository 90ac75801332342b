#include "host/console/listing.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "browser/fakes/fake_driver.h"

namespace tovar::host {
namespace {

std::string lineOf(const test::Member& member) {
    test::FakeDriver driver;
    driver.members = {member};
    driver.SetArcFile(L"a.zip");
    std::string line;
    appendLine(line, driver, 0);
    return line;
}

std::string jsonOf(const test::Member& member) {
    test::FakeDriver driver;
    driver.members = {member};
    driver.SetArcFile(L"a.zip");
    std::string json;
    appendJsonEntry(json, driver, 0);
    return json;
}

TEST(ListLine, HasEveryFieldInItsPlace) {
    const test::Member member{
        .storedName = L"docs/read me.txt", .original = 1234567, .packed = 524691, .ratio = 425, .crc = 0x1A2B3C4D};
    EXPECT_EQ(std::string(kListHeading),
              "      Original         Packed   Ratio  Date      Time      Attr  Type     CRC   Name\n");
    EXPECT_EQ(lineOf(member),
              "     1,234,567        524,691   42.5%  01/05/17  17:30:29  a--w  Deflate  3C4D  docs\\read me.txt\n");
}

TEST(ListLine, IsOneLineWhateverTheName) {
    const std::string line = lineOf({.storedName = L"a\x1B]0;title\x07\nb"});
    EXPECT_TRUE(line.ends_with("  a?]0;title??b\n")) << line;
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
}

TEST(ListJson, HasNumbersAsNumbers) {
    const test::Member member{
        .storedName = L"docs/a\nb", .original = 5368709120, .packed = 3, .ratio = -1, .crc = 0xABCD};
    EXPECT_EQ(jsonOf(member),
              R"({"path":"docs\\","name":"a\u000ab","original":5368709120,"packed":3,"ratio":-0.1,)"
              R"("date":"2001-05-17","time":"17:30:58","attributes":"a--w","type":"Deflate","crc":"0000abcd"})");
}

TEST(ListJson, HasNothingForWhatIsNoDateOrTime) {
    const std::string json = jsonOf({.storedName = L"a", .date = 0, .time = 0xFFFF});
    EXPECT_NE(json.find(R"("date":null,"time":null,)"), std::string::npos) << json;
}

}  // namespace
}  // namespace tovar::host
