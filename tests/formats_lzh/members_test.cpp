#include <gtest/gtest.h>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

Member memberOf(const LzhFile& file) {
    Listing listing = walk(openLzh(inMemory(lzhArchive({file}))));
    EXPECT_EQ(listing.members.size(), 1U);
    return listing.members.empty() ? Member{} : listing.members[0];
}

constexpr std::uint16_t kDate = 21 << 9 | 5 << 5 | 17;
constexpr std::uint16_t kTime = 17 << 11 | 30 << 5 | 29;
constexpr std::uint32_t kUnixTime = 990120658;  // 2001-05-17 17:30:58 UTC

TEST(LzhMembers, OfLevels0And1HaveDosTimes) {
    for (const int level : {0, 1}) {
        const Member member = memberOf({.name = "a", .level = level});
        EXPECT_EQ(member.dosDate, kDate);
        EXPECT_EQ(member.dosTime, kTime);
        EXPECT_FALSE(member.written.has_value());
    }
}

TEST(LzhMembers, OfLevels2And3HaveUnixTimes) {
    const TimeZone zone("JST-9");
    for (const int level : {2, 3}) {
        const Member member = memberOf({.name = "a", .level = level, .time = kUnixTime});
        EXPECT_EQ(member.written.value().seconds, kUnixTime);
        EXPECT_EQ(member.dosDate, 21 << 9 | 5 << 5 | 18);
        EXPECT_EQ(member.dosTime, 2 << 11 | 30 << 5 | 29);
    }
}

TEST(LzhMembers, OfUnixHaveBothTimes) {
    const std::string area =
        std::string("U\0", 2) + littleEndian(kUnixTime, 4) + littleEndian(0100444, 2) + littleEndian(0, 4);
    const Member old = memberOf({.name = "a", .area = area});
    EXPECT_EQ(old.written.value().seconds, kUnixTime);
    EXPECT_EQ(old.dosTime, kTime);
    EXPECT_EQ(old.osType, os_type::kUnix);
    EXPECT_EQ(old.attributes, attribute::kReadOnly);
    const Member member = memberOf({.name = "a", .level = 1, .extended = {{0x54, littleEndian(kUnixTime, 4)}}});
    EXPECT_EQ(member.written.value().seconds, kUnixTime);
}

TEST(LzhMembers, OfPMarcHaveACommentThere) {
    const Member member = memberOf({.name = "a", .method = "-pm0-", .area = "U comment of it"});
    EXPECT_FALSE(member.written.has_value());
    EXPECT_EQ(member.osType, os_type::kUnknown);
}

TEST(LzhMembers, OfWindowsHaveThreeTimes) {
    const TimeZone zone("UTC0");
    // 1601 to 1970 in steps of 100 nanoseconds.
    constexpr std::uint64_t kEpoch = 116444736000000000;
    const std::string times =
        littleEndian(kEpoch + 10000001, 8) + littleEndian(kEpoch + 9901206580000000, 8) + littleEndian(0, 8);
    const Member member = memberOf({.name = "a", .level = 2, .time = 1, .extended = {{0x41, times}}});
    EXPECT_EQ(member.created.value().seconds, 1);
    EXPECT_EQ(member.created.value().nanoseconds, 100U);
    EXPECT_EQ(member.written.value().seconds, kUnixTime);
    EXPECT_FALSE(member.accessed.has_value());
    EXPECT_EQ(member.dosDate, kDate);
}

TEST(LzhMembers, HaveDosAttributes) {
    EXPECT_EQ(memberOf({.name = "a", .attributes = 0x23}).attributes, 0x23);
    EXPECT_EQ(memberOf({.name = "a", .attributes = 0xD8}).attributes, 0);
    EXPECT_EQ(memberOf({.name = "a", .level = 2, .attributes = 0x07}).attributes, attribute::kArchive);
    EXPECT_EQ(memberOf({.name = "a", .level = 2, .extended = {{0x40, littleEndian(0x06, 2)}}}).attributes,
              attribute::kHidden | attribute::kSystem);
    EXPECT_EQ(memberOf({.name = "a", .method = "-lhd-", .attributes = 0x10}).attributes, attribute::kFolder);
    EXPECT_EQ(memberOf({.name = "a", .level = 2, .extended = {{0x50, littleEndian(0100644, 2)}}}).attributes, 0);
}

TEST(LzhMembers, TellTheirSystem) {
    const std::pair<char, std::uint32_t> systems[] = {{'M', 0},  {'U', 2},  {'A', 3},  {'m', 4},  {'2', 5},  {'9', 11},
                                                      {'K', 12}, {'3', 13}, {'H', 14}, {'C', 15}, {'F', 16}, {'R', 17},
                                                      {'w', 19}, {'W', 21}, {'J', 10}, {'\0', 10}};
    for (const auto& [letter, type] : systems) {
        EXPECT_EQ(memberOf({.name = "a", .level = 1, .system = letter}).osType, type) << letter;
    }
    EXPECT_EQ(openLzh(inMemory(lzhArchive({{.name = "a", .level = 1, .system = 'w'}}))).reader->facts().osType, 19U);
}

}  // namespace
}  // namespace archiver::test
