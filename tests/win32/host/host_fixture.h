#pragma once
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <string>

#include "host/sample/win32/host_window.h"
#include "win32/front/support/component_fixture.h"
#include "win32/system/support/libraries_beside.h"
#include "win32/system/support/shown_browser.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {

/// The sample host's window in this process, used as its user does: through its list, its buttons and its close box.
class HostFixture : public testing::Test {
protected:
    static constexpr wchar_t kClass[] = L"TovarExSampleHost";

    HostFixture() {
        KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
        KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
    }
    void SetUp() override {
        libraries.bundled();
        start();
    }
    void TearDown() override {
        stop();
        for (const wchar_t* const name : {L"TovarEx.dll", L"UnZip32.dll", L"Tar32.dll"}) {
            EXPECT_EQ(::GetModuleHandleW(name), nullptr) << testing::PrintToString(std::wstring(name));
        }
    }

    void start() {
        host.emplace();
        ASSERT_TRUE(host->create(::GetModuleHandleW(nullptr)));
        ::ShowWindow(host->hwnd(), SW_SHOW);
        refresh();
        window = host->hwnd();
    }
    void stop() {
        host.reset();
        if (::IsWindow(window)) ::DestroyWindow(window);
        ::UnregisterClassW(kClass, ::GetModuleHandleW(nullptr));
        MSG quit;  // the window's last word, which would end the next message box
        while (::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
        }
    }

    [[nodiscard]] HWND child(const wchar_t* className, const wchar_t* text = nullptr) const {
        return ::FindWindowExW(window, nullptr, className, text);
    }
    [[nodiscard]] HWND list() const { return child(WC_LISTVIEWW); }
    [[nodiscard]] std::wstring status() const { return statusText(child(STATUSCLASSNAMEW)); }
    [[nodiscard]] std::wstring path() const { return windowText(child(L"Static")); }
    [[nodiscard]] Texts rows(int column = 0) const {
        Texts texts;
        const auto count = static_cast<int>(::SendMessageW(list(), LVM_GETITEMCOUNT, 0, 0));
        for (int row = 0; row < count; ++row) texts.push_back(listText(list(), row, column));
        return texts;
    }
    [[nodiscard]] int rowOf(const std::wstring& name) const {
        const Texts all = rows();
        const auto found = std::find(all.begin(), all.end(), name);
        EXPECT_NE(found, all.end()) << testing::PrintToString(name);
        return static_cast<int>(found - all.begin());
    }
    void doubleClick(const std::wstring& name) const { doubleClickRow(list(), rowOf(name)); }
    void select(const std::wstring& name) const {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        ::SendMessageW(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
        item.state = item.stateMask;
        ::SendMessageW(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(rowOf(name)), reinterpret_cast<LPARAM>(&item));
    }
    void click(const wchar_t* button) const { ::SendMessageW(child(WC_BUTTONW, button), BM_CLICK, 0, 0); }
    [[nodiscard]] ShownBrowser browser() const { return ShownBrowser::in(window); }
    /// Shows the folder again, with what was written since.
    void refresh() { ASSERT_EQ(host->showStart(folder.path()), L""); }

    const KeptAllowMask kept;
    const Apartment apartment;
    const TemporaryFolder folder;
    const std::wstring zip = writeFile(folder, L"small.zip", kSmallZip);
    const std::wstring tgz = writeFile(folder, L"small.tar.gz", kSmallTarGz);
    LibrariesBeside libraries;
    MessageBoxWatch boxes;
    std::optional<host::HostWindow> host;
    HWND window = nullptr;
};

}  // namespace tovar::test
