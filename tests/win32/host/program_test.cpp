#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <array>

#include "win32/front/support/component_fixture.h"
#include "win32/system/support/libraries_beside.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {
namespace {

/// SampleHost.exe as a program of its own, seen from outside.
class HostProgram {
public:
    explicit HostProgram(const std::wstring& argument, const std::wstring& folder = programFolder().native()) {
        std::wstring line = L'"' + folder + L"\\SampleHost.exe\" \"" + argument + L'"';
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                              &process_)) {
            process_ = {};
        }
    }
    ~HostProgram() {
        if (process_.hProcess == nullptr) return;
        if (isRunning()) ::TerminateProcess(process_.hProcess, 99);
        ::CloseHandle(process_.hThread);
        ::CloseHandle(process_.hProcess);
    }
    HostProgram(const HostProgram&) = delete;
    HostProgram& operator=(const HostProgram&) = delete;

    [[nodiscard]] bool isRunning() const { return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }
    /// @return the exit code once the program has ended; 98 when it does not
    [[nodiscard]] DWORD exitCode() const {
        DWORD code = 98;
        if (waitUntil([this] { return !isRunning(); })) ::GetExitCodeProcess(process_.hProcess, &code);
        return code;
    }

    /// Its visible top-level window of a class; null when there is none.
    [[nodiscard]] HWND topLevel(const wchar_t* className) const {
        for (HWND window = nullptr; (window = ::FindWindowExW(nullptr, window, className, nullptr)) != nullptr;) {
            DWORD process = 0;
            ::GetWindowThreadProcessId(window, &process);
            if (process == process_.dwProcessId && ::IsWindowVisible(window)) return window;
        }
        return nullptr;
    }
    [[nodiscard]] HWND window() const { return topLevel(L"TovarExSampleHost"); }
    [[nodiscard]] HWND box() const { return topLevel(L"#32770"); }
    [[nodiscard]] HWND browser() const {
        const HWND shown = ::FindWindowExW(window(), nullptr, L"fArcMain", nullptr);
        return ::IsWindowVisible(shown) ? shown : nullptr;
    }

private:
    PROCESS_INFORMATION process_{};
};

/// A text of another program's window.
std::wstring remoteText(HWND window) {
    std::array<wchar_t, 1024> text{};
    ::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.data();
}

class SampleHostProgram : public testing::Test {
protected:
    SampleHostProgram() {
        KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
        KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
        libraries.bundled();
    }

    static bool shows(const HostProgram& program, const std::wstring& status) {
        const HWND bar = ::FindWindowExW(program.window(), nullptr, STATUSCLASSNAMEW, nullptr);
        return bar != nullptr && remoteText(bar) == status;
    }

    const KeptAllowMask kept;
    const TemporaryFolder folder;
    const std::wstring zip = writeFile(folder, L"small.zip", kSmallZip);
    LibrariesBeside libraries;
};

TEST_F(SampleHostProgram, OpensTheArchiveThatItIsStartedWith) {
    const HostProgram program(zip);
    ASSERT_TRUE(waitUntil([&] { return program.browser() != nullptr; }));
    EXPECT_EQ(remoteText(program.browser()), L"small.zip");
    EXPECT_EQ(remoteText(program.window()), L"TovarEx sample host");
    EXPECT_TRUE(waitUntil([&] { return shows(program, L"small.zip is open."); }));
    const HWND list = ::FindWindowExW(program.browser(), nullptr, WC_LISTVIEWW, nullptr);
    EXPECT_EQ(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 2);
    ::PostMessageW(program.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program.exitCode(), 0U) << "closed with the browser open";
}

TEST_F(SampleHostProgram, IsUsedByKeyboardFromAFolder) {
    writeFile(folder, L"second.zip", kSmallZip);
    const HostProgram program(folder.path());
    ASSERT_TRUE(waitUntil([&] { return shows(program, L"2 items"); }));
    const HWND host = program.window(), list = ::FindWindowExW(host, nullptr, WC_LISTVIEWW, L"Files");
    const HWND open = ::FindWindowExW(host, nullptr, WC_BUTTONW, L"&Open");
    EXPECT_EQ(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 2);
    ::SendMessageW(list, WM_KEYDOWN, VK_HOME, 0);
    ::SendMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
    ::SendMessageW(open, BM_CLICK, 0, 0);
    ASSERT_TRUE(waitUntil([&] { return program.browser() != nullptr; }));
    EXPECT_EQ(remoteText(program.browser()), L"small.zip");
    ::PostMessageW(program.browser(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(waitUntil([&] { return program.browser() == nullptr; }));
    ::SendMessageW(list, WM_KEYDOWN, VK_UP, 0);
    ::SendMessageW(open, BM_CLICK, 0, 0);
    ASSERT_TRUE(waitUntil([&] { return program.browser() != nullptr; }));
    EXPECT_EQ(remoteText(program.browser()), L"second.zip");
    ::PostMessageW(host, WM_CLOSE, 0, 0);
    EXPECT_EQ(program.exitCode(), 0U);
}

TEST_F(SampleHostProgram, TellsOfABadArchiveAndLivesOn) {
    const HostProgram program(writeFile(folder, L"bad.zip", "no archive"));
    ASSERT_TRUE(waitUntil([&] { return program.box() != nullptr; }));
    EXPECT_EQ(remoteText(program.box()), L"Open 'bad.zip' by Vantrel");
    EXPECT_EQ(remoteText(::GetDlgItem(program.box(), 0xFFFF)), kRefused);
    ::PostMessageW(program.box(), WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(waitUntil([&] { return shows(program, L"bad.zip is not opened as an archive."); }));
    EXPECT_EQ(program.box(), nullptr);
    EXPECT_EQ(program.browser(), nullptr);
    ::PostMessageW(program.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program.exitCode(), 0U);
}

TEST_F(SampleHostProgram, RunsTwiceAtATime) {
    const HostProgram first(zip), second(zip);
    ASSERT_TRUE(waitUntil([&] { return first.browser() != nullptr && second.browser() != nullptr; }));
    EXPECT_NE(first.browser(), second.browser());
    ::PostMessageW(first.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(first.exitCode(), 0U);
    EXPECT_NE(second.browser(), nullptr) << "what one does is nothing to the other";
    ::PostMessageW(second.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(second.exitCode(), 0U);
}

TEST_F(SampleHostProgram, EndsAtOnceWithoutTheComponent) {
    ASSERT_TRUE(::CopyFileW((programFolder() / L"SampleHost.exe").c_str(), (folder / L"SampleHost.exe").c_str(), TRUE));
    const HostProgram program(zip, folder.path());
    EXPECT_EQ(program.exitCode(), 1U);
}

}  // namespace
}  // namespace tovar::test
