#include "archivers/commands/shown_names.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

TEST(ShownName, LeavesOrdinaryNamesAlone) {
    EXPECT_EQ(shownName("docs/read me & more.txt"), "docs/read me & more.txt");
    EXPECT_EQ(shownName("\xE3\x83\x86\xE3\x82\xB9\xE3\x83\x88 \xF0\x9F\x98\x80"),
              "\xE3\x83\x86\xE3\x82\xB9\xE3\x83\x88 \xF0\x9F\x98\x80");
    EXPECT_EQ(shownName(""), "");
}

TEST(ShownName, ReplacesWhatMisleads) {
    EXPECT_EQ(shownName("a\nb\x1B[2Jc\x7F"),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD[2Jc\xEF\xBF\xBD");
    EXPECT_EQ(shownName("\xC2\x9B"), "\xEF\xBF\xBD");                    // U+009B, a control character
    EXPECT_EQ(shownName("exe.\xE2\x80\xAEgpj"), "exe.\xEF\xBF\xBDgpj");  // U+202E, right to left
    EXPECT_EQ(shownName("\xE2\x81\xA7\xE2\x80\x8F\xD8\x9C\xE2\x80\xA8"),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(shownName("a\xFF"
                        "b"),
              "a\xEF\xBF\xBD"
              "b");  // no character
}

/// Fits texts of up to so many characters that take one column each.
TextFits upTo(std::size_t columns) {
    return [columns](std::string_view text) {
        std::size_t count = 0;
        for (const char byte : text) count += (static_cast<unsigned char>(byte) & 0xC0) != 0x80 ? 1 : 0;
        return count <= columns;
    };
}

struct ShortenCase {
    const char* name;
    const char* text;
    std::size_t columns;
    const char* expected;
};
class ShortenMiddle : public ::testing::TestWithParam<ShortenCase> {};

TEST_P(ShortenMiddle, GivesWhatFits) {
    EXPECT_EQ(shortenMiddle(GetParam().text, upTo(GetParam().columns)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ShortenMiddle,
    ::testing::Values(ShortenCase{"Fitting", "C:\\a\\b.txt", 10, "C:\\a\\b.txt"}, ShortenCase{"Empty", "", 0, ""},
                      ShortenCase{"KeepsTheLastPart", "C:\\folder\\more\\name.txt", 18, "C:\\fol...\\name.txt"},
                      ShortenCase{"KeepsTheLastPartOfAnotherSystem", "usr/share/docs/name.txt", 16, "usr/.../name.txt"},
                      ShortenCase{"KeepsTheLastFolder", "one/two/three/", 13, "one.../three/"},
                      ShortenCase{"LastPartAlone", "folder/name.txt", 12, ".../name.txt"},
                      ShortenCase{"LongLastPart", "a/0123456789.txt", 11, "a/01....txt"},
                      ShortenCase{"NoParts", "0123456789", 7, "01...89"},
                      ShortenCase{"Odd", "0123456789", 8, "01...789"}, ShortenCase{"OnlyDots", "0123456789", 3, "..."},
                      ShortenCase{"NoRoomAtAll", "0123456789", 0, "..."},
                      ShortenCase{"WholeCharacters", "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC", 5,
                                  "\xC3\xA4...\xC3\xBC"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ShortenMiddle, IsQuickForLongNames) {
    const std::string name(65'535, 'x');
    int asked = 0;
    const auto fits = [&](std::string_view text) {
        ++asked;
        return text.size() <= 40;
    };
    EXPECT_EQ(shortenMiddle(name, fits), std::string(18, 'x') + "..." + std::string(19, 'x'));
    EXPECT_LE(asked, 20);
}

}  // namespace
}  // namespace archiver
