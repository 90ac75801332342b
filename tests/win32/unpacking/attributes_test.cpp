#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::openTarget;
using test::Scratch;
using test::writeFile;

class WindowsFiles : public testing::Test {
protected:
    [[nodiscard]] WIN32_FILE_ATTRIBUTE_DATA factsOf(const wchar_t* name) const {
        WIN32_FILE_ATTRIBUTE_DATA facts{};
        EXPECT_TRUE(::GetFileAttributesExW((scratch.path() / name).c_str(), GetFileExInfoStandard, &facts));
        return facts;
    }

    Scratch scratch;
    std::unique_ptr<TargetFolder> target = openTarget(scratch.path());
};

TEST_F(WindowsFiles, GetTheirAttributes) {
    ItemProperties properties;
    properties.attributes = attribute::kReadOnly | attribute::kArchive;
    ASSERT_EQ(writeFile(*target, "kept", "x", false, properties), kOk);
    EXPECT_EQ(factsOf(L"kept").dwFileAttributes & 0x27, DWORD{FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE});
    properties.attributes = attribute::kHidden | attribute::kSystem;
    ASSERT_EQ(writeFile(*target, "hidden", "x", false, properties), kOk);
    EXPECT_EQ(factsOf(L"hidden").dwFileAttributes & 0x07, DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM});
    properties.attributes = attribute::kFolder;
    ASSERT_EQ(writeFile(*target, "file", "x", false, properties), kOk);
    EXPECT_EQ(factsOf(L"file").dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0U);
    EXPECT_FALSE(scratch.isProtected("file"));
}

TEST_F(WindowsFiles, GetTheirTimeOfLastAccess) {
    ItemProperties properties;
    properties.written = Moment{1000000000, 0};
    properties.accessed = Moment{1100000000, 0};
    ASSERT_EQ(writeFile(*target, "a", "x", false, properties), kOk);
    const FILETIME time = factsOf(L"a").ftLastAccessTime;
    EXPECT_EQ((std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime), 127'444'736'000'000'000U);
}

TEST_F(WindowsFiles, AreNotMadeAsStreams) {
    scratch.write("a", "x");
    for (const wchar_t* name : {L"a:b", L"a::$DATA", L":b", L"C:x", L"a:b/c"}) {
        EXPECT_EQ(writeFile(*target, name, "evil", true), kFileOpen);
        bool made = false;
        EXPECT_EQ(target->makeFolder(name, made), kMakeDirectory);
    }
    EXPECT_EQ(scratch.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(scratch.read("a"), "x");
}

TEST_F(WindowsFiles, TakeBothSeparators) {
    bool made = false;
    ASSERT_EQ(target->makeFolder(L"a\\b", made), kOk);
    EXPECT_EQ(writeFile(*target, L"a/b\\c", "x"), kOk);
    EXPECT_EQ(scratch.read("a/b/c"), "x");
    EXPECT_EQ(writeFile(*target, L"a\\..\\..\\c", "x"), kFileOpen);
}

TEST_F(WindowsFiles, OfANameThatDiffersByCaseAreThere) {
    ASSERT_EQ(writeFile(*target, "Read.Me", "first"), kOk);
    EXPECT_EQ(writeFile(*target, "READ.ME", "second"), kSameNameFile);
    EXPECT_TRUE(target->find("read.me").has_value());
    EXPECT_EQ(writeFile(*target, "READ.ME", "second", true), kOk);
    EXPECT_EQ(scratch.names().size(), 1U);
    EXPECT_EQ(scratch.read("read.me"), "second");
}

TEST_F(WindowsFiles, InUseAreKept) {
    scratch.write("a", "old");
    const HANDLE user = ::CreateFileW((scratch.path() / "a").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(user, INVALID_HANDLE_VALUE);
    EXPECT_EQ(writeFile(*target, "a", "new", true), kCannotWrite);
    ::CloseHandle(user);
    EXPECT_EQ(scratch.read("a"), "old");
    EXPECT_EQ(scratch.names(), std::vector<std::string>{"a"});
}

TEST_F(WindowsFiles, InUseAndWriteProtectedStayProtected) {
    scratch.write("a", "old");
    scratch.protect("a");
    const HANDLE user = ::CreateFileW((scratch.path() / "a").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(user, INVALID_HANDLE_VALUE);
    ItemProperties properties;
    properties.attributes = attribute::kReadOnly;
    EXPECT_EQ(writeFile(*target, "a", "new", true, properties), kCannotWrite);
    ::CloseHandle(user);
    EXPECT_EQ(scratch.read("a"), "old");
    EXPECT_TRUE(scratch.isProtected("a"));
    EXPECT_EQ(scratch.names(), std::vector<std::string>{"a"});
}

TEST(WindowsTarget, TakesLongAndRelativePaths) {
    const Scratch scratch;
    const std::wstring longFolder =
        L"\\\\?\\" + scratch.path().native() + L"\\" + std::wstring(150, L'a') + L"\\" + std::wstring(150, L'b');
    ASSERT_EQ(writeFile(*openTarget(longFolder), "x", "long"), kOk);
    const std::string name = std::string(150, 'a') + "/" + std::string(150, 'b') + "/x";
    EXPECT_EQ(scratch.read(name), "long");
    const std::filesystem::path plain = scratch.path() / std::wstring(150, L'a') / std::wstring(150, L'b');
    ASSERT_EQ(writeFile(*openTarget(plain), "y", "plain"), kOk);
    ASSERT_EQ(writeFile(*openTarget(scratch.path() / "c" / ".." / "d"), "z", "up"), kOk);
    EXPECT_EQ(scratch.read("d/z"), "up");
}

TEST(WindowsTarget, RefusesPlacesThatAreNot) {
    std::unique_ptr<TargetFolder> target;
    for (const wchar_t* place : {L"", L"1:\\x", L"\\\\?\\", L"\\\\?\\GLOBALROOT\\none\\x", L"C:\\a\"b"}) {
        EXPECT_NE(systemTarget().open(place, target), kOk) << std::filesystem::path(place);
        EXPECT_EQ(target, nullptr);
    }
}

}  // namespace
}  // namespace archiver
