#include "shell/win32/windows_file_system.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <fstream>

#include "shell/win32/handles.h"
#include "win32/shell/temporary_folder.h"

namespace tovar {
namespace {

// Accents, Japanese with 0x5C as second byte in code page 932, Cyrillic, and a character beyond the first plane: no
// code page but UTF-8 holds them all.
const std::wstring kMixedName = L"\u00E9\u8868\u30BD\u0416\U0001F4E6";

class WindowsFileSystemTest : public testing::Test {
protected:
    void write(const std::wstring& name, std::string_view text, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
        const UniqueHandle file = adoptHandle(
            ::CreateFileW((folder / name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
        DWORD written = 0;
        ASSERT_TRUE(file && ::WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
    }

    test::TemporaryFolder folder;
    WindowsFileSystem files;
};

TEST_F(WindowsFileSystemTest, KnowsAttributes) {
    write(L"plain.txt", "x");
    write(L"hidden.txt", "x", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(*files.attributes(folder.path()) & attribute::kFolder, attribute::kFolder);
    EXPECT_EQ(*files.attributes(folder / L"") & attribute::kFolder, attribute::kFolder);
    EXPECT_EQ(*files.attributes(folder / L"plain.txt") & (attribute::kFolder | attribute::kReadOnly), 0u);
    EXPECT_EQ(*files.attributes(folder / L"hidden.txt") & (attribute::kFolder | attribute::kReadOnly),
              attribute::kReadOnly);
    EXPECT_FALSE(files.attributes(folder / L"none"));
    EXPECT_FALSE(files.attributes(L""));
}

TEST_F(WindowsFileSystemTest, TakesNamesOutsideTheCodePage) {
    EXPECT_EQ(files.createFolder(folder / kMixedName), 0u);
    EXPECT_EQ(files.writeFile(folder / (kMixedName + L"\\" + kMixedName + L".txt"), "inside"), 0u);
    std::vector<FolderEntry> entries;
    ASSERT_EQ(files.listFolder(folder / (kMixedName + L"\\"), entries), 0u);
    ASSERT_EQ(entries.size(), 3u);
    const auto found = std::ranges::find(entries, kMixedName + L".txt", &FolderEntry::name);
    ASSERT_NE(found, entries.end());
    EXPECT_EQ(found->size, 6u);
    std::string bytes;
    EXPECT_EQ(files.readFile(folder / (kMixedName + L"\\" + kMixedName + L".txt"), bytes), 0u);
    EXPECT_EQ(bytes, "inside");
    EXPECT_EQ(files.deleteFile(folder / (kMixedName + L"\\" + kMixedName + L".txt")), 0u);
}

TEST_F(WindowsFileSystemTest, KnowsSizeAndLocalModificationTime) {
    write(L"file.bin", "12345");
    SYSTEMTIME local{}, universal{};
    local.wYear = 2001;
    local.wMonth = 5;
    local.wDay = 17;
    local.wHour = 17;
    local.wMinute = 30;
    local.wSecond = 58;
    FILETIME time{};
    ASSERT_TRUE(::TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal));
    ASSERT_TRUE(::SystemTimeToFileTime(&universal, &time));
    {
        const UniqueHandle file = adoptHandle(::CreateFileW((folder / L"file.bin").c_str(), FILE_WRITE_ATTRIBUTES, 0,
                                                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(file);
        ASSERT_TRUE(::SetFileTime(file.get(), nullptr, nullptr, &time));
    }
    const auto status = files.status(folder / L"file.bin");
    ASSERT_TRUE(status);
    EXPECT_EQ(status->size, 5u);
    EXPECT_EQ(status->modifiedDate.year, 2001);
    EXPECT_EQ(status->modifiedDate.month, 5);
    EXPECT_EQ(status->modifiedDate.day, 17);
    EXPECT_EQ(status->modifiedTime.hour, 17);
    EXPECT_EQ(status->modifiedTime.minute, 30);
    EXPECT_EQ(status->modifiedTime.second, 58);
    EXPECT_FALSE(files.status(folder / L"none"));
}

TEST_F(WindowsFileSystemTest, KnowsSizesBeyond32Bits) {
    {
        const UniqueHandle file = adoptHandle(::CreateFileW((folder / L"huge.bin").c_str(), GENERIC_WRITE, 0, nullptr,
                                                            CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        LARGE_INTEGER size{};
        size.QuadPart = 0x140000001;
        ASSERT_TRUE(file);
        ASSERT_TRUE(::SetFilePointerEx(file.get(), size, nullptr, FILE_BEGIN));
        ASSERT_TRUE(::SetEndOfFile(file.get()));
    }
    EXPECT_EQ(files.status(folder / L"huge.bin")->size, 0x140000001u);
    std::vector<FolderEntry> entries;
    ASSERT_EQ(files.listFolder(folder / L"", entries), 0u);
    const auto found = std::ranges::find(entries, L"huge.bin", &FolderEntry::name);
    ASSERT_NE(found, entries.end());
    EXPECT_EQ(found->size, 0x140000001u);
}

TEST_F(WindowsFileSystemTest, SetsAttributes) {
    write(L"file.txt", "x");
    EXPECT_EQ(files.setAttributes(folder / L"file.txt", attribute::kReadOnly), 0u);
    EXPECT_EQ(::GetFileAttributesW((folder / L"file.txt").c_str()) & FILE_ATTRIBUTE_READONLY,
              static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(files.setAttributes(folder / L"file.txt", attribute::kNormal), 0u);
    EXPECT_EQ(::GetFileAttributesW((folder / L"file.txt").c_str()) & FILE_ATTRIBUTE_READONLY, 0u);
    EXPECT_EQ(files.setAttributes(folder / L"none", attribute::kNormal), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(WindowsFileSystemTest, CreatesOneFolder) {
    EXPECT_EQ(files.createFolder(folder / LR"(a\)"), 0u);
    EXPECT_TRUE(std::filesystem::is_directory(folder / L"a"));
    EXPECT_EQ(files.createFolder(folder / L"a"), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    EXPECT_EQ(files.createFolder(folder / LR"(b\c)"), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
}

TEST_F(WindowsFileSystemTest, ListsHiddenAndSystemFilesToo) {
    write(L"hidden.txt", "12", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    ASSERT_EQ(files.createFolder(folder / L"sub"), 0u);
    std::vector<FolderEntry> entries;
    ASSERT_EQ(files.listFolder(folder / L"", entries), 0u);
    std::ranges::sort(entries, {}, &FolderEntry::name);
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[0].name, L".");
    EXPECT_EQ(entries[1].name, L"..");
    EXPECT_EQ(entries[2].name, L"hidden.txt");
    EXPECT_EQ(entries[2].size, 2u);
    EXPECT_FALSE(entries[2].link);
    EXPECT_EQ(entries[3].name, L"sub");
    EXPECT_EQ(entries[3].attributes & attribute::kFolder, attribute::kFolder);
    EXPECT_EQ(files.listFolder(folder / LR"(none\)", entries), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
}

// Where drive Z is the root of a Unix system, "bin" in it is a link to the folder "usr/bin".
TEST_F(WindowsFileSystemTest, KnowsLinks) {
    std::vector<FolderEntry> entries;
    if (!files.attributes(LR"(Z:\usr\bin)") || files.listFolder(LR"(Z:\)", entries) != 0) {
        GTEST_SKIP() << "there is no such drive";
    }
    const auto link = std::ranges::find(entries, L"bin", &FolderEntry::name);
    const auto plain = std::ranges::find(entries, L"usr", &FolderEntry::name);
    ASSERT_NE(link, entries.end());
    ASSERT_NE(plain, entries.end());
    EXPECT_TRUE(link->link);
    EXPECT_EQ(link->attributes & attribute::kFolder, attribute::kFolder);
    EXPECT_FALSE(plain->link);
}

TEST_F(WindowsFileSystemTest, WritesAndReads) {
    std::string bytes(200000, 'z');
    bytes[7] = '\0';
    EXPECT_EQ(files.writeFile(folder / L"file.bin", bytes), 0u);
    std::string read = "before";
    EXPECT_EQ(files.readFile(folder / L"file.bin", read), 0u);
    EXPECT_EQ(read, bytes);
    EXPECT_EQ(files.writeFile(folder / L"file.bin", "short"), 0u);
    EXPECT_EQ(files.readFile(folder / L"file.bin", read), 0u);
    EXPECT_EQ(read, "short");
}

TEST_F(WindowsFileSystemTest, WritesIntoAHiddenFile) {
    write(L"hidden.txt", "before", FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(files.writeFile(folder / L"hidden.txt", "now"), 0u);
    std::string read;
    EXPECT_EQ(files.readFile(folder / L"hidden.txt", read), 0u);
    EXPECT_EQ(read, "now");
}

TEST_F(WindowsFileSystemTest, ReadsAFileThatAnotherWrites) {
    write(L"file.txt", "x");
    const UniqueHandle writer =
        adoptHandle(::CreateFileW((folder / L"file.txt").c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(writer);
    std::string read;
    EXPECT_EQ(files.readFile(folder / L"file.txt", read), 0u);
    EXPECT_EQ(files.writeFile(folder / L"file.txt", "y"), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
}

TEST_F(WindowsFileSystemTest, RefusesWhatIsNoFile) {
    std::string read = "before";
    EXPECT_NE(files.readFile(folder.path(), read), 0u);
    EXPECT_EQ(read, "");
    EXPECT_NE(files.readFile(LR"(\\.\NUL)", read), 0u);
    EXPECT_NE(files.writeFile(LR"(\\.\NUL)", "x"), 0u);
    EXPECT_NE(files.writeFile(folder.path(), "x"), 0u);
    EXPECT_EQ(files.readFile(folder / L"none", read), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(files.writeFile(folder / LR"(none\file)", "x"), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
}

TEST_F(WindowsFileSystemTest, DeletesFiles) {
    write(L"file.txt", "x");
    write(L"readonly.txt", "x", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(files.deleteFile(folder / L"file.txt"), 0u);
    EXPECT_EQ(files.deleteFile(folder / L"file.txt"), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(files.deleteFile(folder / L"readonly.txt"), static_cast<DWORD>(ERROR_ACCESS_DENIED));
}

TEST_F(WindowsFileSystemTest, RemovesEmptyFoldersOnly) {
    ASSERT_EQ(files.createFolder(folder / L"some"), 0u);
    write(L"some\\file.txt", "x");
    EXPECT_EQ(files.removeFolder(folder / L"some"), static_cast<DWORD>(ERROR_DIR_NOT_EMPTY));
    ASSERT_EQ(files.deleteFile(folder / L"some\\file.txt"), 0u);
    EXPECT_EQ(files.removeFolder(folder / L"some"), 0u);
    EXPECT_FALSE(files.attributes(folder / L"some"));
    EXPECT_EQ(files.removeFolder(folder / L"some"), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(WindowsFileSystemTest, PathsWithNulNameNothing) {
    write(L"file", "x");
    const std::wstring cut = folder / (std::wstring(L"file\0.txt", 9));
    std::string bytes;
    std::vector<FolderEntry> entries;
    EXPECT_FALSE(files.attributes(cut));
    EXPECT_FALSE(files.status(cut));
    EXPECT_NE(files.setAttributes(cut, 1), 0u);
    EXPECT_NE(files.createFolder(cut), 0u);
    EXPECT_NE(files.listFolder(cut, entries), 0u);
    EXPECT_NE(files.readFile(cut, bytes), 0u);
    EXPECT_NE(files.writeFile(cut, "y"), 0u);
    EXPECT_NE(files.deleteFile(cut), 0u);
    EXPECT_EQ(files.status(folder / L"file")->size, 1u);
}

class LongPaths : public testing::TestWithParam<std::size_t> {};
TEST_P(LongPaths, FailCleanly) {
    const test::TemporaryFolder folder;
    WindowsFileSystem files;
    for (const std::wstring& path : {folder / std::wstring(GetParam(), L'n'), folder / [] {
                                         std::wstring deep;
                                         while (deep.size() < GetParam()) deep += LR"(folder\)";
                                         return deep;
                                     }()}) {
        std::string bytes;
        std::vector<FolderEntry> entries;
        EXPECT_FALSE(files.attributes(path));
        EXPECT_FALSE(files.status(path));
        EXPECT_NE(files.setAttributes(path, 1), 0u);
        EXPECT_NE(files.createFolder(path), 0u);
        EXPECT_NE(files.listFolder(path, entries), 0u);
        EXPECT_NE(files.readFile(path, bytes), 0u);
        EXPECT_NE(files.writeFile(path, "x"), 0u);
        EXPECT_NE(files.deleteFile(path), 0u);
        EXPECT_TRUE(entries.empty());
    }
}
INSTANTIATE_TEST_SUITE_P(WindowsFileSystem, LongPaths, testing::Values(300, 32000, 70000));

TEST(WindowsFileSystem, TakesPathsBeyond260Characters) {
    const test::TemporaryFolder folder;
    WindowsFileSystem files;
    std::wstring deep = folder / L"deep";
    ASSERT_EQ(files.createFolder(deep), 0u);
    while (deep.size() < 400) {
        deep += L'\\' + std::wstring(60, L'd');
        ASSERT_EQ(files.createFolder(deep), 0u);
    }
    EXPECT_EQ(files.attributes(deep).value_or(0) & 16u, 16u);
    const std::wstring file = deep + LR"(\file.txt)";
    EXPECT_EQ(files.writeFile(file, "text"), 0u);
    std::string bytes;
    EXPECT_EQ(files.readFile(file, bytes), 0u);
    EXPECT_EQ(bytes, "text");
    EXPECT_EQ(files.status(file)->size, 4u);
    std::vector<FolderEntry> entries;
    EXPECT_EQ(files.listFolder(deep + L'\\', entries), 0u);
    const auto isFile = [](const FolderEntry& entry) { return entry.name == L"file.txt"; };
    EXPECT_EQ(std::count_if(entries.begin(), entries.end(), isFile), 1);
    EXPECT_EQ(files.deleteFile(file), 0u);
    for (; deep != folder.path(); deep.resize(deep.rfind(L'\\'))) EXPECT_EQ(files.removeFolder(deep), 0u);
}

}  // namespace
}  // namespace tovar
