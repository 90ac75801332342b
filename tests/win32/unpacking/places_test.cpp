#include "archivers/unpacking/win32/places.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>

#include "archivers/unpacking/win32/error_codes.h"
#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

struct PathCase {
    const wchar_t* given;
    const wchar_t* expected;
};

TEST(LongPath, IsWithoutLimit) {
    for (const PathCase& each :
         {PathCase{L"C:\\a\\b", L"\\\\?\\C:\\a\\b"}, PathCase{L"C:\\a\\", L"\\\\?\\C:\\a"},
          PathCase{L"C:/a/b", L"\\\\?\\C:\\a\\b"}, PathCase{L"C:\\a\\..\\b", L"\\\\?\\C:\\b"},
          PathCase{L"C:\\", L"\\\\?\\C:"}, PathCase{L"\\\\server\\share\\a", L"\\\\?\\UNC\\server\\share\\a"},
          PathCase{L"//server/share/a/", L"\\\\?\\UNC\\server\\share\\a"}, PathCase{L"\\\\?\\C:\\a\\", L"\\\\?\\C:\\a"},
          PathCase{L"", L""}}) {
        EXPECT_EQ(longPathOf(each.given), each.expected) << std::filesystem::path(each.given);
    }
}

TEST(LongPath, OfARelativeOneStartsInTheCurrentFolder) {
    wchar_t current[MAX_PATH];
    ASSERT_NE(::GetCurrentDirectoryW(MAX_PATH, current), 0U);
    EXPECT_EQ(longPathOf(L"a"), (std::filesystem::path(longPathOf(current)) / "a").native());
}

TEST(PlainPart, IsOneNameAndNoStream) {
    for (const std::wstring_view part : {L"a", L"a.b", L"...", L" ", L"a b"}) EXPECT_TRUE(isPlainPart(part));
    for (const std::wstring_view part : {L"", L".", L"..", L"a/b", L"a\\b", L"C:", L"a:b"}) {
        EXPECT_FALSE(isPlainPart(part)) << std::filesystem::path(part);
    }
    EXPECT_FALSE(isPlainPart(std::wstring_view(L"a\0b", 3)));
}

TEST(KindOf, LooksAtThePlaceItself) {
    const test::Scratch scratch;
    scratch.write("file", "x");
    EXPECT_EQ(kindOf(scratch.path().native()), PlaceKind::kFolder);
    EXPECT_EQ(kindOf((scratch.path() / "file").native()), PlaceKind::kFile);
    EXPECT_EQ(kindOf((scratch.path() / "none").native()), PlaceKind::kNothing);
}

struct ErrorCase {
    DWORD error;
    ReturnCode creating, folder, writing;
};

TEST(WindowsErrors, BecomeCodes) {
    for (const ErrorCase& each : {ErrorCase{ERROR_DISK_FULL, kDiskSpace, kDiskSpace, kDiskSpace},
                                  ErrorCase{ERROR_HANDLE_DISK_FULL, kDiskSpace, kDiskSpace, kDiskSpace},
                                  ErrorCase{1295, kDiskSpace, kDiskSpace, kDiskSpace},  // disk quota exceeded
                                  ErrorCase{ERROR_FILE_EXISTS, kSameNameFile, kMakeDirectory, kCannotWrite},
                                  ErrorCase{ERROR_ALREADY_EXISTS, kSameNameFile, kMakeDirectory, kCannotWrite},
                                  ErrorCase{ERROR_ACCESS_DENIED, kReadOnly, kMakeDirectory, kCannotWrite},
                                  ErrorCase{ERROR_WRITE_PROTECT, kReadOnly, kMakeDirectory, kCannotWrite},
                                  ErrorCase{ERROR_FILENAME_EXCED_RANGE, kLongFileName, kLongFileName, kCannotWrite},
                                  ErrorCase{ERROR_SHARING_VIOLATION, kFileOpen, kMakeDirectory, kCannotWrite},
                                  ErrorCase{ERROR_INVALID_NAME, kFileOpen, kMakeDirectory, kCannotWrite},
                                  ErrorCase{ERROR_PATH_NOT_FOUND, kFileOpen, kMakeDirectory, kCannotWrite}}) {
        EXPECT_EQ(codeOfCreating(each.error), each.creating) << each.error;
        EXPECT_EQ(codeOfFolder(each.error), each.folder) << each.error;
        EXPECT_EQ(codeOfWriting(each.error), each.writing) << each.error;
    }
}

}  // namespace
}  // namespace archiver
