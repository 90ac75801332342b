#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>
#include <ole2.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "browser/browser_commands.h"
#include "shell/win32/confirmation_dialog_controls.h"
#include "shell/win32/handles.h"
#include "win32/drag/support/drop_window.h"
#include "win32/drag/support/pointer.h"
#include "win32/drag/support/small_archives.h"
#include "win32/extraction/support/dialog_user.h"
#include "win32/system/support/system_fixture.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {

/// Path below a folder with "/" -> content.
using Contents = std::map<std::string, std::string>;

[[nodiscard]] inline Contents contentsBelow(const std::filesystem::path& folder) {
    Contents contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::u8string name = std::filesystem::relative(entry.path(), folder).generic_u8string();
        contents[std::string(name.begin(), name.end())] = {std::istreambuf_iterator<char>(stream), {}};
    }
    return contents;
}

/// Another program that runs until its file "ready" goes.
class Helper {
public:
    /// @param ready  empty for one that ends by itself
    Helper(const std::wstring& arguments, std::filesystem::path ready) : ready_(std::move(ready)) {
        std::wstring line = L'"' + (staged::productsFolder() / L"win32_drag_helper.exe").native() + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
            return;
        }
        process_.reset(process.hProcess);
        ::CloseHandle(process.hThread);
        started_ = ready_.empty() || waitUntil([&] { return std::filesystem::exists(ready_) || hasEnded(); });
    }
    ~Helper() { end(); }
    Helper(const Helper&) = delete;
    Helper& operator=(const Helper&) = delete;

    [[nodiscard]] bool isStarted() const { return started_; }
    /// @return what it ended with
    DWORD end() {
        if (!process_) return 1;
        if (!ready_.empty()) {
            waitUntil([&] {
                std::error_code inUse;
                std::filesystem::remove(ready_, inUse);
                return !inUse;
            });
        }
        waitUntil([&] { return hasEnded(); });
        DWORD code = STILL_ACTIVE;
        ::GetExitCodeProcess(process_.get(), &code);
        process_.reset();
        return code;
    }

private:
    [[nodiscard]] bool hasEnded() const { return ::WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0; }

    std::filesystem::path ready_;
    UniqueHandle process_;
    bool started_ = false;
};

/// A browser in a host's window; the work folder "work", and a folder "target" outside of it.
class DragFixture : public SystemFixture {
protected:
    DragFixture() {
        ::OleInitialize(nullptr);
        std::filesystem::create_directory(work);
        std::filesystem::create_directory(target);
        for (const wchar_t* const name : {L"UnZip32.dll", L"Tar32.dll", L"UnLha32.dll"}) libraries.bundled(name);
        create();
        EXPECT_EQ(object->SetTempDir(makeBstr(work.native()).get()), S_OK);
        ::SetForegroundWindow(host.window());
    }
    ~DragFixture() override { ::OleUninitialize(); }
    void TearDown() override {
        SystemFixture::TearDown();
        ::SetFileAttributesW(work.c_str(), FILE_ATTRIBUTE_NORMAL);  // the component hides it
        EXPECT_TRUE(std::filesystem::is_empty(work)) << testing::PrintToString(contentsBelow(work));
    }

    void show(const wchar_t* name, const Members& members) {
        writeArchive(folder / name, members);
        ASSERT_TRUE(open(folder / name));
        // The first press in a window that is not active yet may be lost.
        EXPECT_TRUE(waitUntil([&] {
            ::SetForegroundWindow(host.window());
            return ::GetForegroundWindow() == host.window();
        }));
    }
    void selectAll() const {
        for (int row = 0; row < browser().rowCount(); ++row) browser().selectRow(row);
    }
    /// Where a row's name is on the screen.
    [[nodiscard]] POINT placeOf(int row) const {
        RECT place{LVIR_LABEL, 0, 0, 0};
        ::SendMessageW(browser().list(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        POINT point{place.left + 8, (place.top + place.bottom) / 2};
        ::ClientToScreen(browser().list(), &point);
        return point;
    }
    /// Answers the question of a drop.
    [[nodiscard]] static std::function<void(HWND)> answer(int button) {
        return [button](HWND dialog) { ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0); };
    }
    /// The files and folders that the component has in its work folder now.
    [[nodiscard]] std::size_t ownItems() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(work)) {
            if (entry.path().filename().native().starts_with(L"TovarEx-")) ++count;
        }
        return count;
    }

    const std::filesystem::path work{folder / L"work"}, target{folder / L"target"};
};

using Question = DialogUser<IDC_TXT_LIST>;

}  // namespace tovar::test
