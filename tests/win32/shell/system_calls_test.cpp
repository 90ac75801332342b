#include "shell/win32/system_calls.h"

#include <gtest/gtest.h>

#include "shell/win32/windows_system_paths.h"

namespace tovar {
namespace {

const std::wstring kLongText = std::wstring(5000, L'p') + L"q";

TEST(TextOfSystem, GivesAShortTextAtOnce) {
    int calls = 0;
    const std::wstring text = textOfSystem([&](wchar_t* buffer, DWORD size) -> DWORD {
        ++calls;
        EXPECT_GE(size, 260U);
        buffer[0] = L'a';
        buffer[1] = L'b';
        return 2;
    });
    EXPECT_EQ(text, L"ab");
    EXPECT_EQ(calls, 1);
}

TEST(TextOfSystem, AsksAgainWithTheSizeThatItWasTold) {
    int calls = 0;
    const std::wstring text = textOfSystem([&](wchar_t* buffer, DWORD size) -> DWORD {
        ++calls;
        if (size <= kLongText.size()) return static_cast<DWORD>(kLongText.size() + 1);
        kLongText.copy(buffer, kLongText.size());
        return static_cast<DWORD>(kLongText.size());
    });
    EXPECT_EQ(text, kLongText);
    EXPECT_EQ(calls, 2);
}

// 260, 520, 1040, 2080, 4160, 8320
TEST(TextOfSystem, DoublesItsRoomForAFunctionThatOnlyCuts) {
    int calls = 0;
    const std::wstring text = textOfSystem([&](wchar_t* buffer, DWORD size) -> DWORD {
        ++calls;
        if (size <= kLongText.size()) return size;
        kLongText.copy(buffer, kLongText.size());
        return static_cast<DWORD>(kLongText.size());
    });
    EXPECT_EQ(text, kLongText);
    EXPECT_EQ(calls, 6);
}

TEST(TextOfSystem, IsEmptyOnFailure) {
    EXPECT_EQ(textOfSystem([](wchar_t*, DWORD) -> DWORD { return 0; }), L"");
}

TEST(ModuleFile, IsTheFullPathOfAModule) {
    const std::wstring expected = WindowsSystemPaths().searchPath(L"kernel32.dll");
    ASSERT_NE(expected, L"");
    EXPECT_EQ(
        ::CompareStringOrdinal(moduleFile(::GetModuleHandleW(L"kernel32.dll")).c_str(), -1, expected.c_str(), -1, TRUE),
        CSTR_EQUAL);
    EXPECT_TRUE(moduleFile(nullptr).ends_with(L"win32_shell_tests.exe"));
}

}  // namespace
}  // namespace tovar
