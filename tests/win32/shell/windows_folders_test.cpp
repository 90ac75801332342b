#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "shell/fakes/fake_message_boxes.h"
#include "shell/path_operations.h"
#include "shell/paths.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "shell/work_folder.h"
#include "win32/shell/temporary_folder.h"

namespace tovar {
namespace {

// The path operations and the work folder on the real disk.
class WindowsFoldersTest : public testing::Test {
protected:
    ~WindowsFoldersTest() override { std::filesystem::current_path(before_); }

    [[nodiscard]] std::string content(const std::wstring& path) const {
        std::string bytes;
        EXPECT_EQ(files.readFile(path, bytes), 0u);
        return bytes;
    }
    // The attributes that a folder has after it was made read-only and hidden: Wine knows no read-only folders.
    [[nodiscard]] DWORD hiddenFolderAttributes() const {
        std::filesystem::create_directory(folder / L"probe");
        EXPECT_TRUE(::SetFileAttributesW((folder / L"probe").c_str(), 3));
        return ::GetFileAttributesW((folder / L"probe").c_str());
    }
    void write(const std::wstring& name, const char* text) const {
        std::ofstream(std::filesystem::path(folder / name)) << text;
    }

    test::TemporaryFolder folder;
    WindowsFileSystem files;
    WindowsSystemPaths paths;
    WindowsSystemInformation information;
    test::FakeMessageBoxes messages;
    PathOperations operations{files, paths, information, messages};
    WorkFolder workFolder{operations, files, paths};

private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(WindowsFoldersTest, WorkFolderBeginsAsTheTemporaryFolder) {
    workFolder.resetToTempFolder();
    EXPECT_TRUE(operations.IsFolder(workFolder.path()));
    EXPECT_TRUE(workFolder.path().ends_with(L'\\'));
}

TEST_F(WindowsFoldersTest, SetTempDirMakesAReadOnlyHiddenFolder) {
    workFolder.SetTempDir(folder / L"Work");
    EXPECT_EQ(workFolder.path(), folder / LR"(Work\)");
    EXPECT_EQ(::GetFileAttributesW((folder / L"Work").c_str()), hiddenFolderAttributes());
    EXPECT_NE(hiddenFolderAttributes() & FILE_ATTRIBUTE_HIDDEN, 0u);
}

TEST_F(WindowsFoldersTest, SetTempDirTakesAnExistingFolderByItsShortName) {
    std::filesystem::create_directory(folder / L"A rather long folder name");
    workFolder.SetTempDir(folder / L"A rather long folder name");
    wchar_t back[MAX_PATH] = {};
    ASSERT_GT(::GetLongPathNameW(workFolder.path().c_str(), back, MAX_PATH), 0u);
    EXPECT_EQ(FileNamePart(StripTrailingSeparator(back)), L"A rather long folder name");
    EXPECT_TRUE(workFolder.path().ends_with(L'\\'));
    EXPECT_EQ(::GetFileAttributesW((folder / L"A rather long folder name").c_str()), hiddenFolderAttributes());
}

TEST_F(WindowsFoldersTest, SetTempDirIgnoresWhatCannotBeMade) {
    workFolder.SetTempDir(folder / LR"(none\Work)");
    EXPECT_EQ(workFolder.path(), folder / LR"(none\Work\)");
    EXPECT_EQ(workFolder.WriteTempListFile(L"a.txt", AnsiCodec()), L"");
    workFolder.SetTempDir(LR"(C:\)" + std::wstring(32000, L'n'));
    EXPECT_EQ(workFolder.path().size(), 32004u);
    EXPECT_EQ(workFolder.WriteTempListFile(L"a.txt", AnsiCodec()), L"");
}

TEST_F(WindowsFoldersTest, ListFilesLieInTheWorkFolder) {
    workFolder.SetTempDir(folder / L"Work");
    const std::wstring name = workFolder.WriteTempListFile(L"a.txt", AnsiCodec());
    EXPECT_TRUE(upperCase(name).starts_with(upperCase(folder / LR"(Work\VTL)"))) << name;
    EXPECT_TRUE(upperCase(name).ends_with(L".TMP")) << name;
    EXPECT_EQ(content(name), "a.txt\r\n");
    EXPECT_EQ(files.deleteFile(name), 0u);
}

TEST_F(WindowsFoldersTest, ListFilesHoldTheBytesOfTheirLibrary) {
    workFolder.SetTempDir(folder / L"Work");
    EXPECT_EQ(content(workFolder.WriteTempListFile(L"\u8868.txt", AnsiCodec(932))), "\x95\x5C.txt\r\n");
    EXPECT_EQ(content(workFolder.WriteTempListFile(L"\u8868.txt", AnsiCodec(CP_UTF8))), "\xE8\xA1\xA8.txt\r\n");
    EXPECT_THROW(workFolder.WriteTempListFile(L"\u8868.txt", AnsiCodec(1252)), SystemError);
    EXPECT_THROW(workFolder.WriteTempListFile(L"a\u00A5"
                                              L"b.txt",
                                              AnsiCodec(932)),
                 SystemError);
}

TEST_F(WindowsFoldersTest, ListFileTextNamesWhatIsThere) {
    std::filesystem::create_directory(folder / L"dir");
    write(L"file.txt", "x");
    write(L"my file.txt", "x");
    write(L"\u8868\u30BD.txt", "x");
    EXPECT_EQ(workFolder.BuildListFileText(folder.path(), L"dir\r\nfile.txt\r\ngone.txt", L"\\"), L"dir\\\r\nfile.txt");
    EXPECT_EQ(workFolder.BuildListFileText(folder.path(), L"my file.txt\r\n\u8868\u30BD.txt", L""),
              L"\"my file.txt\"\r\n\u8868\u30BD.txt");
    EXPECT_EQ(workFolder.BuildListFileText(folder.path(), L"file.txt\r\n", L"\\"), L"file.txt\r\n\\");
}

TEST_F(WindowsFoldersTest, CreatesFolderTrees) {
    EXPECT_TRUE(operations.CreateFolderTree(folder / L"a\\b\u8868\\c\\"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / L"a\\b\u8868\\c"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(WindowsFoldersTest, CreatesFolderTreesBelowTheCurrentFolder) {
    operations.SetWorkingFolder(folder.path());
    EXPECT_TRUE(operations.CreateFolderTree(LR"(x\y)"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / LR"(x\y)"));
}

TEST_F(WindowsFoldersTest, SaysWhyAFolderTreeCannotBe) {
    write(L"file", "x");
    EXPECT_FALSE(operations.CreateFolderTree(folder / LR"(file\sub)"));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, information.errorText(ERROR_ALREADY_EXISTS));
    EXPECT_EQ(messages.shown[0].title, L"TovarEx");
}

TEST_F(WindowsFoldersTest, FailsCleanlyOnAFolderTreeTooDeep) {
    std::wstring path = folder.path();
    while (path.size() < 32000) path += LR"(\)" + std::wstring(200, L'd');
    EXPECT_FALSE(operations.CreateFolderTree(path));
    EXPECT_EQ(messages.shown.size(), 1u);
}

TEST_F(WindowsFoldersTest, WorkingFolderIsTheBaseOfRelativePaths) {
    std::filesystem::create_directory(folder / L"sub");
    operations.SetWorkingFolder(folder / L"sub");
    EXPECT_EQ(operations.CurrentFolderOf(L"x"), folder / LR"(sub\)");
    EXPECT_EQ(operations.ResolvePath(L"readme.txt"), folder / LR"(sub\readme.txt)");
    EXPECT_EQ(operations.ResolvePath(LR"(..\f)"), folder / L"f");
    EXPECT_EQ(operations.ResolvePath(LR"(\f)"), folder.path().substr(0, 2) + LR"(\f)");
}

TEST_F(WindowsFoldersTest, ScansFolders) {
    std::filesystem::create_directories(folder / LR"(sub\deep)");
    std::filesystem::create_directories(folder / L".cache");
    write(L"one.txt", "12345");
    write(LR"(sub\two.txt)", "123");
    write(LR"(sub\deep\three.txt)", "1");
    write(LR"(.cache\big.bin)", "1234567890");
    ::SetFileAttributesW((folder / LR"(sub\two.txt)").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    std::int32_t count = 0;
    float bytes = 0;
    operations.ScanFolder(folder / L"", L"*.*", count, bytes, true);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(bytes, 9.0f);
}

TEST_F(WindowsFoldersTest, TextFilesKeepTheirCodePage) {
    const std::wstring path = folder / L"text.txt";
    EXPECT_TRUE(operations.WriteTextFile(path, L"\u8868\u30BD", AnsiCodec(932)));
    EXPECT_EQ(content(path), "\x95\x5C\x83\x5C\r\n");
    EXPECT_EQ(operations.ReadTextFile(path, AnsiCodec(932)), L"\u8868\u30BD\r\n");
    EXPECT_FALSE(operations.WriteTextFile(path, L"\u8868", AnsiCodec(1252)));
    EXPECT_EQ(content(path), "\x95\x5C\x83\x5C\r\n");
}

}  // namespace
}  // namespace tovar
