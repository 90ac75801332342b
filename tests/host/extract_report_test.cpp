#include "host/console/extract_report.h"

#include <gtest/gtest.h>

#include "host/console/progress_line.h"

namespace tovar::host {
namespace {

std::string reported(const ExtractResult& result, bool json) {
    std::string out;
    appendResult(out, L"/a.zip", L"/out", result, json);
    return out;
}

TEST(ExtractReport, GivesTheLibrarysLines) {
    EXPECT_EQ(reported({.text = L"one\r\ntwo\nthree"}, false), "one\ntwo\nthree\n");
    EXPECT_EQ(reported({.text = L"a\x1B[2Jb\r\n\r\n"}, false), "a?[2Jb\n\n");
    EXPECT_EQ(reported({.text = L"much", .cut = true}, false), "much\n[More...]\n");
    EXPECT_EQ(reported({}, false), "");
}

TEST(ExtractReport, IsAJsonObject) {
    EXPECT_EQ(reported({.text = L"one\r\ntwo\r\n"}, true),
              R"({"archive":"/a.zip","to":"/out","good":true,"code":0,"message":"","output":["one","two"],"cut":false})"
              "\n");
    EXPECT_EQ(reported({.code = 0x800C, .message = L"Archive file CRC error", .failed = true}, true),
              R"({"archive":"/a.zip","to":"/out","good":false,"code":32780,"message":"Archive file CRC error",)"
              R"("output":[],"cut":false})"
              "\n");
    EXPECT_NE(reported({.code = 2}, true).find("\"good\":true"), std::string::npos) << "two members were skipped";
    EXPECT_NE(reported({.nothingChosen = true}, true).find("\"good\":false"), std::string::npos);
}

struct Recorder final : ConsoleOutput {
    std::string out, errors;
    void write(std::string_view text) override { out += text; }
    void writeError(std::string_view text) override { errors += text; }
    bool errorsAreSeen() const override { return true; }
};

TEST(ProgressLine, IsWrittenOverAndErased) {
    Recorder output;
    {
        ProgressLine line(output);
        line.show({.state = ExtractProgress::State::Open});
        EXPECT_EQ(output.errors, "") << "nothing is known yet";
        line.show({.state = ExtractProgress::State::Begin, .member = L"a.txt", .size = 10});
        line.show({.member = L"a.txt", .size = 10, .written = 7});
        line.show({.member = L"a.txt", .size = 10, .written = 7});
        line.show({.member = L"b", .written = 3});
    }
    EXPECT_EQ(output.errors, "\r\x1B[Ka.txt  0 of 10 bytes\r\x1B[Ka.txt  7 of 10 bytes\r\x1B[Kb  3 bytes\r\x1B[K");
    EXPECT_EQ(output.out, "");
}

TEST(ProgressLine, CutsLongNamesInFront) {
    Recorder output;
    ProgressLine line(output);
    line.show({.member = std::wstring(60, L'x') + L".txt"});
    EXPECT_EQ(output.errors, "\r\x1B[K..." + std::string(41, 'x') + ".txt  0 bytes");
}

TEST(ProgressLine, ShowsNoControlCharacters) {
    Recorder output;
    ProgressLine line(output);
    line.show({.member = L"a\x1B]0;title\x07"});
    EXPECT_EQ(output.errors, "\r\x1B[Ka?]0;title?  0 bytes");
}

TEST(ProgressLine, ShowsHowMuchOfTheWholeIsDone) {
    Recorder output;
    ProgressLine line(output);
    line.showShare(L"a.txt", 7);
    line.showShare(L"a.txt", 7);
    EXPECT_EQ(output.errors, "\r\x1B[Ka.txt  7%");
}

TEST(ChangeReport, NamesTheFolderThatFilesComeFrom) {
    const ExtractResult result{.code = 5, .message = L"no", .text = L"one\r\ntwo", .failed = true};
    std::string out;
    appendChange(out, L"a.zip", L"/base", result, true);
    EXPECT_EQ(out,
              "{\"archive\":\"a.zip\",\"from\":\"/base\",\"good\":false,\"code\":5,\"message\":\"no\","
              "\"output\":[\"one\",\"two\"],\"cut\":false}\n");
    out.clear();
    appendChange(out, L"a.zip", {}, {}, true);
    EXPECT_EQ(out, "{\"archive\":\"a.zip\",\"good\":true,\"code\":0,\"message\":\"\",\"output\":[],\"cut\":false}\n");
    out.clear();
    appendChange(out, L"a.zip", L"/base", result, false);
    EXPECT_EQ(out, "one\ntwo\n");
}

}  // namespace
}  // namespace tovar::host
