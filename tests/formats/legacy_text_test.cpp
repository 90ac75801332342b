#include "archivers/formats/legacy_text.h"

#include <gtest/gtest.h>

#include "archivers/formats/utf8.h"

namespace archiver {
namespace {

std::string decoded(std::string_view bytes, LegacyPage page) {
    std::string text;
    appendLegacyText(bytes, page, text);
    return text;
}

// The code pages of the test environment: 437 and 1252, natively and under Wine.
TEST(LegacyText, ReadsTheOemCodePage) {
    EXPECT_EQ(decoded("gr\x81n \x80\xE1\xFF", LegacyPage::kOem), "grün Çß\u00A0");
    EXPECT_EQ(decoded("\xC9\xCD\xBB", LegacyPage::kOem), "╔═╗");
}

TEST(LegacyText, ReadsTheAnsiCodePage) { EXPECT_EQ(decoded("gr\xFCn \x80 \x84\x93", LegacyPage::kAnsi), "grün € „“"); }

TEST(LegacyText, KeepsControlCharactersAndAscii) {
    std::string bytes;
    for (char byte = 1; byte > 0 && byte < 0x7F; ++byte) bytes += byte;
    EXPECT_EQ(decoded(bytes, LegacyPage::kOem), bytes);
    EXPECT_EQ(decoded(bytes, LegacyPage::kAnsi), bytes);
}

TEST(LegacyText, TellsEveryByteFromEveryOther) {
    for (const LegacyPage page : {LegacyPage::kOem, LegacyPage::kAnsi}) {
        for (int first = 1; first < 256; ++first) {
            const std::string text = decoded(std::string(1, static_cast<char>(first)), page);
            EXPECT_TRUE(isUtf8(text));
            EXPECT_NE(text, "\uFFFD");
            for (int second = first + 1; second < 256; ++second) {
                EXPECT_NE(text, decoded(std::string(1, static_cast<char>(second)), page)) << first << " " << second;
            }
        }
    }
}

TEST(LegacyText, AppendsNothingForNothing) {
    std::string text = "x";
    appendLegacyText("", LegacyPage::kOem, text);
    EXPECT_EQ(text, "x");
}

}  // namespace
}  // namespace archiver
