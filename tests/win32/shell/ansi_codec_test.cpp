#include "shell/win32/ansi_codec.h"

#include <gtest/gtest.h>

#include "shell/win32/handles.h"
#include "win32/shell/temporary_folder.h"

namespace tovar {
namespace {

constexpr UINT kWestern = 1252;
constexpr UINT kJapanese = 932;

// The texts of this process's own code page, whichever of the usual ones it is.
struct OwnText {
    std::wstring_view wide;
    std::string_view bytes;
};
std::optional<OwnText> ownText() {
    switch (::GetACP()) {
        case kWestern:
            return OwnText{L"\u00E9\u20AC", "\xE9\x80"};
        case kJapanese:
            return OwnText{L"\u8868\u30BD", "\x95\x5C\x83\x5C"};
        case CP_UTF8:
            return OwnText{L"\u8868\u00E9", "\xE8\xA1\xA8\xC3\xA9"};
        default:
            return std::nullopt;
    }
}

TEST(AnsiCodec, TakesTheProcesssCodePage) {
    EXPECT_EQ(AnsiCodec().codePage(), ::GetACP());
    const auto own = ownText();
    if (!own) GTEST_SKIP() << "code page " << ::GetACP();
    EXPECT_EQ(AnsiCodec().encode(own->wide), own->bytes);
    EXPECT_EQ(AnsiCodec().decode(own->bytes), own->wide);
}

TEST(AnsiCodec, WritesWhatTheSystemReads) {
    const auto own = ownText();
    if (!own) GTEST_SKIP() << "code page " << ::GetACP();
    const test::TemporaryFolder folder;
    const std::wstring path = folder / (std::wstring(own->wide) + L".txt");
    UniqueHandle file(adoptHandle(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)));
    ASSERT_TRUE(file);
    file.reset();
    const auto bytes = AnsiCodec().encode(path);
    ASSERT_TRUE(bytes);
    EXPECT_NE(::GetFileAttributesA(bytes->c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(AnsiCodec, ConvertsWesternTexts) {
    EXPECT_EQ(AnsiCodec(kWestern).encode(L"a\u00E9\u20AC\u2122"), "a\xE9\x80\x99");
    EXPECT_EQ(AnsiCodec(kWestern).decode("a\xE9\x80\x99"), L"a\u00E9\u20AC\u2122");
}

TEST(AnsiCodec, ConvertsJapaneseTexts) {
    EXPECT_EQ(AnsiCodec(kJapanese).encode(L"\u8868\u30BD\u4E88\uFF71a\\"),
              "\x95\x5C\x83\x5C\x97\x5C\xB1"
              "a\\");
    EXPECT_EQ(AnsiCodec(kJapanese).decode("\x95\x5C\x83\x5C\x97\x5C\xB1"
                                          "a\\"),
              L"\u8868\u30BD\u4E88\uFF71a\\");
}

TEST(AnsiCodec, ConvertsUtf8) {
    EXPECT_EQ(AnsiCodec(CP_UTF8).encode(L"\u8868\u00E9\U0001F4E6"), "\xE8\xA1\xA8\xC3\xA9\xF0\x9F\x93\xA6");
    EXPECT_EQ(AnsiCodec(CP_UTF8).decode("\xE8\xA1\xA8\xC3\xA9\xF0\x9F\x93\xA6"), L"\u8868\u00E9\U0001F4E6");
    EXPECT_EQ(AnsiCodec(CP_UTF8).decode("a\xC1\x9C\xFF"), L"a\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(AnsiCodec(CP_UTF8).encode(std::wstring(1, static_cast<wchar_t>(0xD800))), std::nullopt);
}

struct LookAlike {
    const char* name;
    UINT codePage;
    std::wstring_view text;
};
class LookAlikes : public testing::TestWithParam<LookAlike> {};
TEST_P(LookAlikes, AreNoCharactersOfTheCodePage) {
    EXPECT_EQ(AnsiCodec(GetParam().codePage).encode(GetParam().text), std::nullopt);
    EXPECT_EQ(AnsiCodec(GetParam().codePage).encode(L"a" + std::wstring(GetParam().text) + L"b"), std::nullopt);
}
INSTANTIATE_TEST_SUITE_P(
    AnsiCodec, LookAlikes,
    testing::Values(
        LookAlike{"WesternFullwidthBackslash", kWestern, L"\uFF3C"}, LookAlike{"WesternSetMinus", kWestern, L"\u2216"},
        LookAlike{"WesternFullwidthSlash", kWestern, L"\uFF0F"}, LookAlike{"WesternDivisionSlash", kWestern, L"\u2215"},
        LookAlike{"WesternFullwidthColon", kWestern, L"\uFF1A"},
        LookAlike{"WesternFullwidthQuote", kWestern, L"\uFF02"}, LookAlike{"WesternPrime", kWestern, L"\u2032"},
        LookAlike{"WesternMacron", kWestern, L"\u0101"}, LookAlike{"WesternKanji", kWestern, L"\u8868"},
        LookAlike{"WesternBeyondFirstPlane", kWestern, L"\U0001F4E6"}, LookAlike{"JapaneseYen", kJapanese, L"\u00A5"},
        LookAlike{"JapaneseOverline", kJapanese, L"\u203E"}, LookAlike{"JapaneseBrokenBar", kJapanese, L"\u00A6"},
        LookAlike{"JapaneseAccent", kJapanese, L"\u00E9"},
        LookAlike{"JapaneseBeyondFirstPlane", kJapanese, L"\U0001F4E6"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(AnsiCodec, ReplacesDamagedBytesOneByOne) {
    EXPECT_EQ(AnsiCodec(kJapanese).decode("a\x95"), L"a\uFFFD");
    EXPECT_EQ(AnsiCodec(kJapanese).decode("\x95\x5C\x81 b"), L"\u8868\uFFFD b");
    EXPECT_EQ(AnsiCodec(kJapanese).decode("\x81\x0A\x83\x5C"), L"\uFFFD\n\u30BD");
}

TEST(AnsiCodec, DecodesEveryByteToSomething) {
    for (const UINT codePage : {kWestern, kJapanese, static_cast<UINT>(CP_UTF8), 1251u, 936u, 949u, 950u}) {
        std::string bytes;
        for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
        const std::wstring text = AnsiCodec(codePage).decode(bytes);
        ASSERT_GE(text.size(), 192u) << codePage;
        for (wchar_t code = 0; code < 0x80; ++code) EXPECT_EQ(text[code], code) << codePage;
    }
}

TEST(AnsiCodec, ReturnsEveryCharacterItEncodes) {
    for (const UINT codePage : {kWestern, kJapanese}) {
        int known = 0;
        for (unsigned code = 1; code < 0x10000; ++code) {
            const wchar_t character = static_cast<wchar_t>(code);
            const auto bytes = AnsiCodec(codePage).encode({&character, 1});
            if (!bytes) continue;
            // Undefined bytes of some code pages stand for characters of private use, on some systems.
            if (code >= 0xE000 && code < 0xF900) continue;
            ++known;
            EXPECT_EQ(AnsiCodec(codePage).decode(*bytes), std::wstring(1, character)) << codePage << ' ' << code;
            EXPECT_EQ(*bytes == "\\", code == 0x5C) << codePage << ' ' << code;
        }
        EXPECT_GT(known, codePage == kWestern ? 240 : 7000) << codePage;
    }
}

TEST(AnsiCodec, KeepsNulsAndEmptyTexts) {
    EXPECT_EQ(AnsiCodec(kWestern).encode(L""), "");
    EXPECT_EQ(AnsiCodec(kWestern).decode(""), L"");
    EXPECT_EQ(AnsiCodec(kWestern).encode(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(AnsiCodec(kJapanese).decode(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(AnsiCodec, AppendsToTheText) {
    std::wstring text = L"x";
    AnsiCodec(kWestern).decodeTo("\xE9", text);
    AnsiCodec(kJapanese).decodeTo("\x95\x5C", text);
    AnsiCodec(kJapanese).decodeTo("\x95", text);
    EXPECT_EQ(text, L"x\u00E9\u8868\uFFFD");
}

TEST(AnsiCodec, KnowsNoUnknownCodePage) {
    EXPECT_EQ(AnsiCodec(9).encode(L"a"), std::nullopt);
    EXPECT_EQ(AnsiCodec(9).decode("ab"), L"\uFFFD\uFFFD");
}

}  // namespace
}  // namespace tovar
