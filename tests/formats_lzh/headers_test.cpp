#include <gtest/gtest.h>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

Listing listingOf(const std::string& bytes) { return walk(openLzh(inMemory(bytes))); }

class LzhLevels : public testing::TestWithParam<int> {};

TEST_P(LzhLevels, AreRead) {
    LzhFile file{.name = "a.txt", .content = "content", .level = GetParam()};
    file.headerCrc = GetParam() > 0;
    const OpenResult opened = openLzh(inMemory(lzhArchive({file, file})));
    const Listing listing = walk(*opened.reader);
    EXPECT_EQ(listing.end, kNoMoreEntries);
    ASSERT_EQ(listing.names(), (std::vector<std::string>{"a.txt", "a.txt"}));
    EXPECT_EQ(listing.members[0].originalSize, 7U);
    EXPECT_EQ(listing.members[0].packedSize, 7U);
    EXPECT_EQ(listing.members[0].method, "-lh0-");
    EXPECT_EQ(listing.members[0].crc, crc16OneBitAtATime("content"));
    EXPECT_EQ(unpack(*opened.reader, "a.txt").bytes, "content");
}

TEST_P(LzhLevels, MayDoWithoutAnEndMark) {
    const std::string bytes = lzhArchive({{.name = "a", .content = "1", .level = GetParam()}}, false);
    EXPECT_EQ(listingOf(bytes).end, kNoMoreEntries);
    EXPECT_EQ(listingOf(bytes).names(), std::vector<std::string>{"a"});
}

class LzhLevelsWithExtendedHeaders : public testing::TestWithParam<int> {};

TEST_P(LzhLevelsWithExtendedHeaders, KeepFoldersApart) {
    const int level = GetParam();
    const std::string bytes =
        lzhArchive({{.name = "a.txt", .level = level, .extended = {{0x02, "one\xFFtwo\xFF"}}},
                    {.name = "b.txt", .level = level, .extended = {{0x02, "one"}}},
                    {.name = "", .level = level, .method = "-lhd-", .extended = {{0x02, "one\xFFthree\xFF"}}}});
    const Listing listing = listingOf(bytes);
    ASSERT_EQ(listing.names(), (std::vector<std::string>{"one/two/a.txt", "one/b.txt", "one/three/"}));
    EXPECT_EQ(listing.members[0].attributes & attribute::kFolder, 0);
    EXPECT_EQ(listing.members[2].attributes & attribute::kFolder, attribute::kFolder);
}

TEST_P(LzhLevels, ShowAWrongCheckValue) {
    LzhFile file{.name = "a.txt", .content = "content", .level = GetParam()};
    file.headerCrc = GetParam() > 0;
    std::string bytes = lzhArchive({file, file});
    const std::size_t second = lzhHeader(file).size() + file.content.size();
    bytes[second + 11] ^= 1;  // of the original size
    const Listing listing = listingOf(bytes);
    EXPECT_EQ(listing.names(), std::vector<std::string>{"a.txt"});
    EXPECT_EQ(listing.end, kHeaderCrc);
    bytes[11] ^= 1;
    EXPECT_EQ(listingOf(bytes).end, kHeaderCrc);
}

