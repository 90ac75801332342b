#include "shell/file_descriptors.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

/// Every other byte from a place on, as far as they are not NUL: a plain name in UTF-16.
std::string nameAt(const std::string& block, std::size_t at) {
    std::string name;
    for (; at + 1 < block.size() && block[at] != '\0'; at += 2) name += block[at];
    return name;
}

TEST(FileDescriptors, DescribeAFileToTheByte) {
    const auto block = buildFileDescriptors(
        {{.path = L"a\\b", .folder = false, .size = 0x1'0000'0203, .writeTime = 0x0102030405060708}});
    ASSERT_TRUE(block.has_value());
    std::string expected("\x01\0\0\0", 4);         // how many
    expected += std::string("\x64\x40\0\x80", 4);  // UTF-16, progress, size, write time, attributes
    expected += std::string(16 + 8 + 8, '\0');     // class, icon's size and place
    expected += std::string("\x80\0\0\0", 4);      // FILE_ATTRIBUTE_NORMAL
    expected += std::string(8 + 8, '\0');          // created, accessed
    expected += std::string("\x08\x07\x06\x05\x04\x03\x02\x01", 8);
    expected += std::string("\x01\0\0\0\x03\x02\0\0", 8);  // size, the high half first
    expected += std::string("a\0\\\0b\0", 6) + std::string(520 - 6, '\0');
    EXPECT_EQ(block->size(), 4U + 592U);
    EXPECT_EQ(*block, expected);
}

TEST(FileDescriptors, DescribeAFolderWithoutSizeAndTime) {
    const auto block = buildFileDescriptors({{.path = L"f", .folder = true, .size = 9, .writeTime = 0}});
    ASSERT_TRUE(block.has_value());
    std::string expected("\x01\0\0\0\x04\x40\0\x80", 8);
    expected += std::string(32, '\0') + std::string("\x10\0\0\0", 4) + std::string(16 + 8 + 8, '\0');
    expected += std::string("f\0", 2) + std::string(518, '\0');
    EXPECT_EQ(*block, expected);
}

TEST(FileDescriptors, StandOneBehindTheOther) {
    const auto block = buildFileDescriptors({{.path = L"one"}, {.path = L"two"}});
    ASSERT_TRUE(block.has_value());
    ASSERT_EQ(block->size(), 4U + 2 * 592U);
    EXPECT_EQ((*block)[0], 2);
    EXPECT_EQ(nameAt(*block, 4 + 72), "one");
    EXPECT_EQ(nameAt(*block, 4 + 592 + 72), "two");
}

TEST(FileDescriptors, WriteCharactersAboveTheFirstPlaneAsPairs) {
    std::wstring name;
    if constexpr (sizeof(wchar_t) > 2) {
        name = static_cast<wchar_t>(0x1F600);
    } else {
        name = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    }
    const auto block = buildFileDescriptors({{.path = name}});
    ASSERT_TRUE(block.has_value());
    EXPECT_EQ(block->substr(4 + 72, 6), std::string("\x3D\xD8\x00\xDE\0\0", 6));
}

TEST(FileDescriptors, HoldPathsOf259Characters) {
    EXPECT_TRUE(buildFileDescriptors({{.path = std::wstring(259, L'x')}}).has_value());
}

TEST(FileDescriptors, AreRefusedForLongerPaths) {
    EXPECT_FALSE(buildFileDescriptors({{.path = L"a"}, {.path = std::wstring(260, L'x')}}).has_value());
}

TEST(FileDescriptors, AreRefusedForTooManyFiles) {
    const FileDescriptor file{.path = L"x"};
    EXPECT_TRUE(buildFileDescriptors(std::vector(100'000, file)).has_value());
    EXPECT_FALSE(buildFileDescriptors(std::vector(100'001, file)).has_value());
}

TEST(FileDescriptors, AreRefusedForNoFiles) { EXPECT_FALSE(buildFileDescriptors({}).has_value()); }

}  // namespace
}  // namespace tovar
