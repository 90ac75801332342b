#include "host/console/json_text.h"

#include <gtest/gtest.h>

namespace tovar::host {
namespace {

std::string json(std::wstring_view text) {
    std::string out;
    appendJson(out, text);
    return out;
}

TEST(JsonText, QuotesPlainText) { EXPECT_EQ(json(L"a b"), "\"a b\""); }
TEST(JsonText, EscapesQuotesAndBackslashes) { EXPECT_EQ(json(L"a\\\"b"), R"("a\\\"b")"); }
TEST(JsonText, EscapesControlCharacters) { EXPECT_EQ(json(L"\n\x1F\x7F"), R"("\u000a\u001f\u007f")"); }
TEST(JsonText, WritesUtf8) { EXPECT_EQ(json(L"\u00E4\u8868"), "\"\xC3\xA4\xE8\xA1\xA8\""); }
TEST(JsonText, WritesCharactersBeyondTheBasicPlane) { EXPECT_EQ(json(L"\U0001F600"), "\"\xF0\x9F\x98\x80\""); }
TEST(JsonText, ReplacesHalvesOfAPair) {
    EXPECT_EQ(json(std::wstring{L'a', static_cast<wchar_t>(0xD800), L'b'}),
              "\"a\xEF\xBF\xBD"
              "b\"");
    EXPECT_EQ(json(std::wstring{static_cast<wchar_t>(0xDC00)}), "\"\xEF\xBF\xBD\"");
}

std::string printable(std::wstring_view text) {
    std::string out;
    appendPrintable(out, text);
    return out;
}

TEST(PrintableText, LeavesLettersOfEveryLanguage) {
    EXPECT_EQ(printable(L"a b~\u00A0\u00E4\u8868"), "a b~\xC2\xA0\xC3\xA4\xE8\xA1\xA8");
}
TEST(PrintableText, HasNoOrdersForATerminal) {
    EXPECT_EQ(printable(L"a\x1B[2J\r\nb\x7F\u0080\u009Fc"), "a?[2J??b???c");
    EXPECT_EQ(printable(std::wstring_view(L"a\0b", 3)), "a?b");
}

}  // namespace
}  // namespace tovar::host
