#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "archivers/formats/cab/cab_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// Cabinets that other programs made.
namespace archiver::test {
namespace {

// Expected is what 7zz unpacks.

TEST(CabFixtures, OfAllMethodsAreUnpacked) {
    const OpenResult opened = openCab(dataFile("cab/mszip_lzx_qtm.cab"));
    ASSERT_EQ(opened.code, kOk);
    const Listing listing = walk(*opened.reader);
    ASSERT_EQ(listing.names(), (std::vector<std::string>{"mszip.txt", "lzx.txt", "qtm.txt"}));
    EXPECT_EQ(listing.members[0].method, "MSZIP");
    EXPECT_EQ(listing.members[1].method, "LZX");
    EXPECT_EQ(listing.members[2].method, "Quantum");
    EXPECT_EQ(unpack(*opened.reader, "mszip.txt").bytes, "If you can read this, the MSZIP decompressor is working!\n");
    const std::string line(65, '-');
    const Unpacked lzx = unpack(*opened.reader, "lzx.txt");
    EXPECT_EQ(lzx.code, kOk);
    EXPECT_EQ(lzx.bytes, line + "\nIf you can read this, the LZX decompressor is working!\n" + line + "\n");
    EXPECT_EQ(unpack(*opened.reader, "qtm.txt").bytes, "If you can read this, the Quantum decompressor is working!\n");
}

TEST(CabFixtures, HaveTheirFields) {
    const Listing listing = walk(openCab(dataFile("cab/mszip_lzx_qtm.cab")));
    ASSERT_EQ(listing.members.size(), 3U);
    const Member& member = listing.members[1];
    EXPECT_EQ(member.originalSize, 187U);
    EXPECT_EQ(member.packedSize, 114U);
    EXPECT_EQ(member.crc, 0U);
    EXPECT_EQ(member.osType, os_type::kMsDos);
    EXPECT_EQ(member.attributes, attribute::kArchive);
    EXPECT_EQ(member.dosDate, 17 << 9 | 3 << 5 | 12);
    EXPECT_EQ(member.dosTime, 11 << 11 | 13 << 5 | 26);
    EXPECT_FALSE(member.written.has_value());
}

TEST(CabFixtures, WithTwoFoldersAreListed) {
    const Listing listing = walk(openCab(dataFile("cab/normal_2files_2folders.cab")));
    EXPECT_EQ(listing.names(), (std::vector<std::string>{"mszip1.txt", "mszip2.txt", "lzx1.txt", "lzx2.txt"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
}

TEST(CabFixtures, OfASetAreJoined) {
    for (const char* name :
         {"cab/cabd_multi_basic_pt1.cab", "cab/cabd_multi_basic_pt3.cab", "cab/cabd_multi_basic_pt5.cab"}) {
        const OpenResult opened = openCab(dataFile(name));
        ASSERT_EQ(opened.code, kOk);
        const Listing listing = walk(*opened.reader);
        EXPECT_EQ(listing.names(), (std::vector<std::string>{"test1.txt", "test2.txt", "test3.txt"})) << name;
        EXPECT_EQ(listing.members.at(0).packedSize, 76U);
        const std::string part = "This is the data from cabinet part ";
        EXPECT_EQ(unpack(*opened.reader, "test1.txt").bytes, part + "1.\n" + part + "2.\n") << name;
        EXPECT_EQ(unpack(*opened.reader, "test2.txt").bytes, part + "3.\n") << name;
        EXPECT_EQ(unpack(*opened.reader, "test3.txt").bytes, part + "4.\n" + part + "5.\n") << name;
    }
}

/// A larger cabinet, where there is one: TOVAREX_SAMPLES names the folder above its own.
TEST(CabSamples, AreRead) {
    const char* const folder = std::getenv("TOVAREX_SAMPLES");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP();
    const OpenResult opened = openCab(std::filesystem::path(folder) / "made" / "mszip.cab");
    ASSERT_EQ(opened.code, kOk);
    std::vector<std::string> found;
    Member member;
    while (opened.reader->next(member) == kOk) {
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_EQ(unpacked.code, kOk) << member.name;
        char crc[16];
        std::snprintf(crc, sizeof(crc), "%08x", static_cast<unsigned>(crc32OneBitAtATime(unpacked.bytes)));
        found.push_back(member.name + ' ' + member.method + ' ' + std::to_string(unpacked.bytes.size()) + ' ' + crc);
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (std::vector<std::string>{
                         "docs\\a,b.txt MSZIP 19 68b36e1a", "docs\\my file.txt MSZIP 18 bea93d61",
                         "docs\\old notes\\novel.txt MSZIP 387180 3c836193", "empty.txt MSZIP 0 00000000",
                         "readme.txt MSZIP 29 9da46e34", "src\\lib\\noise.bin MSZIP 70000 d1e384e1",
                         "src\\lib\\zeros.bin MSZIP 300000 f6b2e2fb", "src\\main.c MSZIP 1160 c28acd00"}));
}

}  // namespace
}  // namespace archiver::test
