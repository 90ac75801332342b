#include "archivers/commands/win32/wide_text.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

TEST(WideOf, GivesEveryCharacter) {
    EXPECT_EQ(wideOf(""), L"");
    EXPECT_EQ(wideOf("a \xC3\xA4 \xE3\x83\x86"), L"a \x00E4 \x30C6");
    EXPECT_EQ(wideOf("\xF0\x9F\x98\x80"), L"\xD83D\xDE00");
    EXPECT_EQ(wideOf("\xF4\x8F\xBF\xBF"), L"\xDBFF\xDFFF");
}

TEST(WideOf, ReplacesWhatIsNone) {
    EXPECT_EQ(wideOf("a\xFF"
                     "b"),
              L"a\xFFFD"
              L"b");
    EXPECT_EQ(wideOf("\xED\xA0\x80").front(), L'\xFFFD');  // half of a pair
}

}  // namespace
}  // namespace archiver
