#include "archivers/formats/letter_case.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

TEST(FoldCase, MakesLettersEqual) {
    EXPECT_EQ(foldCase(U'a'), foldCase(U'A'));
    EXPECT_EQ(foldCase(U'z'), foldCase(U'Z'));
    EXPECT_EQ(foldCase(U'\u00E4'), foldCase(U'\u00C4'));
    EXPECT_EQ(foldCase(U'\u044F'), foldCase(U'\u042F'));
    EXPECT_EQ(foldCase(U'\u03B1'), foldCase(U'\u0391'));
}

TEST(LowerCase, MakesLettersSmall) {
    EXPECT_EQ(lowerCase(U'A'), U'a');
    EXPECT_EQ(lowerCase(U'Z'), U'z');
    EXPECT_EQ(lowerCase(U'q'), U'q');
    EXPECT_EQ(lowerCase(U'\u00C4'), U'\u00E4');
    EXPECT_EQ(lowerCase(U'\u042F'), U'\u044F');
    EXPECT_EQ(lowerCase(U'\u0391'), U'\u03B1');
}

TEST(LetterCase, KeepsWhatHasNoCase) {
    for (const char32_t character :
         {U'0', U'/', U'\\', U'@', U'[', U'`', U'{', U'_', U'\u8868', U'\U0001F600', char32_t{0}}) {
        EXPECT_EQ(foldCase(character), character);
        EXPECT_EQ(lowerCase(character), character);
    }
}

}  // namespace
}  // namespace archiver
