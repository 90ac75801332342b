#include "archivers/convention/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "archivers/convention/text_codec.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

struct CharacterCase {
    const char* name;
    std::string_view bytes;
    bool valid;
    char32_t value;
    std::size_t length;
};

class DecodeCharacter : public ::testing::TestWithParam<CharacterCase> {};

TEST_P(DecodeCharacter, ReadsWholeCharactersOnly) {
    const DecodedCharacter read = decodeCharacter(GetParam().bytes);
    EXPECT_EQ(read.valid, GetParam().valid);
    EXPECT_EQ(read.value, GetParam().value);
    EXPECT_EQ(read.length, GetParam().length);
}

INSTANTIATE_TEST_SUITE_P(Texts, DecodeCharacter,
                         ::testing::Values(CharacterCase{"Letter", "ab", true, U'a', 1},
                                           CharacterCase{"Nul", "\0a"sv, true, 0, 1},
                                           CharacterCase{"TwoBytes", "\xC3\xA4z", true, 0xE4, 2},
                                           CharacterCase{"LowestOfTwo", "\xC2\x80", true, 0x80, 2},
                                           CharacterCase{"ThreeBytes", "\xE8\xA1\xA8", true, 0x8868, 3},
                                           CharacterCase{"LowestOfThree", "\xE0\xA0\x80", true, 0x800, 3},
                                           CharacterCase{"FourBytes", "\xF0\x9F\x98\x80", true, 0x1F600, 4},
                                           CharacterCase{"Highest", "\xF4\x8F\xBF\xBF", true, 0x10FFFF, 4},
                                           CharacterCase{"AboveHighest", "\xF4\x90\x80\x80", false, kNoCharacter, 1},
                                           CharacterCase{"LeadF5", "\xF5\x80\x80\x80", false, kNoCharacter, 1},
                                           CharacterCase{"OverlongTwo", "\xC0\xAF", false, kNoCharacter, 1},
                                           CharacterCase{"OverlongThree", "\xE0\x80\xAF", false, kNoCharacter, 1},
                                           CharacterCase{"OverlongFour", "\xF0\x80\x80\xAF", false, kNoCharacter, 1},
                                           CharacterCase{"Surrogate", "\xED\xA0\x80", false, kNoCharacter, 1},
                                           CharacterCase{"LoneContinuation", "\x80z", false, kNoCharacter, 1},
                                           CharacterCase{"CutShort", "\xE8\xA1", false, kNoCharacter, 2},
                                           CharacterCase{"BrokenOff", "\xE8\xA1z", false, kNoCharacter, 2},
                                           CharacterCase{"LeadAlone", "\xE8", false, kNoCharacter, 1}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(IsPlainAscii, LooksAtEveryByte) {
    EXPECT_TRUE(isPlainAscii(""));
    EXPECT_TRUE(isPlainAscii("docs/read me.txt"));
    const std::string plain(21, '\x7F');
    ASSERT_TRUE(isPlainAscii(plain));
    for (std::size_t index = 0; index < plain.size(); ++index) {
        for (const char wrong : {'\0', '\x80', '\xFF'}) {
            std::string text = plain;
            text[index] = wrong;
            EXPECT_FALSE(isPlainAscii(text)) << index;
        }
    }
}

/// Encodes into a buffer of `size` bytes and looks that nothing behind it is touched.
std::string encoded(const TextCodec& codec, std::string_view utf8, std::size_t size, bool& whole) {
    std::string buffer(size + 8, '#');
    const TextCodec::Written written = codec.encode(utf8, buffer.data(), size);
    EXPECT_LT(written.length, size);
    EXPECT_EQ(buffer[written.length], '\0');
    EXPECT_EQ(buffer.substr(size), "########");
    whole = written.whole;
    return buffer.substr(0, written.length);
}

struct EncodeCase {
    const char* name;
    std::string_view text;
    std::size_t size;
    std::string_view expected;
    bool whole;
};

class EncodeUtf8 : public ::testing::TestWithParam<EncodeCase> {};

TEST_P(EncodeUtf8, CutsAtACharacter) {
    bool whole = !GetParam().whole;
    EXPECT_EQ(encoded(utf8Codec(), GetParam().text, GetParam().size, whole), GetParam().expected);
    EXPECT_EQ(whole, GetParam().whole);
}

INSTANTIATE_TEST_SUITE_P(Texts, EncodeUtf8,
                         ::testing::Values(EncodeCase{"Empty", "", 1, "", true},
                                           EncodeCase{"EmptyView", std::string_view(), 1, "", true},
                                           EncodeCase{"NoRoom", "a", 1, "", false},
                                           EncodeCase{"JustFits", "abc", 4, "abc", true},
                                           EncodeCase{"OneTooLong", "abcd", 4, "abc", false},
                                           EncodeCase{"WideJustFits", "a\xE8\xA1\xA8", 5, "a\xE8\xA1\xA8", true},
                                           EncodeCase{"WideCutTwoBytesIn", "a\xE8\xA1\xA8", 4, "a", false},
                                           EncodeCase{"WideCutOneByteIn", "a\xE8\xA1\xA8", 3, "a", false},
                                           EncodeCase{"FourBytesCut", "\xF0\x9F\x98\x80", 4, "", false},
                                           EncodeCase{"NulInside", "a\0b"sv, 9, "a_b", true},
                                           EncodeCase{"NoCharacter",
                                                      "a\xFF"
                                                      "b",
                                                      9, "a_b", true},
                                           EncodeCase{"Truncated", "a\xE8\xA1", 9, "a_", true}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(DecodeUtf8, ReplacesWhatIsNoCharacter) {
    EXPECT_EQ(utf8Codec().decode("a\xE8\xA1\xA8"), "a\xE8\xA1\xA8");
    EXPECT_EQ(utf8Codec().decode("a\xFF"
                                 "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(utf8Codec().decode(""), "");
}

TEST(DecodeUtf8, NamesFilesByTheirCharacters) {
    EXPECT_EQ(utf8Codec().decodePath("d/\xE8\xA1\xA8.zip"), std::filesystem::path(u8"d/\u8868.zip"));
}

}  // namespace
}  // namespace archiver
