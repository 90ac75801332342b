#include <gtest/gtest.h>

#include "archivers/formats/rar/old_name.h"
#include "archivers/formats/rar/rar_reader.h"
#include "archivers/formats/utf8.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_rar/support/rar_builder.h"

namespace archiver::test {
namespace {

std::string nameOf(const std::string& archive) {
    const Listing listing = walk(openRar(inMemory(archive), {}));
    return listing.members.size() == 1 ? listing.members[0].name : "none";
}
std::string old(const std::string& stored, std::uint16_t flags, std::uint8_t host = 2) {
    return nameOf(oldRar({{.name = stored, .flags = flags, .host = host}}));
}

TEST(RarNames, AreDecodedFromTheirDifferences) {
    // Kinds from the top two bits on: low byte alone, low byte with the common high byte, both bytes.
    EXPECT_EQ(rar::decodeOldName("abc",
                                 "\x04\x18"
                                 "a\x42\x3B\x04"),
              "aтл");
    // A run of the bytes themselves, and one with 1 added and the common high byte.
    EXPECT_EQ(rar::decodeOldName("abcd", std::string("\x04\xF0\x00\x80\x01", 5)), "ab\xD1\xA4\xD1\xA5");
    // Two halves of one character; a half alone is none.
    EXPECT_EQ(rar::decodeOldName("", std::string("\x00\xA0\x3D\xD8\x00\xDE", 6)), "😀");
    EXPECT_EQ(rar::decodeOldName("", std::string("\x00\x80\x3D\xD8", 4)), "\xEF\xBF\xBD");
}

TEST(RarNames, EndWhereTheirDifferencesBreakOff) {
    EXPECT_EQ(rar::decodeOldName("abc", ""), "");
    EXPECT_EQ(rar::decodeOldName("abc", "\x04"), "");
    EXPECT_EQ(rar::decodeOldName("abc", "\x04\x80\x41"), "") << "half a character";
    EXPECT_EQ(rar::decodeOldName("abc", std::string("\x04\xC0\x7F", 3)), "abc") << "a run beyond the bytes";
    EXPECT_EQ(rar::decodeOldName("abc", std::string("\x04\xC0\x81", 3)), "") << "no correction";
}

TEST(RarNames, OfWindowsAreInTheOemCodePage) {
    if (!westernCodePages()) GTEST_SKIP();
    EXPECT_EQ(old("\x84pfel", 0), "äpfel");
    EXPECT_EQ(old("\x84pfel", 0, 0), "äpfel");
}

TEST(RarNames, OfUnixAreUtf8OrInTheAnsiCodePage) {
    EXPECT_EQ(old("\xC3\xA4pfel", 0, 3), "äpfel");
    if (!westernCodePages()) GTEST_SKIP();
    EXPECT_EQ(old("\xE4pfel", 0, 3), "äpfel");
}

TEST(RarNames, WithTheFlagAndWithoutDifferencesAreUtf8) { EXPECT_EQ(old("\xC3\xA4pfel", 0x0200), "äpfel"); }

TEST(RarNames, EndBeforeANul) {
    EXPECT_EQ(old(std::string("a\0b", 3), 0), "a");
    EXPECT_EQ(nameOf(newRar({{.name = std::string("a\0b", 3)}})), "a");
    EXPECT_EQ(rar::decodeOldName("", std::string("\0\0a\0b", 5)), "a");
}

TEST(RarNames, AreNeverEmpty) {
    EXPECT_EQ(old("", 0), "_");
    EXPECT_EQ(nameOf(newRar({{.name = ""}})), "_");
}

TEST(RarNames, OfTheNewLayoutAreAlwaysUtf8) {
    EXPECT_EQ(nameOf(newRar({{.name = "\xE8\xA1\xA8/\xF0\x9F\x98\x80"}})), "表/😀");
    EXPECT_TRUE(isUtf8(nameOf(newRar({{.name = "\xFF\xFE"}}))));
}

TEST(RarNames, OfTheNewLayoutHaveNoOtherSeparator) {
    EXPECT_EQ(nameOf(newRar({{.name = "a\\b/c", .host = 1}})), "a_b/c");
}

}  // namespace
}  // namespace archiver::test
