#pragma once
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "browser/fakes/fake_browser_actions.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "browser/win32/archive_browser_window.h"
#include "browser/win32/browser_controls.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/pending_messages.h"
#include "shell/win32/window.h"

namespace tovar::test {

using Texts = std::vector<std::wstring>;

/// A real browser window over a driver of the test's own, inside a host's window.
class BrowserFixture : public testing::Test {
protected:
    BrowserFixture() {
        host_ = ::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 1000,
                                  700, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
        auto& file = files_.addFileOfSize(L"C:\\files\\a.zip", 4321);
        file.status.modifiedDate = {2001, 5, 17};
        file.status.modifiedTime = {17, 30, 58};
    }
    ~BrowserFixture() override {
        browser_.reset();
        if (::IsWindow(host_)) ::DestroyWindow(host_);
    }

    void create(std::wstring fontName = {}) {
        browser_ = std::make_unique<fArcMain>(
            BrowserRequest{L"C:\\files\\a.zip", &driver_, L"C:\\work\\", std::move(fontName)},
            BrowserWindowPorts{files_, desktop_, messages_, {}, &actions_}, [this] { ++timesUnloaded_; });
        ASSERT_NE(browser_->hWnd(), nullptr);
    }
    /// Makes the window a child of the host's, 800 by 500 pixels.
    void placeInHost() {
        const LONG_PTR style = ::GetWindowLongPtrW(window(), GWL_STYLE);
        ::SetWindowLongPtrW(window(), GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_POPUP)) | WS_CHILD);
        ::SetParent(window(), host_);
        ::SetWindowPos(window(), nullptr, 20, 20, 800, 500, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    /// Creates, places, fills and shows the window as the plug-in does.
    void open(const std::vector<std::wstring>& storedNames, std::wstring_view key = L"\\") {
        driver_.members = FakeDriver(storedNames).members;
        openMembers(key);
    }
    void openMembers(std::wstring_view key = L"\\") {
        create();
        placeInHost();
        browser_->suspendPainting(true);
        ASSERT_TRUE(browser_->FillControl(key));
        browser_->suspendPainting(false);
        browser_->showModeless();
    }

    [[nodiscard]] HWND window() const { return static_cast<HWND>(browser_->hWnd()); }
    [[nodiscard]] HWND control(int id) const { return ::GetDlgItem(window(), id); }
    [[nodiscard]] HWND edit() const {
        COMBOBOXINFO parts{};
        parts.cbSize = sizeof parts;
        ::GetComboBoxInfo(control(cmbURL), &parts);
        return parts.hwndItem;
    }
    LRESULT send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(control(id), message, wParam, lParam);
    }
    void press(HWND where, WORD key) const {
        ::SendMessageW(where, WM_KEYDOWN, key, 0);
        ::SendMessageW(where, WM_KEYUP, key, 0);
    }

    // The list
    [[nodiscard]] int rowCount() const { return static_cast<int>(send(LV1, LVM_GETITEMCOUNT)); }
    [[nodiscard]] std::wstring cell(int row, int column) const {
        std::array<wchar_t, 1024> text{};
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        send(LV1, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text.data();
    }
    [[nodiscard]] Texts names() const {
        Texts texts;
        for (int row = 0; row < rowCount(); ++row) texts.push_back(cell(row, 0));
        return texts;
    }
    [[nodiscard]] HWND header() const { return reinterpret_cast<HWND>(send(LV1, LVM_GETHEADER)); }
    [[nodiscard]] Texts headers() const {
        Texts texts;
        const auto count = ::SendMessageW(header(), HDM_GETITEMCOUNT, 0, 0);
        for (LRESULT column = 0; column < count; ++column) {
            std::array<wchar_t, 64> text{};
            HDITEMW item{};
            item.mask = HDI_TEXT;
            item.pszText = text.data();
            item.cchTextMax = static_cast<int>(text.size());
            ::SendMessageW(header(), HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
            texts.emplace_back(text.data());
        }
        return texts;
    }
    void setRowState(int row, UINT state, UINT mask) const {
        LVITEMW item{};
        item.state = state;
        item.stateMask = mask;
        send(LV1, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
    void select(int row) const { setRowState(row, LVIS_SELECTED, LVIS_SELECTED); }
    void focus(int row) const { setRowState(row, LVIS_FOCUSED, LVIS_FOCUSED); }
    [[nodiscard]] std::vector<int> selectedRows() const {
        std::vector<int> rows;
        for (int row = -1; (row = next(row)) >= 0;) rows.push_back(row);
        return rows;
    }

    // The tree
    [[nodiscard]] HTREEITEM treeItem(UINT relation, HTREEITEM from = nullptr) const {
        return reinterpret_cast<HTREEITEM>(send(TV1, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
    }
    [[nodiscard]] HTREEITEM root() const { return treeItem(TVGN_ROOT); }
    [[nodiscard]] std::wstring textOfItem(HTREEITEM handle) const {
        std::array<wchar_t, 1024> text{};
        TVITEMW item{};
        item.mask = TVIF_TEXT;
        item.hItem = handle;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        send(TV1, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return text.data();
    }
    [[nodiscard]] std::vector<HTREEITEM> itemsIn(HTREEITEM parent) const {
        std::vector<HTREEITEM> items;
        for (HTREEITEM item = treeItem(TVGN_CHILD, parent); item != nullptr; item = treeItem(TVGN_NEXT, item)) {
            items.push_back(item);
        }
        return items;
    }
    [[nodiscard]] Texts textsIn(HTREEITEM parent) const {
        Texts texts;
        for (const HTREEITEM item : itemsIn(parent)) texts.push_back(textOfItem(item));
        return texts;
    }
    [[nodiscard]] bool isExpanded(HTREEITEM item) const {
        return (send(TV1, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    }
    void selectItem(HTREEITEM item) const { send(TV1, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item)); }
    [[nodiscard]] std::wstring selectedFolder() const { return textOfItem(treeItem(TVGN_CARET)); }

    // The rest
    [[nodiscard]] std::wstring address() const { return textOf(edit()); }
    [[nodiscard]] std::wstring status() const {
        std::wstring text(512, L'\0');
        text.resize(LOWORD(send(sBar1, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text.data()))));
        return text;
    }
    [[nodiscard]] bool goUpEnabled() const { return send(kToolbar, TB_ISBUTTONENABLED, GoUp) != FALSE; }
    void clickGoUp() const { ::SendMessageW(window(), WM_COMMAND, GoUp, reinterpret_cast<LPARAM>(control(kToolbar))); }
    void enterAddress(const std::wstring& text) const {
        ::SetWindowTextW(edit(), text.c_str());
        press(edit(), VK_RETURN);
    }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeMessageBoxes messages_;
    FakeBrowserActions actions_;
    HWND host_ = nullptr;
    int timesUnloaded_ = 0;
    std::unique_ptr<fArcMain> browser_;

private:
    [[nodiscard]] int next(int row) const {
        return static_cast<int>(send(LV1, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED));
    }
};

}  // namespace tovar::test
