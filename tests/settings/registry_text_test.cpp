#include "settings/registry_text.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(RegistryText, IsUtf16WithANul) {
    EXPECT_EQ(toRegistryText(L"a\u00E4\u8868"), (Bytes{'a', 0, 0xE4, 0, 0x68, 0x88, 0, 0}));
    EXPECT_EQ(toRegistryText(L""), (Bytes{0, 0}));
}

TEST(RegistryText, WritesSurrogatePairs) {
    EXPECT_EQ(toRegistryText(L"\U0001F4E6"), (Bytes{0x3D, 0xD8, 0xE6, 0xDC, 0, 0}));
}

TEST(RegistryText, ReadsSurrogatePairs) {
    EXPECT_EQ(fromRegistryText(Bytes{0x3D, 0xD8, 0xE6, 0xDC, 0, 0}), L"\U0001F4E6");
}

TEST(RegistryText, ReadsWithAndWithoutNul) {
    EXPECT_EQ(fromRegistryText(Bytes{'a', 0, 'b', 0, 0, 0}), L"ab");
    EXPECT_EQ(fromRegistryText(Bytes{'a', 0, 'b', 0}), L"ab");
    EXPECT_EQ(fromRegistryText(Bytes{}), L"");
    EXPECT_EQ(fromRegistryText(Bytes{0, 0}), L"");
}

TEST(RegistryText, TakesOneNulOff) {
    EXPECT_EQ(fromRegistryText(Bytes{'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}), std::wstring(L"a\0b\0", 4));
}

TEST(RegistryText, LeavesHalfACharacterOut) {
    EXPECT_EQ(fromRegistryText(Bytes{'a', 0, 'b'}), L"a");
    EXPECT_EQ(fromRegistryText(Bytes{'a'}), L"");
}

}  // namespace
}  // namespace tovar
