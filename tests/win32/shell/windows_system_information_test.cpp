#include "shell/win32/windows_system_information.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "shell/path_operations.h"
#include "shell/paths.h"
#include "shell/win32/system_message_boxes.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_paths.h"
#include "win32/shell/temporary_folder.h"

namespace tovar {
namespace {

class VersionTest : public testing::Test {
protected:
    // A file beside the test program.
    [[nodiscard]] static std::wstring beside(const wchar_t* name) {
        wchar_t path[MAX_PATH] = {};
        ::GetModuleFileNameW(nullptr, path, MAX_PATH);
        return ParentPath(path) + name;
    }

    WindowsFileSystem files;
    WindowsSystemPaths paths;
    WindowsSystemInformation information;
    SystemMessageBoxes messages;
    PathOperations operations{files, paths, information, messages};
};

TEST_F(VersionTest, IsReadFromTheResource) {
    EXPECT_EQ(operations.FileVersionText(beside(L"version_5_66_3_7.dll")), L"5.66.3.7");
}

TEST_F(VersionTest, OverflowsOnALowWordAbove32767) {
    EXPECT_THROW(static_cast<void>(operations.FileVersionText(beside(L"version_1_40000_0_0.dll"))),
                 std::overflow_error);
}

TEST_F(VersionTest, IsAllZeroWithoutResource) {
    ASSERT_TRUE(operations.IsPlainFile(beside(L"version_none.dll")));
    EXPECT_EQ(operations.FileVersionText(beside(L"version_none.dll")), L"0.0.0.0");
}

TEST_F(VersionTest, IsAllZeroForWhatIsNoModule) {
    const test::TemporaryFolder folder;
    std::ofstream(std::filesystem::path(folder / L"text.dll")) << "no module at all";
    std::ofstream(std::filesystem::path(folder / L"empty.dll"));
    std::ofstream(std::filesystem::path(folder / L"half.dll"), std::ios::binary)
        << "MZ" << std::string(58, '\0') << "\xFF\xFF\xFF\x7F";
    for (const wchar_t* name : {L"text.dll", L"empty.dll", L"half.dll", L"none.dll", L""}) {
        EXPECT_EQ(operations.FileVersionText(folder / name), L"0.0.0.0") << name;
    }
    EXPECT_EQ(operations.FileVersionText(folder / std::wstring(32000, L'n')), L"0.0.0.0");
    EXPECT_EQ(operations.FileVersionText(beside(L"version_5_66_3_7.dll") + std::wstring(L"\0x", 2)), L"0.0.0.0");
}

TEST_F(VersionTest, IsReadFromSystemLibraries) {
    const std::wstring text = operations.FileVersionText(operations.FindOnSearchPath(L"kernel32.dll"));
    EXPECT_EQ(std::ranges::count(text, L'.'), 3) << text;
    EXPECT_EQ(text.find_first_not_of(L"0123456789."), text.npos) << text;
}

TEST_F(VersionTest, IsReadUnderANameOutsideTheCodePage) {
    const test::TemporaryFolder folder;
    const std::wstring copy = folder / L"\u8868\u0416\u00E9.dll";
    ASSERT_TRUE(::CopyFileW(beside(L"version_5_66_3_7.dll").c_str(), copy.c_str(), TRUE));
    EXPECT_EQ(operations.FileVersionText(copy), L"5.66.3.7");
}

TEST(ErrorText, IsTheSystemsInOneLine) {
    const WindowsSystemInformation information;
    for (const SystemErrorCode code : {2u, 5u, 112u}) {
        const std::wstring text = information.errorText(code);
        EXPECT_FALSE(text.empty()) << code;
        EXPECT_EQ(text.find_first_of(L"\r\n"), text.npos) << code;
    }
    EXPECT_NE(information.errorText(2), information.errorText(5));
}

TEST(ErrorText, IsEmptyForUnknownNumbers) { EXPECT_EQ(WindowsSystemInformation().errorText(0x2FFFFFFF), L""); }

}  // namespace
}  // namespace tovar
