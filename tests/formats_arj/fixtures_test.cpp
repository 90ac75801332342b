#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Archives that another program made.
namespace archiver::test {
namespace {

using Contents = std::vector<std::string>;

/// Name, method, size and checksum of what comes out.
Contents contents(OpenResult opened, const std::string& password = {}) {
    Contents result;
    if (!opened.reader) return result;
    static_cast<ArjArchive&>(*opened.reader).setPassword(password);
    Member member;
    ReturnCode code = kOk;
    while ((code = opened.reader->next(member)) == kOk) {
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_EQ(unpacked.code, kOk) << member.name;
        EXPECT_EQ(unpacked.bytes.size(), member.originalSize) << member.name;
        char crc[16];
        std::snprintf(crc, sizeof(crc), "%08x", static_cast<unsigned>(crc32OneBitAtATime(unpacked.bytes)));
        result.push_back(member.name + ' ' + member.method + ' ' + std::to_string(unpacked.bytes.size()) + ' ' + crc);
    }
    EXPECT_EQ(code, kNoMoreEntries);
    std::sort(result.begin(), result.end());
    return result;
}

// What is expected is as 7zz lists and tests it.

TEST(ArjFixtures, OfAllMethodsAreRead) {
    EXPECT_EQ(contents(openArj(dataFile("arj/methods.arj"))),
              (Contents{"method1/novel.txt Method1 16004 8c44a0ba", "method2/main.c Method2 1160 c28acd00",
                        "method3/zeros.bin Method3 300000 f6b2e2fb", "method4/main.c Method4 1160 c28acd00",
                        "method4/novel.txt Method4 12005 73fbb476", "stored/empty.txt Stored 0 00000000",
                        "stored/readme.txt Stored 29 9da46e34"}));
}

TEST(ArjFixtures, GiveTheirText) {
    const OpenResult opened = openArj(dataFile("arj/methods.arj"));
    EXPECT_EQ(unpack(*opened.reader, "stored/readme.txt").bytes, "A short text.\r\nSecond line.\r\n");
    EXPECT_EQ(unpack(*opened.reader, "method2/main.c").bytes.substr(0, 29), "int main(void) { return 0; }\n");
    EXPECT_EQ(unpack(*opened.reader, "method4/novel.txt").bytes.substr(0, 32), "del naoo ie ddnurutan alilnsai u");
}

TEST(ArjFixtures, HaveTheirFields) {
    const TimeZone zone("UTC0");
    const Listing listing = walk(openArj(dataFile("arj/methods.arj")));
    ASSERT_EQ(listing.members.size(), 7U);
    const Member& member = listing.members[1];
    EXPECT_EQ(member.name, "method2/main.c");
    EXPECT_EQ(member.packedSize, 47U);
    EXPECT_EQ(member.osType, os_type::kUnix);
    EXPECT_EQ(member.attributes, 0);
    EXPECT_EQ(member.written.value().seconds, 990120658);
    EXPECT_EQ(member.dosDate, 21 << 9 | 5 << 5 | 17);
    EXPECT_EQ(member.dosTime, 17 << 11 | 30 << 5 | 29);
}

TEST(ArjFixtures, WithAPasswordAreRead) {
    EXPECT_EQ(contents(openArj(dataFile("arj/garbled.arj")), "secret"),
              (Contents{"docs/a,b.txt Method1 19 68b36e1a", "docs/my file.txt Method1 18 bea93d61",
                        "readme.txt Method1 29 9da46e34"}));
    const OpenResult opened = openArj(dataFile("arj/garbled.arj"));
    EXPECT_EQ(unpack(*opened.reader, "readme.txt").code, kPasswordFile);
    static_cast<ArjArchive&>(*opened.reader).setPassword("guess");
    EXPECT_EQ(unpack(*opened.reader, "readme.txt").code, kPasswordFile);
}

/// Larger archives of the same kind, where there are some: TOVAREX_SAMPLES names the folder above theirs.
class ArjSamples : public testing::Test {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("TOVAREX_SAMPLES");
        if (folder == nullptr || *folder == '\0') GTEST_SKIP();
        folder_ = std::filesystem::path(folder) / "made";
    }
    [[nodiscard]] std::filesystem::path sample(const char* name) const { return folder_ / name; }

private:
    std::filesystem::path folder_;
};

TEST_F(ArjSamples, AreRead) {
    EXPECT_EQ(contents(openArj(sample("plain.arj"))),
              (Contents{"docs/a,b.txt Stored 19 68b36e1a", "docs/my file.txt Stored 18 bea93d61",
                        "docs/old notes/novel.txt Method1 387180 3c836193", "empty.txt Stored 0 00000000",
                        "readme.txt Stored 29 9da46e34", "src/lib/noise.bin Stored 70000 d1e384e1",
                        "src/lib/zeros.bin Method1 300000 f6b2e2fb", "src/main.c Method1 1160 c28acd00"}));
    EXPECT_EQ(contents(openArj(sample("fastest.arj"))),
              (Contents{"docs/a,b.txt Stored 19 68b36e1a", "docs/my file.txt Stored 18 bea93d61",
                        "docs/old notes/novel.txt Method4 387180 3c836193", "empty.txt Stored 0 00000000",
                        "readme.txt Stored 29 9da46e34", "src/lib/noise.bin Stored 70000 d1e384e1",
                        "src/lib/zeros.bin Method4 300000 f6b2e2fb", "src/main.c Method4 1160 c28acd00"}));
}

}  // namespace
}  // namespace archiver::test
