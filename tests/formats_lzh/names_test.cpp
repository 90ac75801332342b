#include <gtest/gtest.h>

#include "archivers/formats/lzh/lzh_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_lzh/support/lzh_builder.h"

namespace archiver::test {
namespace {

std::string nameOf(const LzhFile& file) {
    const Listing listing = walk(openLzh(inMemory(lzhArchive({file}))));
    return listing.members.size() == 1 ? listing.members[0].name : std::to_string(listing.end);
}

std::string utf16(std::u16string_view text) {
    std::string bytes;
    for (const char16_t each : text) bytes += littleEndian(each, 2);
    return bytes;
}

TEST(LzhNames, KeepTheirSeparators) {
    EXPECT_EQ(nameOf({.name = "dir\\a.txt"}), "dir\\a.txt");
    EXPECT_EQ(nameOf({.name = "dir/a.txt"}), "dir/a.txt");
    EXPECT_EQ(nameOf({.name = "dir\xFF"
                              "a.txt"}),
              "dir/a.txt");
    EXPECT_EQ(nameOf({.name = "..\\a.txt"}), "..\\a.txt");
}

TEST(LzhNames, OfFoldersEndWithASeparator) {
    EXPECT_EQ(nameOf({.name = "dir", .method = "-lhd-"}), "dir/");
    EXPECT_EQ(nameOf({.name = "dir\\", .method = "-lhd-"}), "dir\\");
    EXPECT_EQ(nameOf({.name = "dir\\sub", .method = "-lhd-"}), "dir\\sub\\");
}

TEST(LzhNames, EndAtANul) {
    EXPECT_EQ(nameOf({.name = std::string("a.txt\0comment", 13)}), "a.txt");
    EXPECT_EQ(nameOf({.name = "a", .level = 2, .extended = {{0x02, std::string("dir\xFF\0x", 6)}}}), "dir/a");
}

TEST(LzhNames, AreNeverEmpty) {
    EXPECT_EQ(nameOf({.name = std::string(1, '\0')}), "_");
    EXPECT_EQ(nameOf({.name = std::string(1, '\0'), .method = "-lhd-"}), "_/");
    const std::string mode = littleEndian(0120777, 2);
    EXPECT_EQ(nameOf({.name = "|target", .level = 2, .method = "-lhd-", .extended = {{0x50, mode}}}), "_");
}

TEST(LzhNames, OfAnotherSystemMayBeUtf8) {
    EXPECT_EQ(nameOf({.name = "gr\xC3\xBC\xC3\x9F", .level = 1, .system = 'U'}), "gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(nameOf({.name = "gr\xC3\xBC\xC3\x9F", .level = 1, .system = 'J'}), "gr\xC3\xBC\xC3\x9F");
}

TEST(LzhNames, OfWindowsAreOfTheAnsiPage) {
    if (!westernCodePages()) GTEST_SKIP();
    EXPECT_EQ(nameOf({.name = "gr\xFC\xDF", .level = 2, .system = 'w'}), "gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(nameOf({.name = "\xC3\xBC", .level = 1, .system = 'M'}), "\xC3\x83\xC2\xBC");
    EXPECT_EQ(nameOf({.name = "a", .level = 2, .system = 'w', .extended = {{0x02, "\xFC\xFF\xDF\xFF"}}}),
              "\xC3\xBC/\xC3\x9F/a");
}

TEST(LzhNames, OfJapaneseSystemsAreShiftJis) {
    if (codePageOf(LegacyPage::kAnsi) != 932) GTEST_SKIP();
    // The second byte of the first character is 0x5C.
    EXPECT_EQ(nameOf({.name = "\x95\x5C\x8E\xA6.txt", .level = 1, .system = 'M'}), "\xE8\xA1\xA8\xE7\xA4\xBA.txt");
}

TEST(LzhNames, MayTellTheirCodePage) {
    EXPECT_EQ(nameOf({.name = "\xC3\xBC", .level = 2, .system = 'w', .extended = {{0x46, littleEndian(65001, 4)}}}),
              "\xC3\xBC");
}

TEST(LzhNames, MayBeWide) {
    const std::string name = utf16(u"\u8868\U0001F600.txt");
    EXPECT_EQ(nameOf({.name = "x", .level = 2, .extended = {{0x44, name}}}), "\xE8\xA1\xA8\xF0\x9F\x98\x80.txt");
    EXPECT_EQ(nameOf({.name = "x", .level = 2, .extended = {{0x45, utf16(u"\u00FC\xFFFFz")}}}), "\xC3\xBC/z/x");
    EXPECT_EQ(nameOf({.name = "x", .level = 2, .extended = {{0x44, utf16(u"\xD800")}}}), "\xEF\xBF\xBD");
}

TEST(LzhNames, AreFollowedByTheTargetsOfLinks) {
    const std::string mode = littleEndian(0120777, 2);
    const auto memberOf = [](const LzhFile& file) {
        const Listing listing = walk(openLzh(inMemory(lzhArchive({file}))));
        return listing.members.size() == 1 ? listing.members[0] : Member{};
    };
    const Member link = memberOf({.name = "link|../target", .level = 2, .method = "-lhd-", .extended = {{0x50, mode}}});
    EXPECT_EQ(link.kind, MemberKind::kSymbolicLink);
    EXPECT_EQ(link.linkTarget, "../target");
    EXPECT_EQ(
        memberOf(
            {.name = "target", .level = 2, .method = "-lhd-", .extended = {{0x02, "dir\xFFlink|..\xFF"}, {0x50, mode}}})
            .linkTarget,
        "../target");
    EXPECT_EQ(memberOf({.name = "dir", .method = "-lhd-"}).kind, MemberKind::kFolder);
    const Member file = memberOf({.name = "a|b"});
    EXPECT_EQ(file.kind, MemberKind::kFile);
    EXPECT_EQ(file.linkTarget, "");
}

TEST(LzhNames, OfLinksLeaveTheTargetOut) {
    const std::string mode = littleEndian(0120777, 2);
    EXPECT_EQ(nameOf({.name = "link|../target", .level = 2, .method = "-lhd-", .extended = {{0x50, mode}}}), "link");
    EXPECT_EQ(nameOf({.name = "target",
                      .level = 2,
                      .method = "-lhd-",
                      .extended = {{0x02, "dir\xFFlink|..\xFF"}, {0x50, mode}}}),
              "dir/link");
}

}  // namespace
}  // namespace archiver::test
