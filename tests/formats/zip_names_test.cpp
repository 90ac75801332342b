#include <gtest/gtest.h>

#include "archivers/formats/utf8.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

namespace archiver::test {
namespace {

constexpr std::uint16_t kUtf8Flag = 0x800;
constexpr std::uint16_t kFat = 0x0014, kUnix = 0x031E, kNtfs = 0x0A3F, kInfoZipNtfs = 0x0B17, kVfat = 0x0E14,
                        kHpfs = 0x0614, kMacOs = 0x133F, kClassicMac = 0x0714;

std::string nameGiven(BuiltMember member) {
    const Listing listing = walk(openZip(inMemory(ZipBuilder().add(std::move(member)).build())));
    EXPECT_EQ(listing.end, kNoMoreEntries);
    return listing.members.size() == 1 ? listing.members[0].name : "no single member";
}

std::string unicodePath(std::string_view forName, std::string_view utf8, char version = 1) {
    return ZipBuilder::field(0x7075, version + ZipBuilder::number32(ZipBuilder::crcOf(forName)) + std::string(utf8));
}

TEST(ZipNames, FlagSaysUtf8) {
    for (const std::uint16_t madeBy : {kFat, kUnix, kNtfs}) {
        EXPECT_EQ(nameGiven({.name = "grün/日本語😀", .madeBy = madeBy, .flags = kUtf8Flag}), "grün/日本語😀");
    }
}

TEST(ZipNames, FlagOnOtherBytesIsNotBelieved) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    EXPECT_EQ(nameGiven({.name = "gr\x81n", .madeBy = kFat, .flags = kUtf8Flag}), "grün");
    EXPECT_EQ(nameGiven({.name = "gr\xFCn", .madeBy = kUnix, .flags = kUtf8Flag}), "grün");
}

TEST(ZipNames, UnicodePathFieldGoesBeforeTheStoredName) {
    EXPECT_EQ(nameGiven({.name = "gr\x81n", .madeBy = kFat, .extra = unicodePath("gr\x81n", "grün ☺")}), "grün ☺");
    EXPECT_EQ(nameGiven({.name = "plain", .madeBy = kFat, .extra = unicodePath("plain", "日本語")}), "日本語");
}

TEST(ZipNames, UnicodePathFieldOfAnotherNameIsIgnored) {
    EXPECT_EQ(nameGiven({.name = "new", .extra = unicodePath("old", "älter")}), "new");
    EXPECT_EQ(nameGiven({.name = "new", .extra = unicodePath("new", "älter", 2)}), "new");
    EXPECT_EQ(nameGiven({.name = "new", .extra = unicodePath("new", "\xC3")}), "new");
    EXPECT_EQ(nameGiven({.name = "new", .extra = unicodePath("new", "")}), "new");
    EXPECT_EQ(nameGiven({.name = "new", .extra = ZipBuilder::field(0x7075, "\x01\x02")}), "new");
}

TEST(ZipNames, Utf8OfUnixSystemsNeedsNoFlag) {
    EXPECT_EQ(nameGiven({.name = "grün", .madeBy = kUnix}), "grün");
    EXPECT_EQ(nameGiven({.name = "grün", .madeBy = kMacOs}), "grün");
}

TEST(ZipNames, OtherNamesAreInTheMakersCodePage) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    for (const std::uint16_t madeBy : {kFat, kNtfs, kInfoZipNtfs, kVfat, kHpfs}) {
        EXPECT_EQ(nameGiven({.name = "gr\x81n", .madeBy = madeBy}), "grün") << madeBy;
    }
    for (const std::uint16_t madeBy : {kUnix, kMacOs, kClassicMac}) {
        EXPECT_EQ(nameGiven({.name = "gr\xFCn", .madeBy = madeBy}), "grün") << madeBy;
    }
    // Valid UTF-8 by chance, from a system that does not write it.
    EXPECT_EQ(nameGiven({.name = "\xC3\xBC", .madeBy = kFat}), "├╝");
}

TEST(ZipNames, NulCutsNothing) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    EXPECT_EQ(nameGiven({.name = std::string("a\0b", 3)}), "a_b");
    EXPECT_EQ(nameGiven({.name = std::string("\0", 1)}), "_");
    EXPECT_EQ(nameGiven({.name = std::string("\xC3\xBC\0", 3), .flags = kUtf8Flag}), "ü_");
    EXPECT_EQ(nameGiven({.name = std::string("\x81\0x", 3), .madeBy = kFat}), "ü_x");
}

TEST(ZipNames, EveryByteValueSurvives) {
    if (!westernCodePages()) GTEST_SKIP() << "written for the code pages 437 and 1252";
    for (const std::uint16_t madeBy : {kFat, kUnix}) {
        ZipBuilder builder;
        for (int byte = 1; byte < 256; ++byte) {
            builder.add({.name = std::string("n") + static_cast<char>(byte) + ".txt", .madeBy = madeBy});
        }
        const Listing listing = walk(openZip(inMemory(builder.build())));
        EXPECT_EQ(listing.end, kNoMoreEntries);
        ASSERT_EQ(listing.members.size(), 255U);
        std::vector<std::string> names = listing.names();
        for (int byte = 1; byte < 0x80; ++byte) {
            EXPECT_EQ(names[static_cast<std::size_t>(byte - 1)], std::string("n") + static_cast<char>(byte) + ".txt");
        }
        for (const std::string& name : names) EXPECT_TRUE(isUtf8(name));
        std::sort(names.begin(), names.end());
        EXPECT_EQ(std::unique(names.begin(), names.end()), names.end());
    }
}

TEST(ZipNames, SeparatorsStayAsTheyAreStored) {
    EXPECT_EQ(nameGiven({.name = "dir\\file.txt", .madeBy = kFat}), "dir\\file.txt");
    EXPECT_EQ(nameGiven({.name = "../../file.txt"}), "../../file.txt");
}

TEST(ZipNames, ExtremeLengthsPass) {
    EXPECT_EQ(nameGiven({.name = ""}), "");
    const std::string longest(0xFFFF, 'x');
    EXPECT_EQ(nameGiven({.name = longest}), longest);
    // The largest header there can be; 0xFFFF bytes in each of its fields.
    const std::string extra = ZipBuilder::field(0x4242, std::string(0xFFFF - 4, 'e'));
    EXPECT_EQ(nameGiven({.name = longest, .extra = extra, .comment = std::string(0xFFFF, 'c')}), longest);
}

}  // namespace
}  // namespace archiver::test
