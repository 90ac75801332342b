#include "win32/system/support/shown_browser.h"

#include <commctrl.h>

#include <array>

namespace tovar::test {
namespace {

constexpr int kLongestText = 2048;

}  // namespace

std::wstring windowText(HWND window) {
    std::array<wchar_t, kLongestText> text{};
    const LRESULT length = ::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::wstring statusText(HWND statusBar) {
    std::array<wchar_t, kLongestText> text{};
    ::SendMessageW(statusBar, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text.data()));
    return text.data();
}

std::wstring listText(HWND list, int row, int column) {
    std::array<wchar_t, kLongestText> text{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = kLongestText;
    ::SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}

void doubleClickRow(HWND list, int row) {
    ::SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    RECT place{};
    place.left = LVIR_LABEL;
    ::SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM(place.left + 4, (place.top + place.bottom) / 2);
    ::SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    ::SendMessageW(list, WM_LBUTTONUP, 0, point);
    ::SendMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    if (::IsWindow(list)) ::SendMessageW(list, WM_LBUTTONUP, 0, point);
}

std::wstring ShownBrowser::title() const { return windowText(window_); }

std::wstring ShownBrowser::status() const { return statusText(control(STATUSCLASSNAMEW)); }

std::wstring ShownBrowser::address() const { return windowText(control(L"COMBOBOX")); }

Texts ShownBrowser::headers() const {
    const auto header = reinterpret_cast<HWND>(::SendMessageW(list(), LVM_GETHEADER, 0, 0));
    const LRESULT count = ::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    Texts texts;
    for (LRESULT column = 0; column < count; ++column) {
        std::array<wchar_t, kLongestText> text{};
        HDITEMW item{};
        item.mask = HDI_TEXT;
        item.pszText = text.data();
        item.cchTextMax = kLongestText;
        ::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        texts.emplace_back(item.pszText);
    }
    return texts;
}

int ShownBrowser::rowCount() const { return static_cast<int>(::SendMessageW(list(), LVM_GETITEMCOUNT, 0, 0)); }

std::wstring ShownBrowser::cell(int row, int column) const { return listText(list(), row, column); }

Texts ShownBrowser::row(int row) const {
    Texts texts;
    const auto columns = static_cast<int>(headers().size());
    for (int column = 0; column < columns; ++column) texts.push_back(cell(row, column));
    return texts;
}

Texts ShownBrowser::names() const {
    Texts texts;
    const int count = rowCount();
    for (int row = 0; row < count; ++row) texts.push_back(cell(row, 0));
    return texts;
}

std::wstring ShownBrowser::selectedFolder() const {
    return folderText(::SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_CARET, 0));
}

Texts ShownBrowser::folders() const {
    Texts texts;
    const LRESULT root = ::SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_ROOT, 0);
    for (LRESULT item = ::SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_CHILD, root); item != 0;
         item = ::SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_NEXT, item)) {
        texts.push_back(folderText(item));
    }
    return texts;
}

std::wstring ShownBrowser::folderText(LPARAM handle) const {
    std::array<wchar_t, kLongestText> text{};
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(handle);
    item.pszText = text.data();
    item.cchTextMax = kLongestText;
    ::SendMessageW(tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}

void ShownBrowser::openRow(int row) const { doubleClickRow(list(), row); }

void ShownBrowser::selectRow(int row) const {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED;
    ::SendMessageW(list(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

}  // namespace tovar::test