INSTANTIATE_TEST_SUITE_P(All, LzhLevelsWithExtendedHeaders, testing::Values(1, 2, 3),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(All, LzhLevels, testing::Values(0, 1, 2, 3), testing::PrintToStringParamName());

TEST(LzhHeaders, OfLevel1AreCheckedWithTheirExtendedHeaders) {
    LzhFile file{.name = "a", .level = 1, .extended = {{0x3F, "comment"}}};
    file.headerCrc = true;
    std::string bytes = lzhArchive({file});
    bytes[lzhHeader(file).size() - 4] ^= 1;
    EXPECT_EQ(listingOf(bytes).end, kHeaderCrc);
}

TEST(LzhHeaders, OfTheOldestArchiversHaveNoChecksum) {
    LzhFile file{.name = "old", .content = "content"};
    file.withCrc = false;
    const OpenResult opened = openLzh(inMemory(lzhArchive({file})));
    const Listing listing = walk(*opened.reader);
    ASSERT_EQ(listing.names(), std::vector<std::string>{"old"});
    EXPECT_EQ(listing.members[0].crc, 0U);
    EXPECT_EQ(unpack(*opened.reader, "old").code, kOk);
}

TEST(LzhHeaders, OfFoldersWithoutANameArePassedOver) {
    const LzhFile folder{.name = "", .method = "-lhd-"};
    const Listing listing = listingOf(lzhArchive({folder, folder, {.name = "a"}, folder}));
    EXPECT_EQ(listing.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(listing.end, kNoMoreEntries);
}

TEST(LzhHeaders, OfPaddedSizeAreRead) {
    // 256 bytes would begin with a zero, which is the end of the archive.
    LzhFile file{.name = std::string(200, 'n'), .content = "content", .level = 2};
    file.extended = {{0x3F, std::string(256 - 26 - 3 - 200 - 3, 'c')}};
    ASSERT_EQ(lzhHeader(file).size(), 257U);
    EXPECT_EQ(listingOf(lzhArchive({file, file})).names(), (std::vector<std::string>{file.name, file.name}));
}

TEST(LzhHeaders, OfOs9CountTwoBytesTooFew) {
    const std::string header = lzhHeader({.name = "a", .level = 2, .system = 'K'});
    const std::string bytes = littleEndian(header.size() - 2, 2) + header.substr(2) + '\0';
    EXPECT_EQ(listingOf(bytes).names(), std::vector<std::string>{"a"});
    EXPECT_EQ(listingOf(bytes).end, kNoMoreEntries);
}

TEST(LzhHeaders, MayHoldWhatNobodyKnows) {
    const std::string bytes =
        lzhArchive({{.name = "a", .level = 2, .extended = {{0x7D, "?"}, {0x39, ""}, {0x41, "x"}}}});
    EXPECT_EQ(listingOf(bytes).names(), std::vector<std::string>{"a"});
}

TEST(LzhHeaders, OfBrokenShapeEndTheWalk) {
    const LzhFile good{.name = "a", .content = "1"};
    struct Case {
        const char* name;
        std::string header;
    };
    std::string noMethod = lzhHeader({.name = "b", .level = 2});
    noMethod[2] = '+';
    std::string level4 = lzhHeader({.name = "b", .level = 2});
    level4[20] = 4;
    std::string small = lzhHeader({.name = "b", .level = 2});
    small[0] = 25;
    std::string longName = lzhHeader({.name = "b"});
    longName[21] = 60;
    std::string chain = lzhHeader({.name = "b", .level = 2});
    chain[24] = 100;
    std::string tinyChain = lzhHeader({.name = "b", .level = 2});
    tinyChain[24] = 2;
    std::string huge = lzhHeader({.name = "b", .level = 3});
    huge[27] = 0x7F;
    std::string width = lzhHeader({.name = "b", .level = 3});
    width[0] = 8;
    const std::string nameless = lzhHeader({.name = "", .level = 2});
    std::string noPacked = lzhHeader({.name = "b", .level = 1, .extended = {{0x3F, "c"}}});
    noPacked[1] = static_cast<char>(noPacked[1] - noPacked[7]);  // keeps the checksum right
    noPacked[7] = 0;
    for (const Case& each :
         {Case{"method", noMethod}, Case{"level", level4}, Case{"size", small}, Case{"name", longName},
          Case{"chain", chain}, Case{"tiny", tinyChain}, Case{"huge", huge}, Case{"width", width},
          Case{"nameless", nameless}, Case{"packed", noPacked}, Case{"cut", lzhHeader(good).substr(0, 20)}}) {
        const Listing listing =
            listingOf(lzhArchive({good}, false) + each.header + std::string(each.name[0] == 'c' ? 0 : 64, '\0'));
        EXPECT_EQ(listing.names(), std::vector<std::string>{"a"}) << each.name;
        EXPECT_EQ(listing.end, kHeaderBroken) << each.name;
    }
}

TEST(LzhHeaders, MayBeFollowedByTheFillOfOldSystems) {
    EXPECT_EQ(listingOf(lzhArchive({{.name = "a"}}, false) + std::string(90, '\x1A')).end, kNoMoreEntries);
}

TEST(LzhHeaders, ClaimSizesBeyond4GiB) {
    const std::string sizes = littleEndian(7, 8) + littleEndian(std::uint64_t{5} << 32, 8);
    const std::string bytes =
        lzhArchive({{.name = "a", .content = "content", .level = 2, .extended = {{0x42, sizes}}}});
    const Listing listing = listingOf(bytes);
    ASSERT_EQ(listing.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(listing.members[0].originalSize, std::uint64_t{5} << 32);
    EXPECT_EQ(listing.members[0].packedSize, 7U);
    const std::string overflow = littleEndian(~std::uint64_t{0}, 8) + littleEndian(1, 8);
    EXPECT_EQ(listingOf(lzhArchive({{.name = "a", .level = 2, .extended = {{0x42, overflow}}}})).end, kHeaderBroken);
}

}  // namespace
}  // namespace archiver::test
