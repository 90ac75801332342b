#include <gtest/gtest.h>

#include "archivers/formats/rar/rar_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/rar_builder.h"

/// What members tell of themselves.
namespace archiver::test {
namespace {

constexpr std::int64_t kMay17 = 990120658;  // 2001-05-17 17:30:58 UTC

Member only(const std::string& bytes) {
    const Listing listing = walk(openRar(inMemory(bytes), {}));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    EXPECT_EQ(listing.members.size(), 1U);
    return listing.members.empty() ? Member{} : listing.members[0];
}
Member old(const OldRarFile& file) { return only(oldRar({file})); }
Member latest(const NewRarFile& file) { return only(newRar({file})); }

TEST(RarFields, NameEveryMethod) {
    const char* const texts[] = {"storing", "fastest", "fast", "normal", "good", "best", "unknown"};
    for (int method = 0; method < 7; ++method) {
        EXPECT_EQ(old({.name = "a", .method = static_cast<std::uint8_t>(0x30 + method)}).method, texts[method]);
        EXPECT_EQ(latest({.name = "a", .compression = static_cast<std::uint64_t>(method) << 7}).method, texts[method]);
    }
    EXPECT_EQ(old({.name = "a", .method = 0x2F}).method, "unknown");
    EXPECT_EQ(old({.name = "a", .method = 0}).method, "unknown");
}

TEST(RarFields, TellAttributes) {
    EXPECT_EQ(old({.name = "a", .attributes = 0x27}).attributes, 0x27);
    EXPECT_EQ(old({.name = "a", .host = 3, .attributes = 0100644}).attributes, 0);
    EXPECT_EQ(old({.name = "a", .host = 3, .attributes = 0100444}).attributes, attribute::kReadOnly);
    EXPECT_EQ(latest({.name = "a", .attributes = 0x23}).attributes, 0x23);
    EXPECT_EQ(latest({.name = "a", .host = 1, .attributes = 0100444}).attributes, attribute::kReadOnly);
    EXPECT_EQ(old({.name = "a", .flags = 0xE0, .attributes = 0x10}).attributes, attribute::kFolder);
    EXPECT_EQ(latest({.name = "a", .flags = 1, .attributes = 0x10}).attributes, attribute::kFolder);
}

TEST(RarFields, TellTheSystem) {
    const std::uint32_t types[] = {os_type::kMsDos, os_type::kUnknown, os_type::kWindowsNtfs,
                                   os_type::kUnix,  os_type::kMacOs,   os_type::kUnknown};
    for (std::uint8_t host = 0; host < 6; ++host) {
        EXPECT_EQ(old({.name = "a", .host = host}).osType, types[host]) << int{host};
    }
    EXPECT_EQ(latest({.name = "a", .host = 0}).osType, os_type::kWindowsNtfs);
    EXPECT_EQ(latest({.name = "a", .host = 1}).osType, os_type::kUnix);
    EXPECT_EQ(latest({.name = "a", .host = 7}).osType, os_type::kUnknown);
}

TEST(RarFields, EndFoldersWithTheirSeparator) {
    EXPECT_EQ(old({.name = "a\\b", .flags = 0xE0}).name, "a\\b\\");
    EXPECT_EQ(latest({.name = "a/b", .flags = 1}).name, "a/b/");
}

TEST(RarFields, TellLargeSizes) {
    // The high words of the sizes stand before the name.
    const std::string high = littleEndian(0, 4) + littleEndian(2, 4);
    Member member = old({.name = high, .content = "x", .flags = 0x0100, .behindName = "realname"});
    EXPECT_EQ(member.name, "realname");
    EXPECT_EQ(member.originalSize, (std::uint64_t{2} << 32) + 1);
    EXPECT_EQ(member.packedSize, 1U);
    EXPECT_EQ(walk(openRar(inMemory(oldRar({{.name = high, .flags = 0x0100, .behindName = "short"}})), {})).end,
              kHeaderBroken);
    member = latest({.name = "a", .content = "x", .originalSize = std::uint64_t{5} << 32});
    EXPECT_EQ(member.originalSize, std::uint64_t{5} << 32);
}

TEST(RarFields, TellDatesAsTheyAreStored) {
    const TimeZone zone("JST-9");
    const Member member = old({.name = "a"});
    EXPECT_EQ(member.dosDate, 0x2AB1);
    EXPECT_EQ(member.dosTime, 0x8BDD);
    EXPECT_EQ(member.written.value().seconds, kMay17 - 9 * 3600);
    EXPECT_FALSE(member.created.has_value());
}

TEST(RarFields, TellLocalDatesWhereUtcIsStored) {
    const TimeZone zone("JST-9");
    const Member member = latest({.name = "a", .time = static_cast<std::uint32_t>(kMay17)});
    EXPECT_EQ(member.written.value().seconds, kMay17);
    EXPECT_EQ(member.dosDate, 0x2AB2) << "the next day";
    EXPECT_EQ(member.dosTime, 2 << 11 | 30 << 5 | 29);
}

TEST(RarFields, TellExactTimes) {
    const TimeZone zone("UTC0");
    // Written a second later and 0x123456 steps; created at the same words with steps of one byte; accessed without.
    const Member member = old({.name = "a",
                               .flags = 0x1000,
                               .behindName = littleEndian(0xF980, 2) + littleEndian(0x123456, 3) +
                                             littleEndian(0x2AB18BDD, 4) + "\x10" + littleEndian(0x2AB18BDD, 4)});
    EXPECT_EQ(member.written.value().seconds, kMay17 + 1);
    EXPECT_EQ(member.written.value().nanoseconds, 0x123456U * 100);
    EXPECT_EQ(member.created.value().seconds, kMay17);
    EXPECT_EQ(member.created.value().nanoseconds, 104857600U);
    EXPECT_EQ(member.accessed.value().seconds, kMay17);
}

TEST(RarFields, TellTimesOfTheExtraArea) {
    const TimeZone zone("UTC0");
    const std::string unixTimes =
        newRarRecord(3, rarNumber(0x1F) + littleEndian(kMay17, 4) + littleEndian(kMay17 + 1, 4) +
                            littleEndian(kMay17 + 2, 4) + littleEndian(7, 4) + littleEndian(8, 4) + littleEndian(9, 4));
    Member member = latest({.name = "a", .extra = unixTimes});
    EXPECT_EQ(member.written.value().seconds, kMay17);
    EXPECT_EQ(member.written.value().nanoseconds, 7U);
    EXPECT_EQ(member.created.value().seconds, kMay17 + 1);
    EXPECT_EQ(member.accessed.value().seconds, kMay17 + 2);
    EXPECT_EQ(member.accessed.value().nanoseconds, 9U);
    EXPECT_EQ(member.dosTime, 0x8BDD);
    // 2001-05-17 17:30:58 as steps of 100 ns since 1601.
    const std::string windowsTime = newRarRecord(3, rarNumber(0x02) + littleEndian(126345942580000000, 8));
    member = latest({.name = "a", .extra = windowsTime});
    EXPECT_EQ(member.written.value().seconds, kMay17);
}

TEST(RarFields, TellEncryption) {
    EXPECT_TRUE(latest({.name = "a", .content = "x", .extra = newRarRecord(1, std::string(20, '\0'))}).encrypted);
    EXPECT_TRUE(old({.name = "a", .content = "x", .flags = 0x04}).encrypted);
    EXPECT_FALSE(old({.name = "a", .content = "x"}).encrypted);
}

TEST(RarFields, LeaveOutRecordsOfUnknownKinds) {
    EXPECT_EQ(latest({.name = "a", .extra = newRarRecord(99, "whatever") + newRarRecord(6, "owner")}).name, "a");
}

TEST(RarFields, MustBeWithinTheHeader) {
    for (const std::string& extra : {std::string("\x7F\x03"), std::string("\xFF")}) {
        EXPECT_EQ(walk(openRar(inMemory(newRar({{.name = "a", .extra = extra}})), {})).end, kHeaderBroken);
    }
    const std::string beyond = std::string(kNewRarSignature) + newRarMain() +
                               newRarBlock(rarNumber(2) + rarNumber(2) + rarNumber(0) + rarNumber(0) + rarNumber(0) +
                                           rarNumber(0) + rarNumber(0) + rarNumber(0) + rarNumber(200) + "a");
    EXPECT_EQ(walk(openRar(inMemory(beyond), {})).end, kHeaderBroken);
    const std::string endless = std::string(kNewRarSignature) + newRarMain() +
                                newRarBlock(rarNumber(2) + std::string(11, '\xFF') + std::string(20, '\1'));
    EXPECT_EQ(walk(openRar(inMemory(endless), {})).end, kHeaderBroken);
}

}  // namespace
}  // namespace archiver::test
