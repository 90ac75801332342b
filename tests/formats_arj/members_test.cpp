#include <gtest/gtest.h>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"

/// What a member's header tells of it.
namespace archiver::test {
namespace {

constexpr std::uint8_t kMsDos = 0;
constexpr std::uint8_t kUnix = 2;
constexpr std::uint8_t kMac = 4;
constexpr std::uint8_t kNext = 8;
constexpr std::uint8_t kWin32 = 11;

OpenResult opened(std::string bytes) { return openArj(inMemory(std::move(bytes)), {}); }

Member only(const ArjMain& main, const ArjFile& file) {
    const Listing listing = walk(opened(arjArchive(main, {file})));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.members.size(), 1U);
    return listing.members.empty() ? Member() : listing.members.front();
}
Member only(const ArjFile& file) { return only({}, file); }

TEST(ArjMembers, HaveTheFieldsOfTheirHeader) {
    const Member member = only({.name = "docs/a.txt", .content = "123456789", .packed = "12345"});
    EXPECT_EQ(member.name, "docs/a.txt");
    EXPECT_EQ(member.originalSize, 9U);
    EXPECT_EQ(member.packedSize, 5U);
    EXPECT_EQ(member.crc, 0xCBF43926);
    EXPECT_EQ(member.osType, os_type::kMsDos);
    EXPECT_EQ(member.dosDate, 21 << 9 | 5 << 5 | 17);
    EXPECT_EQ(member.dosTime, 17 << 11 | 30 << 5 | 29);
    EXPECT_EQ(member.attributes, attribute::kArchive);
    EXPECT_EQ(member.method, "Stored");
    EXPECT_FALSE(member.encrypted);
    EXPECT_FALSE(member.written);
    EXPECT_FALSE(member.created);
    EXPECT_FALSE(member.accessed);
}

TEST(ArjMembers, HaveSizesOf32Bits) {
    const Member member = only({.name = "a", .originalSize = 0xFFFFFFFF});
    EXPECT_EQ(member.originalSize, 0xFFFFFFFF);
}

TEST(ArjMembers, NameTheirMethod) {
    const char* const expected[] = {"Stored", "Method1", "Method2", "Method3", "Method4", "Unknown", "Unknown"};
    for (std::uint8_t method = 0; method < 7; ++method) {
        EXPECT_EQ(only({.name = "a", .method = method}).method, expected[method]);
    }
    EXPECT_EQ(only({.name = "a", .method = 9}).method, "Unknown");
}

TEST(ArjMembers, NameTheirSystemAsTheConventionDoes) {
    const std::uint32_t expected[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 19, 21, 10};
    for (std::uint8_t host = 0; host < 13; ++host) {
        EXPECT_EQ(only({.name = "a", .host = host}).osType, expected[host]) << int{host};
        const OpenResult archive = opened(arjArchive({.host = host}, {}));
        EXPECT_EQ(archive.reader->facts().osType, expected[host]) << int{host};
    }
    EXPECT_EQ(only({.name = "a", .host = 255}).osType, os_type::kUnknown);
}

TEST(ArjMembers, OfUnixHaveSecondsForTimes) {
    const TimeZone zone("JST-9");
    for (const std::uint8_t host : {kUnix, kNext}) {
        const Member member = only({.name = "a",
                                    .firstPart = 46,
                                    .version = 11,
                                    .host = host,
                                    .time = 990120658,
                                    .accessTime = 0xF0000000,
                                    .creationTime = 1});
        EXPECT_EQ(member.written.value().seconds, 990120658);  // 2001-05-17 17:30:58 UTC
        EXPECT_EQ(member.accessed.value().seconds, 0xF0000000);
        EXPECT_EQ(member.created.value().seconds, 1);
        EXPECT_EQ(member.dosDate, 21 << 9 | 5 << 5 | 18);
        EXPECT_EQ(member.dosTime, 2 << 11 | 30 << 5 | 29);
    }
}

TEST(ArjMembers, OfUnixHaveWordsForTimesInOldArchives) {
    const Member member = only({.name = "a", .version = 6, .host = kUnix});
    EXPECT_FALSE(member.written);
    EXPECT_EQ(member.dosDate, 0x2AB1);
    EXPECT_EQ(member.dosTime, 0x8BDD);
}

TEST(ArjMembers, OfDosHaveFurtherTimesInLocalTime) {
    const TimeZone zone("JST-9");
    const Member member = only({.name = "a", .firstPart = 46, .accessTime = 0x2AB18BDD, .creationTime = 0x2AA00000});
    EXPECT_EQ(member.accessed.value().seconds, 990120658 - 9 * 3600);
    EXPECT_FALSE(member.created) << "the day is 0";
    EXPECT_FALSE(member.written);
}

TEST(ArjMembers, OfDosMayHaveImpossibleTimes) {
    for (const std::uint32_t time : {0xFFFFFFFFU, 0x2A018BDDU, 0x2BB18BDDU, 0x2AB1C000U, 0x2AB10780U, 0x2AB1001EU}) {
        const Member member = only({.name = "a", .firstPart = 46, .time = time, .accessTime = time});
        EXPECT_FALSE(member.accessed) << time;
        EXPECT_EQ(member.dosDate, time >> 16);
        EXPECT_EQ(member.dosTime, time & 0xFFFF);
    }
}

TEST(ArjMembers, HaveAttributesOfTheirSystem) {
    EXPECT_EQ(only({.name = "a", .mode = 0x27}).attributes, 0x27);
    EXPECT_EQ(only({.name = "a", .mode = 0xFFFF}).attributes, 0x27) << "label, folder and unknown bits go";
    EXPECT_EQ(only({.name = "a", .host = kWin32, .mode = 0x21}).attributes, 0x21);
    EXPECT_EQ(only({.name = "a", .host = kUnix, .mode = 0644}).attributes, 0);
    EXPECT_EQ(only({.name = "a", .host = kUnix, .mode = 0444}).attributes, attribute::kReadOnly);
    EXPECT_EQ(only({.name = "a", .host = kMac, .mode = 0xFFFF}).attributes, 0);
}

struct FolderCase {
    const char* stored;
    std::uint8_t host;
    std::uint8_t flags;
    const char* expected;
};

TEST(ArjMembers, ThatAreFoldersEndWithASeparator) {
    for (const FolderCase& each : {
             FolderCase{"docs", kMsDos, 0x10, "docs/"},
             FolderCase{"docs/old", kMsDos, 0x00, "docs/old/"},
             FolderCase{"docs/", kMsDos, 0x10, "docs/"},
             FolderCase{"docs\\", kMsDos, 0x00, "docs\\"},
             FolderCase{"docs", kMsDos, 0x00, "docs\\"},
             FolderCase{"docs\\old", kWin32, 0x00, "docs\\old\\"},
             FolderCase{"docs", kUnix, 0x00, "docs/"},
         }) {
        const Member member = only({.name = each.stored, .host = each.host, .flags = each.flags, .type = 3});
        EXPECT_EQ(member.name, each.expected);
        EXPECT_NE(member.attributes & attribute::kFolder, 0) << each.stored;
    }
}

TEST(ArjMembers, KeepTheSeparatorsOfTheirNames) {
    EXPECT_EQ(only({.name = "docs\\a.txt", .flags = 0}).name, "docs\\a.txt");
    EXPECT_EQ(only({.name = "docs/a.txt"}).name, "docs/a.txt");
    EXPECT_EQ(only({.name = "../c:a.txt"}).name, "../c:a.txt");
}

TEST(ArjMembers, HaveNamesInTheCodePageOfTheirSystem) {
    EXPECT_EQ(only({.name = "gr\x81n.txt"}).name, "grün.txt");
    EXPECT_EQ(only({.name = "gr\x81n.txt", .host = kWin32}).name, "grün.txt");
    EXPECT_EQ(only({.name = "gr\xFCn.txt", .host = kUnix}).name, "grün.txt");
    EXPECT_EQ(only({.version = 9, .host = kWin32, .flags = 0x02}, {.name = "gr\xFCn.txt", .host = kWin32}).name,
              "grün.txt");
    EXPECT_EQ(only({.version = 6, .flags = 0x02}, {.name = "gr\x81n.txt"}).name, "grün.txt")
        << "the flag had another meaning";
}

TEST(ArjMembers, HaveUtf8NamesWhereTheyAreThat) {
    EXPECT_EQ(only({.name = "gr\xC3\xBCn.txt"}).name, "grün.txt");
    EXPECT_EQ(only({.name = "\xE6\x97\xA5\xE6\x9C\xAC.txt", .host = kUnix}).name, "日本.txt");
}

TEST(ArjMembers, OfOtherKindsArePassedOver) {
    const Listing listing = walk(opened(arjArchive({}, {{.name = "before"},
                                                        {.name = "LABEL", .content = "skipped", .type = 4},
                                                        {.name = "chapter", .type = 5},
                                                        {.name = "device", .content = "skipped", .type = 6},
                                                        {.name = "unknown", .content = "skipped", .type = 77},
                                                        {.name = "after"}})));
    EXPECT_EQ(listing.names(), (std::vector<std::string>{"before", "after"}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
}

TEST(ArjMembers, HaveComments) {
    const OpenResult archive = opened(
        arjArchive({.comment = "of all\r\nin two lines, \x81"}, {{.name = "a", .comment = "of a"}, {.name = "b"}}));
    auto& reader = static_cast<ArjArchive&>(*archive.reader);
    EXPECT_EQ(reader.comment(), "of all\r\nin two lines, ü");
    EXPECT_EQ(reader.memberComment(), "") << "before the first member";
    Member member;
    ASSERT_EQ(reader.next(member), kOk);
    EXPECT_EQ(reader.memberComment(), "of a");
    ASSERT_EQ(reader.next(member), kOk);
    EXPECT_EQ(reader.memberComment(), "");
    ASSERT_EQ(reader.next(member), kNoMoreEntries);
    EXPECT_EQ(reader.memberComment(), "");
}

TEST(ArjMembers, ReuseOfARecordLeavesNothingBehind) {
    const OpenResult archive = opened(arjArchive({}, {{.name = "a",
                                                       .firstPart = 46,
                                                       .version = 11,
                                                       .host = kUnix,
                                                       .flags = 0x11,
                                                       .accessTime = 5,
                                                       .creationTime = 5},
                                                      {.name = "b"}}));
    Member member;
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_TRUE(member.encrypted);
    ASSERT_EQ(archive.reader->next(member), kOk);
    EXPECT_EQ(member.name, "b");
    EXPECT_FALSE(member.encrypted || member.written || member.created || member.accessed);
}

}  // namespace
}  // namespace archiver::test
