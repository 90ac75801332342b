#include "archivers/formats/legacy_text.h"

#include <gtest/gtest.h>

#include "archivers/formats/utf8.h"
#include "formats/support/files.h"

namespace archiver {
namespace {

std::string decoded(std::string_view bytes, LegacyPage page) {
    std::string text;
    appendLegacyText(bytes, page, text);
    return text;
}

struct PageCase {
    unsigned codePage;
    std::string_view bytes, text;
};
class LegacyPages : public testing::TestWithParam<PageCase> {};

TEST_P(LegacyPages, AreRead) {
    bool read = false;
    for (const LegacyPage page : {LegacyPage::kOem, LegacyPage::kAnsi}) {
        if (test::codePageOf(page) != GetParam().codePage) continue;
        EXPECT_EQ(decoded(GetParam().bytes, page), GetParam().text);
        read = true;
    }
    if (!read) GTEST_SKIP() << "another code page here";
}

INSTANTIATE_TEST_SUITE_P(Texts, LegacyPages,
                         testing::Values(PageCase{437, "gr\x81n \x80\xE1\xFF", "grün Çß\u00A0"},
                                         PageCase{437, "\xC9\xCD\xBB", "╔═╗"},
                                         PageCase{1252, "gr\xFCn \x80 \x84\x93", "grün € „“"},
                                         PageCase{932, "\x83\x5C\\\x95\x5C\xB1", "ソ\\表ｱ"},
                                         PageCase{1251, "\xCF\xF0", "Пр"}),
                         [](const auto& each) { return "Case" + std::to_string(each.index); });

TEST(LegacyText, KeepsAscii) {
    std::string bytes;
    for (char byte = 1; byte > 0 && byte < 0x7F; ++byte) bytes += byte;
    EXPECT_EQ(decoded(bytes, LegacyPage::kOem), bytes);
    EXPECT_EQ(decoded(bytes, LegacyPage::kAnsi), bytes);
}

TEST(LegacyText, IsValidWhateverTheBytes) {
    for (const LegacyPage page : {LegacyPage::kOem, LegacyPage::kAnsi}) {
        for (int byte = 1; byte < 256; ++byte) {
            const char pair[] = {static_cast<char>(byte), static_cast<char>(0xFF - byte)};
            EXPECT_TRUE(isUtf8(decoded({pair, 1}, page))) << byte;
            EXPECT_TRUE(isUtf8(decoded({pair, 2}, page))) << byte;
        }
    }
}

TEST(LegacyText, TellsEveryByteFromEveryOther) {
    if (!test::westernCodePages()) GTEST_SKIP() << "not every byte is a character here";
    for (const LegacyPage page : {LegacyPage::kOem, LegacyPage::kAnsi}) {
        for (int first = 1; first < 256; ++first) {
            const std::string text = decoded(std::string(1, static_cast<char>(first)), page);
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

TEST(LegacyBytes, AreExactOrNone) {
    if (!test::westernCodePages()) GTEST_SKIP() << "another code page here";
    std::string bytes = "before ";
    EXPECT_TRUE(appendLegacyBytes("gr\xC3\xBCn", LegacyPage::kOem, bytes));
    EXPECT_TRUE(appendLegacyBytes(" gr\xC3\xBCn", LegacyPage::kAnsi, bytes));
    EXPECT_TRUE(appendLegacyBytes("", LegacyPage::kAnsi, bytes));
    EXPECT_EQ(bytes, "before gr\x81n gr\xFCn");
    EXPECT_FALSE(appendLegacyBytes("a\xC4\x80", LegacyPage::kAnsi, bytes));  // a letter that would become a plain A
    EXPECT_FALSE(appendLegacyBytes("\xFF", LegacyPage::kAnsi, bytes));
    EXPECT_EQ(bytes, "before gr\x81n gr\xFCn");
}

}  // namespace
}  // namespace archiver
