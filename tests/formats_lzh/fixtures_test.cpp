#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"
#include "formats_lzh/support/lzh_builder.h"

/// Archives that old archivers made.
namespace archiver::test {
namespace {

using Contents = std::vector<std::string>;

/// Name, method, size and CRC-32 of what each member unpacks to.
Contents contents(const OpenResult& opened) {
    Contents result;
    EXPECT_EQ(opened.code, kOk);
    if (!opened.reader) return result;
    Member member;
    ReturnCode code = kOk;
    while ((code = opened.reader->next(member)) == kOk) {
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_EQ(unpacked.code, kOk) << member.name;
        char crc[16];
        std::snprintf(crc, sizeof(crc), "%08x", static_cast<unsigned>(crc32OneBitAtATime(unpacked.bytes)));
        result.push_back(member.name + ' ' + member.method + ' ' + std::to_string(unpacked.bytes.size()) + ' ' + crc);
    }
    EXPECT_EQ(code, kNoMoreEntries);
    return result;
}

Contents contentsOf(const char* name) { return contents(openLzh(dataFile(std::string("lzh/") + name))); }

struct MethodCase {
    const char* name;
    const char* file;
    const char* line;
};

class LzhMethods : public testing::TestWithParam<MethodCase> {};

// All hold one text or its compressed form, the last two filled up to whole records; 7zz unpacks those with methods
// that it knows.
TEST_P(LzhMethods, AreUnpacked) { EXPECT_EQ(contentsOf(GetParam().file), (Contents{GetParam().line})); }

INSTANTIATE_TEST_SUITE_P(Archivers, LzhMethods,
                         testing::Values(MethodCase{"Lh1", "lh1.lzh", "gpl-2 -lh1- 18092 4e46f4a1"},
                                         MethodCase{"Lh4", "lh4.lzh", "gpl-2 -lh4- 18092 4e46f4a1"},
                                         MethodCase{"Lh5", "lh5-level3.lzh", "GPL-2 -lh5- 18092 4e46f4a1"},
                                         MethodCase{"Lh6", "lh6-level2.lzh", "gpl-2 -lh6- 18092 4e46f4a1"},
                                         MethodCase{"Lh7", "lh7-level1.lzh", "gpl-2 -lh7- 18092 4e46f4a1"},
                                         MethodCase{"Lz4", "lz4.lzs", "GPL-2.GZ -lz4- 6829 e4690583"},
                                         MethodCase{"Lz5", "lz5.lzs", "GPL-2 -lz5- 18092 4e46f4a1"},
                                         MethodCase{"Lzs", "lzs.lzs", "GPL-2 -lzs- 18092 4e46f4a1"},
                                         MethodCase{"Pm0", "pm0.pma", "GPL-2.GZ -pm0- 6912 549d935a"},
                                         MethodCase{"Pm2", "pm2.pma", "GPL-2. -pm2- 18176 8e2093a7"},
                                         MethodCase{"Mac", "mac-lh5-level1.lzh", "gpl-2 -lh5- 18092 4e46f4a1"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(LzhFixtures, OfPm1AreUnpacked) {
    const OpenResult opened = openLzh(dataFile("lzh/pm1.pma"));
    const Unpacked unpacked = unpack(*opened.reader, "COPYING.TXT");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes.size(), 25284U);
    EXPECT_EQ(crc16OneBitAtATime(unpacked.bytes), 0xE582);
}

TEST(LzhFixtures, WithFoldersAreListed) {
    EXPECT_EQ(contentsOf("unix-folders-level1.lzh"),
              (Contents{"subdir/ -lhd- 0 00000000", "subdir/subdir2/ -lhd- 0 00000000",
                        "subdir/subdir2/hello.txt -lh0- 12 af083b2d"}));
    EXPECT_EQ(contentsOf("osk-level2.lzh"), (Contents{"subdir/ -lhd- 0 00000000", "subdir/subdir2/ -lhd- 0 00000000",
                                                      "subdir/subdir2/hello.txt -lh0- 12 af083b2d"}));
    EXPECT_EQ(contentsOf("os2-folders-level3.lzh"),
              (Contents{"subdir/ -lhd- 0 00000000", "subdir/subdir2/ -lhd- 0 00000000",
                        "subdir/subdir2/HELLO.TXT -lh0- 14 b19b306e"}));
}

TEST(LzhFixtures, WithALinkAreListed) {
    EXPECT_EQ(contentsOf("link-level2.lzh"), (Contents{"symlink -lhd- 0 00000000"}));
    const Listing listing = walk(openLzh(dataFile("lzh/link-level2.lzh")));
    EXPECT_EQ(listing.members.at(0).attributes & attribute::kFolder, 0);
}

TEST(LzhFixtures, HaveTheirFields) {
    const TimeZone zone("UTC0");
    const Listing listing = walk(openLzh(dataFile("lzh/lh6-level2.lzh")));
    ASSERT_EQ(listing.members.size(), 1U);
    const Member& member = listing.members[0];
    EXPECT_EQ(member.packedSize, 6832U);
    EXPECT_EQ(member.originalSize, 18092U);
    EXPECT_EQ(member.crc, 0xA33AU);
    EXPECT_EQ(member.osType, os_type::kUnix);
    EXPECT_EQ(member.written.value().seconds, 1262304000);
    EXPECT_EQ(member.dosDate, 30 << 9 | 1 << 5 | 1);
    EXPECT_EQ(member.dosTime, 0);
}

/// A larger archive, where there is one: TOVAREX_SAMPLES names the folder above its own.
TEST(LzhSamples, AreRead) {
    const char* const folder = std::getenv("TOVAREX_SAMPLES");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP();
    Contents found = contents(openLzh(std::filesystem::path(folder) / "made" / "lh5.lzh"));
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (Contents{"docs/a,b.txt -lh0- 19 68b36e1a", "empty.txt -lh0- 0 00000000",
                               "readme.txt -lh0- 29 9da46e34", "src/lib/noise.bin -lh0- 70000 d1e384e1",
                               "src/lib/zeros.bin -lh5- 300000 f6b2e2fb", "src/main.c -lh5- 1160 c28acd00"}));
}

}  // namespace
}  // namespace archiver::test
