#include "shell/win32/windows_clipboard.h"

#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <shellapi.h>

#include <string>

#include "shell/win32/ansi_codec.h"
#include "shell/win32/handles.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

using Paths = std::vector<std::wstring>;

constexpr const wchar_t* kHeld = L"TovarExTestClipboardHeld";
constexpr const wchar_t* kRelease = L"TovarExTestClipboardRelease";

/// Runs one of the roles below in another process.
UniqueHandle startRole(const wchar_t* role) {
    std::wstring line = L"\"" + moduleFile(nullptr) + L"\" --gtest_also_run_disabled_tests --gtest_filter=" + role;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process) ==
        FALSE) {
        return nullptr;
    }
    ::CloseHandle(process.hThread);
    return UniqueHandle(process.hProcess);
}
bool ends(const UniqueHandle& process) {
    DWORD code = 1;
    return ::WaitForSingleObject(process.get(), 30000) == WAIT_OBJECT_0 &&
           ::GetExitCodeProcess(process.get(), &code) != FALSE && code == 0;
}

void putRaw(UINT format, const std::string& bytes) {
    ASSERT_TRUE(::OpenClipboard(nullptr));
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    bytes.copy(static_cast<char*>(::GlobalLock(memory)), bytes.size());
    ::GlobalUnlock(memory);
    EXPECT_NE(::SetClipboardData(format, memory), nullptr);
    ::CloseClipboard();
}

class WindowsClipboardTest : public testing::Test {
protected:
    ~WindowsClipboardTest() override { files_.ClearClipboard(); }

    AnsiCodec codec_;
    WindowsClipboard clipboard_;
    FileClipboard files_{clipboard_, codec_};
    Paths paths_{L"before"};
};

// What another program does; run by the tests alone.

TEST_F(WindowsClipboardTest, DISABLED_RoleHoldsTheClipboard) {
    const UniqueHandle held(::OpenEventW(EVENT_MODIFY_STATE, FALSE, kHeld));
    const UniqueHandle release(::OpenEventW(SYNCHRONIZE, FALSE, kRelease));
    ASSERT_TRUE(held && release);
    // As programs do; two without a window do not keep each other out.
    const UniqueWindow window(
        ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
    ASSERT_TRUE(::OpenClipboard(window.get()));
    ::SetEvent(held.get());
    ::WaitForSingleObject(release.get(), 30000);
    ::CloseClipboard();
}

TEST(WindowsClipboardRole, DISABLED_ReadsWithTheShell) {
    ASSERT_TRUE(::OpenClipboard(nullptr));
    const auto drop = static_cast<HDROP>(::GetClipboardData(CF_HDROP));
    ASSERT_NE(drop, nullptr);
    EXPECT_EQ(::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0), 2U);
    wchar_t name[MAX_PATH] = L"";
    ::DragQueryFileW(drop, 0, name, MAX_PATH);
    EXPECT_EQ(std::wstring(name), LR"(C:\W\a.txt)");
    ::DragQueryFileW(drop, 1, name, MAX_PATH);
    EXPECT_EQ(std::wstring(name), L"C:\\W\\\u8868 \u0416.txt");
    ::CloseClipboard();
}

TEST(WindowsClipboardRole, DISABLED_WritesAWideList) {
    std::string block{20};
    block.resize(20);
    block[16] = 1;
    const std::u16string list = std::u16string(u"C:\\\u8868") + u'\0' + u"D:\\b c" + u'\0' + u'\0';
    block.append(reinterpret_cast<const char*>(list.data()), list.size() * 2);
    putRaw(CF_HDROP, block);
}

TEST_F(WindowsClipboardTest, HandsAListToAnotherProgram) {
    EXPECT_TRUE(files_.PutFilesOnClipboard({LR"(C:\W\a.txt)", L"C:\\W\\\u8868 \u0416.txt"}));
    EXPECT_TRUE(ends(startRole(L"WindowsClipboardRole.DISABLED_ReadsWithTheShell")));
}

TEST_F(WindowsClipboardTest, WritesTheBlockToTheByte) {
    EXPECT_TRUE(files_.PutFilesOnClipboard({LR"(C:\W\a.txt)", LR"(C:\W\b.txt)"}));
    ASSERT_TRUE(::OpenClipboard(nullptr));
    const HANDLE memory = ::GetClipboardData(CF_HDROP);
    const std::string expected =
        std::string{20} + std::string(19, '\0') + std::string("C:\\W\\a.txt\0C:\\W\\b.txt\0\0", 23);
    ASSERT_GE(::GlobalSize(memory), expected.size());
    EXPECT_EQ(std::string(static_cast<const char*>(::GlobalLock(memory)), expected.size()), expected);
    ::GlobalUnlock(memory);
    ::CloseClipboard();
}

TEST_F(WindowsClipboardTest, TakesAWideListOfAnotherProgram) {
    EXPECT_TRUE(ends(startRole(L"WindowsClipboardRole.DISABLED_WritesAWideList")));
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 2);
    EXPECT_EQ(paths_, (Paths{L"C:\\\u8868", L"D:\\b c"}));
}

TEST_F(WindowsClipboardTest, ReportsThatAnotherProgramHoldsIt) {
    ASSERT_TRUE(files_.PutFilesOnClipboard({L"C:\\old"}));
    const UniqueHandle held(::CreateEventW(nullptr, TRUE, FALSE, kHeld));
    const UniqueHandle release(::CreateEventW(nullptr, TRUE, FALSE, kRelease));
    const UniqueHandle other = startRole(L"WindowsClipboardTest.DISABLED_RoleHoldsTheClipboard");
    ASSERT_EQ(::WaitForSingleObject(held.get(), 30000), WAIT_OBJECT_0);
    EXPECT_FALSE(files_.PutFilesOnClipboard({L"C:\\new"}));
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 0);
    EXPECT_EQ(paths_, Paths{L"before"});
    files_.ClearClipboard();
    ::SetEvent(release.get());
    EXPECT_TRUE(ends(other));
}

TEST_F(WindowsClipboardTest, TakesNothingFromATextOnly) {
    putRaw(CF_TEXT, std::string("C:\\a\0", 5));
    EXPECT_EQ(files_.GetFilesFromClipboard(paths_), 0);
    EXPECT_EQ(paths_, Paths{L"before"});
}

TEST_F(WindowsClipboardTest, RaisesAnErrorForAListOfNoFiles) {
    putRaw(CF_HDROP, std::string{20} + std::string(20, '\0'));
    EXPECT_THROW(files_.GetFilesFromClipboard(paths_), EmptyFileList);
    EXPECT_TRUE(::OpenClipboard(nullptr)) << "it is closed all the same";
    ::CloseClipboard();
}

TEST_F(WindowsClipboardTest, ClearsIt) {
    ASSERT_TRUE(files_.PutFilesOnClipboard({L"C:\\a"}));
    files_.ClearClipboard();
    EXPECT_FALSE(::IsClipboardFormatAvailable(CF_HDROP));
}

}  // namespace
}  // namespace tovar
