#include "archivers/commands/secret_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace archiver {
namespace {

TEST(Wipe, OverwritesMemory) {
    char memory[] = "secret!";
    wipe(memory, 6);
    EXPECT_EQ(std::memcmp(memory, "\0\0\0\0\0\0!", 8), 0);
}

TEST(Wipe, OverwritesTheWholeBufferOfAText) {
    std::string text = "a password that is longer than any text inside the object";
    text.resize(3);  // the rest is still in the buffer
    const std::size_t capacity = text.capacity();
    const char* const buffer = text.data();
    wipe(text);
    EXPECT_TRUE(text.empty());
    ASSERT_EQ(text.data(), buffer);
    ASSERT_EQ(text.capacity(), capacity);
    text.resize(0);
    EXPECT_EQ(text.data()[0], '\0');
}

TEST(Wipe, OverwritesShortTexts) {
    std::wstring text = L"abc";
    wipe(text);
    EXPECT_TRUE(text.empty());
}

}  // namespace
}  // namespace archiver
