#include "shell/letter_case.h"

#include <gtest/gtest.h>

namespace tovar::test {
namespace {

TEST(LetterCase, FoldsLettersOfAnyLanguageAndNothingElse) {
    EXPECT_EQ(foldCase(L""), L"");
    EXPECT_EQ(foldCase(L"Read-Me [1].TXT"), L"read-me [1].txt");
    EXPECT_EQ(foldCase(L"\u00C4\u0416\u03A3I"), L"\u00E4\u0436\u03C3i");
}

TEST(LetterCase, RaisesLettersOfAnyLanguageAndNothingElse) {
    EXPECT_EQ(raiseCase(L""), L"");
    EXPECT_EQ(raiseCase(L"tar.gz_1"), L"TAR.GZ_1");
    EXPECT_EQ(raiseCase(L"\u00E4\u0436i"), L"\u00C4\u0416I");
}

}  // namespace
}  // namespace tovar::test
