#include "shell/win32/windows_system_paths.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "shell/paths.h"
#include "win32/shell/temporary_folder.h"

namespace tovar {
namespace {

// Leaves the process in the folder where it was.
class WindowsSystemPathsTest : public testing::Test {
protected:
    ~WindowsSystemPathsTest() override { std::filesystem::current_path(before_); }

    WindowsSystemPaths paths;

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(WindowsSystemPathsTest, ChangesTheCurrentFolder) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(paths.setCurrentFolder(folder.path()), 0u);
    EXPECT_EQ(std::filesystem::current_path().native(), folder.path());
    EXPECT_EQ(paths.currentFolder(), folder.path());
    EXPECT_NE(paths.setCurrentFolder(folder / L"none"), 0u);
    EXPECT_NE(paths.setCurrentFolder(folder.path() + std::wstring(L"\0", 1)), 0u);
    EXPECT_NE(paths.setCurrentFolder(folder / std::wstring(32000, L'n')), 0u);
    EXPECT_EQ(paths.currentFolder(), folder.path());
    EXPECT_EQ(paths.setCurrentFolder(LR"(C:\)"), 0u);
}

TEST_F(WindowsSystemPathsTest, TakesFolderNamesOutsideTheCodePage) {
    const test::TemporaryFolder folder;
    const std::wstring name = folder / L"\u8868\u0416\u00E9";
    std::filesystem::create_directory(name);
    EXPECT_EQ(paths.setCurrentFolder(name), 0u);
    EXPECT_EQ(paths.currentFolder(), name);
    EXPECT_EQ(paths.setCurrentFolder(LR"(C:\)"), 0u);
}

TEST_F(WindowsSystemPathsTest, EachDriveRemembersItsFolder) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(HasDriveRoot(folder.path()));
    const wchar_t drive = folder.path().front();
    ASSERT_EQ(paths.setCurrentFolder(folder.path()), 0u);
    EXPECT_EQ(paths.setCurrentDrive(drive), 0u);
    EXPECT_EQ(paths.currentFolder(), folder.path());
    if (::GetDriveTypeW(LR"(Z:\)") == DRIVE_NO_ROOT_DIR || drive == L'Z') GTEST_SKIP() << "there is no other drive";
    ASSERT_EQ(paths.setCurrentFolder(LR"(Z:\)"), 0u);
    EXPECT_EQ(paths.currentFolder(), LR"(Z:\)");
    EXPECT_EQ(paths.setCurrentDrive(upperCase({&drive, 1}).front()), 0u);
    EXPECT_EQ(paths.currentFolder(), folder.path());
    EXPECT_EQ(paths.setCurrentDrive(L'z'), 0u);
    EXPECT_EQ(upperCase(paths.currentFolder()), LR"(Z:\)");
    EXPECT_EQ(paths.setCurrentFolder(LR"(C:\)"), 0u);
}

TEST_F(WindowsSystemPathsTest, StaysWhereItIsForADriveThatIsNotThere) {
    const std::wstring before = paths.currentFolder();
    wchar_t missing = L'A';
    while (missing <= L'Z' && (::GetLogicalDrives() & (1u << (missing - L'A'))) != 0) ++missing;
    ASSERT_LE(missing, L'Z') << "every letter is a drive here";
    EXPECT_NE(paths.setCurrentDrive(missing), 0u);
    EXPECT_NE(paths.setCurrentDrive(L'\\'), 0u);
    EXPECT_NE(paths.setCurrentDrive(L'\u0416'), 0u);
    EXPECT_NE(paths.setCurrentDrive(L'\0'), 0u);
    EXPECT_EQ(paths.currentFolder(), before);
}

TEST_F(WindowsSystemPathsTest, ShortNamesLeadToTheSameFile) {
    const test::TemporaryFolder folder;
    const std::wstring path = folder / L"A rather long file name.text";
    std::ofstream(std::filesystem::path(path)) << "x";
    const auto name = paths.shortPathName(path);
    ASSERT_TRUE(name);
    wchar_t back[MAX_PATH] = {};
    ASSERT_GT(::GetLongPathNameW(name->c_str(), back, MAX_PATH), 0u);
    EXPECT_EQ(FileNamePart(back), L"A rather long file name.text");
}

TEST_F(WindowsSystemPathsTest, MissingFilesHaveNoShortName) {
    EXPECT_FALSE(paths.shortPathName(LR"(C:\not there at all\x)"));
    EXPECT_FALSE(paths.shortPathName(L""));
    EXPECT_FALSE(paths.shortPathName(std::wstring(L"C:\\\0x", 5)));
    EXPECT_FALSE(paths.shortPathName(LR"(C:\)" + std::wstring(32000, L'n')));
}

TEST_F(WindowsSystemPathsTest, FindsTheSystemsLibraries) {
    const std::wstring found = paths.searchPath(L"kernel32.dll");
    EXPECT_TRUE(HasDriveRoot(found));
    EXPECT_EQ(upperCase(FileNamePart(found)), L"KERNEL32.DLL");
    EXPECT_TRUE(std::filesystem::is_regular_file(found));
}

TEST_F(WindowsSystemPathsTest, FindsNothingElse) {
    EXPECT_EQ(paths.searchPath(L"kernel32"), L"") << "no extension is added";
    EXPECT_EQ(paths.searchPath(L"TovarNoSuchLibrary.dll"), L"");
    EXPECT_EQ(paths.searchPath(L""), L"");
    EXPECT_EQ(paths.searchPath(std::wstring(L"kernel32.dll\0x", 14)), L"");
    EXPECT_EQ(paths.searchPath(std::wstring(32000, L'n')), L"");
}

TEST_F(WindowsSystemPathsTest, KnowsTheTemporaryFolder) {
    wchar_t expected[MAX_PATH + 1] = {};
    ASSERT_GT(::GetTempPathW(MAX_PATH + 1, expected), 0u);
    EXPECT_EQ(paths.tempFolder(), expected);
}

TEST_F(WindowsSystemPathsTest, CreatesTemporaryFiles) {
    const test::TemporaryFolder folder;
    const std::wstring one = paths.createTempFile(folder / L"", L"VTL");
    const std::wstring other = paths.createTempFile(folder.path(), L"VTL");
    EXPECT_NE(one, other);
    for (const std::wstring& path : {one, other}) {
        EXPECT_TRUE(path.starts_with(folder / L"VTL")) << "the folder and one separator";
        EXPECT_TRUE(std::filesystem::is_empty(path));
        const std::wstring name = upperCase(FileNamePart(path));
        EXPECT_TRUE(name.ends_with(L".TMP"));
        const std::wstring number = name.substr(3, name.size() - 7);
        EXPECT_TRUE(!number.empty() && number.size() <= 4) << name;
        EXPECT_EQ(number.find_first_not_of(L"0123456789ABCDEF"), number.npos) << name;
    }
}

TEST_F(WindowsSystemPathsTest, RaisesTheErrorOfATemporaryFile) {
    const test::TemporaryFolder folder;
    const std::wstring nowhere[] = {folder / L"none", folder / std::wstring(250, L'n'),
                                    folder / std::wstring(32000, L'n'), folder.path() + std::wstring(L"\0x", 2)};
    for (const std::wstring& path : nowhere) {
        try {
            paths.createTempFile(path, L"VTL");
            ADD_FAILURE() << "nothing was raised";
        } catch (const SystemError& error) {
            EXPECT_NE(error.code(), 0u);
        }
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

}  // namespace
}  // namespace tovar
