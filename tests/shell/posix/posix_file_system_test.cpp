#include "shell/posix/posix_file_system.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "shell/posix/posix_system_information.h"
#include "shell/posix/posix_text.h"

namespace tovar {
namespace {

class PosixFileSystemTest : public testing::Test {
protected:
    PosixFileSystemTest() {
        std::string name = (std::filesystem::temp_directory_path() / "tovar-XXXXXX").string();
        root_ = ::mkdtemp(name.data());
    }
    ~PosixFileSystemTest() override { std::filesystem::remove_all(root_); }

    [[nodiscard]] std::wstring path(std::wstring_view name) const {
        return fromPosixName(root_.string()) + L'/' + std::wstring(name);
    }
    [[nodiscard]] std::filesystem::path plain(const char* name) const { return root_ / name; }
    void write(const char* name, const char* text) const { std::ofstream(plain(name)) << text; }

    std::filesystem::path root_;
    PosixFileSystem files;
};

TEST_F(PosixFileSystemTest, KnowsAttributes) {
    write("plain", "x");
    write(".hidden", "x");
    write("readonly", "x");
    ::chmod(plain("readonly").c_str(), 0444);
    EXPECT_EQ(files.attributes(path(L"")), attribute::kFolder);
    EXPECT_EQ(files.attributes(path(L"plain")), attribute::kArchive);
    EXPECT_EQ(files.attributes(path(L".hidden")), attribute::kArchive | attribute::kHidden);
    EXPECT_EQ(files.attributes(path(L"readonly")), attribute::kArchive | attribute::kReadOnly);
    EXPECT_EQ(files.attributes(path(L"none")), std::nullopt);
}

TEST_F(PosixFileSystemTest, KnowsSizeAndLocalModificationTime) {
    write("file", "12345");
    const std::array<timespec, 2> times = {{{990120658, 0}, {990120658, 0}}};  // 2001-05-17 17:30:58 UTC
    ASSERT_EQ(::utimensat(AT_FDCWD, plain("file").c_str(), times.data(), 0), 0);
    ::setenv("TZ", "XYZ-2", 1);  // two hours ahead
    ::tzset();
    const auto status = files.status(path(L"file"));
    ::unsetenv("TZ");
    ::tzset();
    ASSERT_TRUE(status);
    EXPECT_EQ(status->size, 5u);
    EXPECT_EQ(status->modifiedDate.year, 2001);
    EXPECT_EQ(status->modifiedDate.month, 5);
    EXPECT_EQ(status->modifiedDate.day, 17);
    EXPECT_EQ(status->modifiedTime.hour, 19);
    EXPECT_EQ(status->modifiedTime.minute, 30);
    EXPECT_EQ(status->modifiedTime.second, 58);
    EXPECT_FALSE(files.status(path(L"none")));
}

TEST_F(PosixFileSystemTest, SetsReadOnlyOnFilesOnly) {
    write("file", "x");
    EXPECT_EQ(files.setAttributes(path(L"file"), attribute::kReadOnly), 0u);
    EXPECT_EQ(std::filesystem::status(plain("file")).permissions() & std::filesystem::perms(0222),
              std::filesystem::perms::none);
    EXPECT_EQ(files.setAttributes(path(L"file"), attribute::kArchive), 0u);
    EXPECT_EQ(files.attributes(path(L"file")), attribute::kArchive);
    EXPECT_EQ(files.setAttributes(path(L""), attribute::kReadOnly | attribute::kHidden), 0u);
    EXPECT_EQ(files.attributes(path(L"")), attribute::kFolder);
    EXPECT_EQ(files.setAttributes(path(L"none"), 1), static_cast<SystemErrorCode>(ENOENT));
}

TEST_F(PosixFileSystemTest, CreatesOneFolder) {
    EXPECT_EQ(files.createFolder(path(L"a/")), 0u);
    EXPECT_TRUE(std::filesystem::is_directory(plain("a")));
    EXPECT_EQ(files.createFolder(path(L"a")), static_cast<SystemErrorCode>(EEXIST));
    EXPECT_EQ(files.createFolder(path(L"b/c")), static_cast<SystemErrorCode>(ENOENT));
}

TEST_F(PosixFileSystemTest, ListsAFolder) {
    write("file", "12345");
    std::filesystem::create_directory(plain("sub"));
    std::filesystem::create_symlink(".", plain("loop"));
    std::filesystem::create_symlink("nowhere", plain("broken"));
    std::vector<FolderEntry> entries;
    ASSERT_EQ(files.listFolder(path(L""), entries), 0u);
    std::ranges::sort(entries, {}, &FolderEntry::name);
    ASSERT_EQ(entries.size(), 6u);
    EXPECT_EQ(entries[0].name, L".");
    EXPECT_EQ(entries[1].name, L"..");
    EXPECT_EQ(entries[2].name, L"broken");
    EXPECT_EQ(entries[2].attributes & attribute::kFolder, 0u);
    EXPECT_TRUE(entries[2].link);
    EXPECT_EQ(entries[3].name, L"file");
    EXPECT_EQ(entries[3].size, 5u);
    EXPECT_FALSE(entries[3].link);
    EXPECT_EQ(entries[4].name, L"loop");
    EXPECT_EQ(entries[4].attributes & attribute::kFolder, attribute::kFolder);
    EXPECT_TRUE(entries[4].link);
    EXPECT_EQ(entries[5].name, L"sub");
    EXPECT_EQ(entries[5].attributes & attribute::kFolder, attribute::kFolder);
    EXPECT_FALSE(entries[5].link);
    EXPECT_EQ(files.listFolder(path(L"none/"), entries), static_cast<SystemErrorCode>(ENOENT));
}

TEST_F(PosixFileSystemTest, WritesAndReads) {
    const std::string bytes(200000, 'z');
    EXPECT_EQ(files.writeFile(path(L"file"), bytes), 0u);
    std::string read;
    EXPECT_EQ(files.readFile(path(L"file"), read), 0u);
    EXPECT_EQ(read, bytes);
    EXPECT_EQ(files.writeFile(path(L"file"), "short"), 0u);
    EXPECT_EQ(files.readFile(path(L"file"), read), 0u);
    EXPECT_EQ(read, "short");
}

TEST_F(PosixFileSystemTest, RefusesWhatIsNoPlainFile) {
    std::string bytes = "before";
    EXPECT_NE(files.readFile(path(L""), bytes), 0u);
    EXPECT_EQ(bytes, "");
    ASSERT_EQ(::mkfifo(plain("pipe").c_str(), 0600), 0);
    EXPECT_NE(files.readFile(path(L"pipe"), bytes), 0u);
    EXPECT_NE(files.writeFile(path(L"pipe"), "x"), 0u);
    EXPECT_NE(files.writeFile(path(L""), "x"), 0u);
    EXPECT_EQ(files.readFile(path(L"none"), bytes), static_cast<SystemErrorCode>(ENOENT));
    EXPECT_EQ(files.writeFile(path(L"none/file"), "x"), static_cast<SystemErrorCode>(ENOENT));
}

TEST_F(PosixFileSystemTest, DeletesFiles) {
    write("file", "x");
    EXPECT_EQ(files.deleteFile(path(L"file")), 0u);
    EXPECT_FALSE(std::filesystem::exists(plain("file")));
    EXPECT_EQ(files.deleteFile(path(L"file")), static_cast<SystemErrorCode>(ENOENT));
}

TEST_F(PosixFileSystemTest, RemovesEmptyFoldersOnly) {
    ASSERT_TRUE(std::filesystem::create_directory(plain("folder")));
    write("folder/file", "x");
    EXPECT_EQ(files.removeFolder(path(L"folder")), static_cast<SystemErrorCode>(ENOTEMPTY));
    EXPECT_EQ(files.removeFolder(path(L"folder/file")), static_cast<SystemErrorCode>(ENOTDIR));
    ASSERT_EQ(files.deleteFile(path(L"folder/file")), 0u);
    EXPECT_EQ(files.removeFolder(path(L"folder")), 0u);
    EXPECT_FALSE(std::filesystem::exists(plain("folder")));
}

TEST_F(PosixFileSystemTest, TakesNamesOfEveryByte) {
    write("\xE8\xA1\xA8\xFF\x80.txt", "x");
    std::vector<FolderEntry> entries;
    ASSERT_EQ(files.listFolder(path(L""), entries), 0u);
    const auto found = std::ranges::find_if(entries, [](const FolderEntry& each) { return each.size == 1; });
    ASSERT_NE(found, entries.end());
    std::string bytes;
    EXPECT_EQ(files.readFile(path(found->name), bytes), 0u);
    EXPECT_EQ(bytes, "x");
}

TEST_F(PosixFileSystemTest, PathsWithNulNameNothing) {
    write("file", "x");
    const std::wstring cut = path(L"file") + std::wstring(L"\0.txt", 5);
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
    EXPECT_TRUE(std::filesystem::exists(plain("file")));
}

TEST_F(PosixFileSystemTest, FailsCleanlyOnVeryLongPaths) {
    const std::wstring path = L"/" + std::wstring(32000, L'n');
    std::string bytes;
    EXPECT_FALSE(files.attributes(path));
    EXPECT_EQ(files.createFolder(path), static_cast<SystemErrorCode>(ENAMETOOLONG));
    EXPECT_EQ(files.readFile(path, bytes), static_cast<SystemErrorCode>(ENAMETOOLONG));
    EXPECT_EQ(files.writeFile(path, ""), static_cast<SystemErrorCode>(ENAMETOOLONG));
}

TEST(PosixSystemInformation, KnowsErrorTextsAndNoVersions) {
    EXPECT_EQ(PosixSystemInformation().errorText(ENOENT), L"No such file or directory");
    EXPECT_FALSE(PosixSystemInformation().fileVersion(L"/bin/sh"));
}

}  // namespace
}  // namespace tovar
