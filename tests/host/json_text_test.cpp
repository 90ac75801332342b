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

}  // namespace
}  // namespace tovar::host
