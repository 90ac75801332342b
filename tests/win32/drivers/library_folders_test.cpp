#include "drivers/library_folders.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "recording/session.h"

namespace tovar {
namespace {

class LibraryFoldersTest : public testing::Test {
protected:
    LibraryFoldersTest() { ::GetEnvironmentVariableW(L"PATH", path_, 32767); }
    ~LibraryFoldersTest() override { ::SetEnvironmentVariableW(L"PATH", path_); }

    std::unique_ptr<LibraryFolders> folders = systemLibraryFolders();

private:
    wchar_t path_[32767] = {};
};

TEST_F(LibraryFoldersTest, BeginWithTheProgramsAndTheSystems) {
    const std::vector<std::wstring> order = folders->searchOrder();
    ASSERT_GE(order.size(), 4U);
    EXPECT_EQ(order[0], recording::programFolder().wstring() + L"\\");
    EXPECT_TRUE(std::filesystem::exists(order[1] + L"\\kernel32.dll"));
    EXPECT_EQ(order[2], order[3] + L"\\system");
    EXPECT_TRUE(std::filesystem::exists(order[3] + L"\\system32"));
}

TEST_F(LibraryFoldersTest, GoOnWithTheFullPathsOfThePathVariable) {
    ::SetEnvironmentVariableW(L"PATH", L"C:\\one;.;;relative;\"C:\\two three\"; D:/four ;C:five;\\\\server\\share;..");
    const std::vector<std::wstring> order = folders->searchOrder();
    ASSERT_EQ(order.size(), 8U);
    EXPECT_EQ(order[4], L"C:\\one");
    EXPECT_EQ(order[5], L"C:\\two three");
    EXPECT_EQ(order[6], L"D:/four");
    EXPECT_EQ(order[7], L"\\\\server\\share");
}

TEST_F(LibraryFoldersTest, NeedNoPathVariable) {
    ::SetEnvironmentVariableW(L"PATH", nullptr);
    EXPECT_EQ(folders->searchOrder().size(), 4U);
}

}  // namespace
}  // namespace tovar
