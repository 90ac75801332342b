#include "shell/secret_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tovar {
namespace {

// Whether a buffer that still belongs to a text holds zeros only.
template <class Character>
bool isBlank(const Character* buffer, std::size_t length) {
    return std::all_of(buffer, buffer + length, [](Character each) { return each == 0; });
}

TEST(SecretText, IsOverwrittenInItsWholeBuffer) {
    std::wstring text(40, L'x');
    const wchar_t* const buffer = text.data();
    ASSERT_FALSE(isBlank(buffer, 40));
    wipe(text);
    EXPECT_TRUE(text.empty());
    ASSERT_EQ(text.data(), buffer) << "the text did not move";
    EXPECT_TRUE(isBlank(buffer, 40));
}

TEST(SecretText, IsOverwrittenBehindItsEndToo) {
    std::string text = "a long password that does not fit into the object itself";
    const std::size_t length = text.size();
    const char* const buffer = text.data();
    text.resize(1);
    ASSERT_FALSE(isBlank(buffer + 2, length - 2)) << "what was cut off is still there";
    wipe(text);
    EXPECT_TRUE(isBlank(buffer, length));
}

TEST(SecretText, IsOverwrittenWhenItFitsIntoTheObject) {
    std::wstring text = L"abc";
    wipe(text);
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(isBlank(text.data(), 3));
}

TEST(SecretText, IsOverwrittenAtTheEndOfAScope) {
    std::wstring text(40, L'x');
    const wchar_t* const buffer = text.data();
    {
        const WipedAtEnd wiped(text);
        EXPECT_EQ(text.size(), 40U);
    }
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(isBlank(buffer, 40));
}

}  // namespace
}  // namespace tovar
