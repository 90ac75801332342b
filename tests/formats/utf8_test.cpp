#include "archivers/formats/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

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

class DecodeCharacter : public testing::TestWithParam<CharacterCase> {};

TEST_P(DecodeCharacter, ReadsWholeCharactersOnly) {
    const DecodedCharacter read = decodeCharacter(GetParam().bytes);
    EXPECT_EQ(read.valid, GetParam().valid);
    EXPECT_EQ(read.value, GetParam().value);
    EXPECT_EQ(read.length, GetParam().length);
}

INSTANTIATE_TEST_SUITE_P(Texts, DecodeCharacter,
                         testing::Values(CharacterCase{"Letter", "ab", true, U'a', 1},
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

struct ValidityCase {
    const char* name;
    std::string_view bytes;
    bool valid;
};
class Utf8Validity : public testing::TestWithParam<ValidityCase> {};

TEST_P(Utf8Validity, FollowsRfc3629) { EXPECT_EQ(isUtf8(GetParam().bytes), GetParam().valid); }

INSTANTIATE_TEST_SUITE_P(
    Texts, Utf8Validity,
    testing::Values(ValidityCase{"Empty", "", true}, ValidityCase{"Ascii", "a\x7F", true},
                    ValidityCase{"TwoBytes", "\xC2\x80\xDF\xBF", true},
                    ValidityCase{"ThreeBytes", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", true},
                    ValidityCase{"FourBytes", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", true},
                    ValidityCase{"LoneContinuation", "a\x80", false}, ValidityCase{"OverlongSlash", "\xC0\xAF", false},
                    ValidityCase{"OverlongThree", "\xE0\x9F\xBF", false},
                    ValidityCase{"OverlongFour", "\xF0\x8F\xBF\xBF", false},
                    ValidityCase{"Surrogate", "\xED\xA0\x80", false},
                    ValidityCase{"TooLarge", "\xF4\x90\x80\x80", false},
                    ValidityCase{"NoSuchLead", "\xF5\x80\x80\x80", false}, ValidityCase{"CutShort", "\xE6\x97", false},
                    ValidityCase{"BadThird", "\xE6\x97\x41", false}, ValidityCase{"Latin1", "gr\xFCn", false}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(IsAscii, FindsAHighByteWhereverItStands) {
    for (std::size_t size = 0; size < 40; ++size) {
        std::string text(size, 'a');
        EXPECT_TRUE(isAscii(text));
        for (std::size_t at = 0; at < size; ++at) {
            text[at] = '\x80';
            EXPECT_FALSE(isAscii(text)) << size << " " << at;
            text[at] = 'a';
        }
    }
}

TEST(AppendUtf8, WritesEachLength) {
    std::string text = "x";
    appendUtf8(U'\x7F', text);
    appendUtf8(U'\u00FC', text);
    appendUtf8(U'\u65E5', text);
    appendUtf8(U'\U0001F600', text);
    EXPECT_EQ(text, "x\x7F\xC3\xBC\xE6\x97\xA5\xF0\x9F\x98\x80");
}

TEST(AppendUtf8, ReplacesWhatIsNoCharacter) {
    std::string text;
    appendUtf8(static_cast<char32_t>(0xD800), text);
    appendUtf8(static_cast<char32_t>(0x110000), text);
    EXPECT_EQ(text, "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(AppendUtf8, JoinsSurrogatesOfAWideText) {
    std::string text;
    const wchar_t units[] = {L'a', 0xD83D, 0xDE00, 0xD83D, L'b', 0xDE00};
    appendUtf8(std::wstring_view(units, 6), text);
    EXPECT_EQ(text,
              "a\xF0\x9F\x98\x80\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
}

}  // namespace
}  // namespace archiver
