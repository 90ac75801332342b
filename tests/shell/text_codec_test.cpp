#include "shell/text_codec.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace tovar {
namespace {

// The same character takes two units where wide texts are UTF-16.
const std::wstring kBeyondFirstPlane = L"\U0001F4E6";

TEST(Utf8Codec, EncodesEveryLength) {
    EXPECT_EQ(Utf8Codec().encode(L"a\u007F"), "a\x7F");
    EXPECT_EQ(Utf8Codec().encode(L"\u0080\u07FF"), "\xC2\x80\xDF\xBF");
    EXPECT_EQ(Utf8Codec().encode(L"\u0800\uFFFF"), "\xE0\xA0\x80\xEF\xBF\xBF");
    EXPECT_EQ(Utf8Codec().encode(kBeyondFirstPlane), "\xF0\x9F\x93\xA6");
    EXPECT_EQ(Utf8Codec().encode(L"\U00010000\U0010FFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8Codec, DecodesEveryLength) {
    EXPECT_EQ(Utf8Codec().decode("a\x7F"), L"a\u007F");
    EXPECT_EQ(Utf8Codec().decode("\xC2\x80\xDF\xBF"), L"\u0080\u07FF");
    EXPECT_EQ(Utf8Codec().decode("\xE0\xA0\x80\xEF\xBF\xBF"), L"\u0800\uFFFF");
    EXPECT_EQ(Utf8Codec().decode("\xF0\x9F\x93\xA6"), kBeyondFirstPlane);
    EXPECT_EQ(Utf8Codec().decode("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), L"\U00010000\U0010FFFF");
}

TEST(Utf8Codec, KeepsNuls) {
    EXPECT_EQ(Utf8Codec().encode(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(Utf8Codec().decode(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(Utf8Codec, AppendsToTheText) {
    std::wstring text = L"a\u00E9";
    Utf8Codec().decodeTo("b\xC3\xA4", text);
    EXPECT_EQ(text, L"a\u00E9b\u00E4");
}

TEST(Utf8Codec, HasNoFormForASurrogateAlone) {
    EXPECT_EQ(Utf8Codec().encode(std::wstring(1, static_cast<wchar_t>(0xD800))), std::nullopt);
    EXPECT_EQ(Utf8Codec().encode(std::wstring(1, static_cast<wchar_t>(0xDC00)) + L"a"), std::nullopt);
    EXPECT_EQ(Utf8Codec().encode(L"a" + std::wstring(1, static_cast<wchar_t>(0xDBFF)) + L"b"), std::nullopt);
}

#if WCHAR_MAX > 0xFFFF
TEST(Utf8Codec, HasNoFormForValuesBeyondUnicode) {
    EXPECT_EQ(Utf8Codec().encode(std::wstring(1, static_cast<wchar_t>(0x110000))), std::nullopt);
    EXPECT_EQ(Utf8Codec().encode(std::wstring(1, static_cast<wchar_t>(-1))), std::nullopt);
}
#endif

struct DamagedCase {
    const char* name;
    std::string_view bytes;
    std::wstring_view expected;
};
class DamagedUtf8 : public testing::TestWithParam<DamagedCase> {};
TEST_P(DamagedUtf8, BecomesReplacementCharacters) {
    EXPECT_EQ(Utf8Codec().decode(GetParam().bytes), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Utf8Codec, DamagedUtf8,
    testing::Values(
        // The examples of the Unicode Standard, section 3.9, tables 3-8 to 3-11.
        DamagedCase{"NonShortest", "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41",
                    L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        DamagedCase{"Surrogates", "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41",
                    L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        DamagedCase{"Others", "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
        DamagedCase{"Truncated", "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", L"\uFFFD\uFFFD\uFFFD\uFFFDA"},
        DamagedCase{"TruncatedAtTheEnd", "a\xF0\x9F\x93", L"a\uFFFD"},
        // An overlong "\" or "/" would be a separator that nobody saw.
        DamagedCase{"OverlongBackslash",
                    "a\xC1\x9C"
                    "b",
                    L"a\uFFFD\uFFFDb"},
        DamagedCase{"OverlongSlash",
                    "a\xC0\xAF"
                    "b",
                    L"a\uFFFD\uFFFDb"},
        DamagedCase{"SeparatorBehindLeadByte", "\xE3\x81\\", L"\uFFFD\\"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(Utf8Codec, DecodesEveryByteAloneWithoutAByteOfText) {
    for (int value = 0x80; value <= 0xFF; ++value) {
        const char byte = static_cast<char>(value);
        EXPECT_EQ(Utf8Codec().decode({&byte, 1}), L"\uFFFD") << value;
    }
}

TEST(Utf8Codec, ReturnsEveryCharacterItEncodes) {
    std::wstring all;
    for (char32_t code = 1; code < 0xD800; ++code) all += static_cast<wchar_t>(code);
    for (char32_t code = 0xE000; code <= 0xFFFF; ++code) all += static_cast<wchar_t>(code);
    const auto bytes = Utf8Codec().encode(all);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 0x7Fu + 2 * 0x780u + 3 * (0xD800u - 0x800u + 0x2000u));
    EXPECT_EQ(Utf8Codec().decode(*bytes), all);
}

}  // namespace
}  // namespace tovar
