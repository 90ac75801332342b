#include <gtest/gtest.h>
#include <windows.h>
#include <winioctl.h>

#include <cstring>
#include <string>
#include <vector>

#include "archivers/unpacking/win32/places.h"
#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::openTarget;
using test::Scratch;
using test::writeFile;

using Names = std::vector<std::string>;

/// Makes a junction as Windows does. Source: Windows documentation, REPARSE_DATA_BUFFER
bool makeJunction(const std::wstring& at, const std::wstring& to) {
    const std::wstring target = L"\\??\\" + to;
    const auto bytes = static_cast<WORD>(target.size() * sizeof(wchar_t));
    struct {
        DWORD tag;
        WORD dataLength, reserved, targetOffset, targetLength, printOffset, printLength;
        wchar_t text[MAX_PATH + 8];
    } record{};
    record.tag = IO_REPARSE_TAG_MOUNT_POINT;
    record.dataLength = static_cast<WORD>(8 + bytes + 2 * sizeof(wchar_t));
    record.targetLength = bytes;
    record.printOffset = static_cast<WORD>(bytes + sizeof(wchar_t));
    std::memcpy(record.text, target.data(), bytes);
    if (!::CreateDirectoryW(at.c_str(), nullptr)) return false;
    const HANDLE folder = ::CreateFileW(at.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    DWORD got = 0;
    const bool made =
        folder != INVALID_HANDLE_VALUE &&
        ::DeviceIoControl(folder, FSCTL_SET_REPARSE_POINT, &record, 8U + record.dataLength, nullptr, 0, &got, nullptr);
    if (folder != INVALID_HANDLE_VALUE) ::CloseHandle(folder);
    if (!made) ::RemoveDirectoryW(at.c_str());
    return made;
}

/// Runs a program of the system that Wine runs on with paths as arguments, and waits until `at` is there or not.
bool runBelowWine(const wchar_t* program, std::wstring line, const std::vector<std::wstring>& paths,
                  const std::wstring& at, bool isThere) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    const auto unixName =
        reinterpret_cast<UnixName>(reinterpret_cast<void*>(::GetProcAddress(kernel, "wine_get_unix_file_name")));
    if (unixName == nullptr) return false;
    for (const std::wstring& path : paths) {
        const std::size_t separator = path.rfind(L'\\');
        char* const folder = unixName(path.substr(0, separator).c_str());
        const std::string text = folder == nullptr ? "" : folder;
        ::HeapFree(::GetProcessHeap(), 0, folder);
        line.append(L" \"").append(text.begin(), text.end()).append(L"/").append(path.substr(separator + 1));
        line.append(L"\"");
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        return false;
    }
    if (process.hThread != nullptr) ::CloseHandle(process.hThread);
    if (process.hProcess != nullptr) ::CloseHandle(process.hProcess);
    const ULONGLONG deadline = ::GetTickCount64() + 10'000;
    while ((::GetFileAttributesW(at.c_str()) != INVALID_FILE_ATTRIBUTES) != isThere) {
        if (::GetTickCount64() > deadline) return false;
        ::SwitchToThread();
    }
    return true;
}

/// Makes a link of that system, which Wine shows as a folder that leads elsewhere.
bool makeLinkBelowWine(const std::wstring& at, const std::wstring& to) {
    return runBelowWine(L"\\\\?\\unix\\bin\\ln", L"ln -s", {to, at}, at, true);
}

void removeLink(const std::wstring& at) {
    if (!::RemoveDirectoryW(at.c_str())) {
        EXPECT_TRUE(runBelowWine(L"\\\\?\\unix\\bin\\rm", L"rm", {at}, at, false));
    }
}

/// A target with a folder outside it, and a way to that.
class WindowsLinks : public testing::Test {
protected:
    void SetUp() override {
        scratch.makeFolder("outside");
        scratch.write("outside/file", "outside");
        scratch.makeFolder("in");
        target = openTarget(scratch.path() / "in");
        const std::wstring to = (scratch.path() / "outside").native();
        ASSERT_TRUE(makeJunction(at, to) || makeLinkBelowWine(at, to));
        ASSERT_EQ(scratch.read("in/way/file"), "outside");
    }

    void TearDown() override { removeLink(at); }

    Scratch scratch;
    std::wstring at = (scratch.path() / "in" / "way").native();
    std::unique_ptr<TargetFolder> target;
};

TEST_F(WindowsLinks, AreNotEntered) {
    bool made = false;
    EXPECT_EQ(writeFile(*target, "way/new", "evil"), kFileOpen);
    EXPECT_EQ(writeFile(*target, "way/file", "evil", true), kFileOpen);
    EXPECT_EQ(target->makeFolder("way", made), kMakeDirectory);
    EXPECT_EQ(target->makeFolder("way/new/folder", made), kMakeDirectory);
    EXPECT_FALSE(made);
    EXPECT_EQ(target->makeHardLink("new", "way/file", false), kFileOpen);
    EXPECT_EQ(target->copyFile("new", "way/file", false, [] { return true; }), kFileOpen);
    EXPECT_EQ(target->setProperties("way", {}), kMakeDirectory);
    EXPECT_FALSE(target->find("way/file").has_value());
    EXPECT_EQ(scratch.names(), (Names{"in/", "in/way", "outside/", "outside/file"}));
    EXPECT_EQ(scratch.read("outside/file"), "outside");
}

TEST_F(WindowsLinks, AreTold) {
    EXPECT_EQ(kindOf((scratch.path() / "in" / "way").native()), PlaceKind::kLink);
    const auto there = target->find("way");
    ASSERT_TRUE(there.has_value());
    EXPECT_EQ(there->kind, ExistingItem::Kind::kLink);
}

TEST_F(WindowsLinks, AreNotWrittenThrough) {
    EXPECT_EQ(writeFile(*target, "way", "evil"), kSameNameFile);
    EXPECT_EQ(scratch.names(), (Names{"in/", "in/way", "outside/", "outside/file"}));
}

TEST_F(WindowsLinks, MayStandAboveTheTarget) {
    const auto other = openTarget(scratch.path() / "in" / "way");
    EXPECT_EQ(writeFile(*other, "x", "x"), kOk);
    EXPECT_EQ(scratch.read("outside/x"), "x");
}

TEST(WindowsSymbolicLinks, AreMadeOrNotSupported) {
    const Scratch scratch;
    const auto target = openTarget(scratch.path());
    ASSERT_EQ(writeFile(*target, "a", "first"), kOk);
    scratch.write("old", "old");
    const ReturnCode code = target->makeSymbolicLink("b", "a", false);
    ASSERT_TRUE(code == kOk || code == kNotSupport) << code;
    EXPECT_EQ(target->makeSymbolicLink("old", "a", true), code);
    EXPECT_EQ(target->makeSymbolicLink("old", "a", false), kSameNameFile);
    if (code == kOk) {
        EXPECT_EQ(scratch.read("b"), "first");
        EXPECT_EQ(target->find("b")->kind, ExistingItem::Kind::kLink);
        EXPECT_EQ(scratch.names(), (Names{"a", "b", "old"}));
    } else {
        EXPECT_EQ(scratch.read("old"), "old");
        EXPECT_EQ(scratch.names(), (Names{"a", "old"}));
    }
}

}  // namespace
}  // namespace archiver
