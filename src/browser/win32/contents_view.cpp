#include "browser/win32/contents_view.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "browser/win32/browser_controls.h"
#include "browser/win32/text_extent.h"
#include "shell/win32/child_control.h"
#include "shell/win32/list_view.h"
#include "shell/win32/subclass.h"

namespace tovar {
namespace {

constexpr int kEveryRow = -1;

int formatOf(ColumnAlignment alignment) {
    switch (alignment) {
        case ColumnAlignment::Right:
            return LVCFMT_RIGHT;
        case ColumnAlignment::Centre:
            return LVCFMT_CENTER;
        default:
            return LVCFMT_LEFT;
    }
}

}  // namespace

bool ContentsView::create(HWND parent, MessageBoxes& messages) {
    list_ = createControl(parent, WC_LISTVIEWW, L"Contents",
                          WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, WS_EX_CLIENTEDGE, LV1);
    if (list_ == nullptr) return false;
    constexpr DWORD kExtended = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
    ::SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    const LONG_PTR former = ::SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&keyProcedure));
    ::SetWindowLongPtrW(list_, GWLP_USERDATA, former);
    ShareImageLists(list_);
    AttachSystemImageList(list_, true);
    Subclass(list_, &ListViewWindowProc, this, messages);
    return true;
}

// A host that treats its window as a dialog would take Enter for its own default button.
LRESULT CALLBACK ContentsView::keyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto former = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    const LRESULT answer = ::CallWindowProcW(former, window, message, wParam, lParam);
    if (message != WM_GETDLGCODE || lParam == 0) return answer;
    const auto& key = *reinterpret_cast<const MSG*>(lParam);
    const bool isEnter = key.message == WM_KEYDOWN && key.wParam == VK_RETURN;
    return isEnter ? answer | DLGC_WANTMESSAGE : answer;
}

void ContentsView::release() {
    contents_ = nullptr;
    Unsubclass(list_);
}

void ContentsView::clear() {
    const Changing changing(*this);
    const RedrawPause pause(list_);
    contents_ = nullptr;
    setState(kEveryRow, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ::SendMessageW(list_, LVM_SETITEMCOUNT, 0, 0);
    while (::SendMessageW(list_, LVM_DELETECOLUMN, 0, 0) != FALSE) {
    }
}

void ContentsView::show(const ContentsList& contents) {
    const Changing changing(*this);
    const RedrawPause pause(list_);
    clear();
    contents_ = &contents;
    showColumns();
    showSortArrow();
    ::SendMessageW(list_, LVM_SETITEMCOUNT, contents.rowCount(), 0);
    if (contents.rowCount() != 0) {
        ::SendMessageW(list_, LVM_ENSUREVISIBLE, 0, FALSE);
        setState(0, LVIS_FOCUSED, LVIS_FOCUSED);
    }
}

void ContentsView::showColumns() {
    const TextExtent extent(list_);
    int place = 0;
    for (const ContentsColumn& shown : contents_->columns()) {
        std::wstring header(shown.header);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.fmt = formatOf(shown.alignment);
        column.cx = static_cast<int>(std::lround(extent.widthOf(shown.measuringText) * shown.factor));
        column.pszText = header.data();
        column.iSubItem = place;
        ::SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&column));
        ++place;
    }
}

void ContentsView::showSortArrow() {
    const auto sorting = contents_->sorting();
    const auto header = reinterpret_cast<HWND>(::SendMessageW(list_, LVM_GETHEADER, 0, 0));
    for (std::size_t column = 0; column < contents_->columns().size(); ++column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header, HDM_GETITEMW, column, reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (sorting && sorting->column == column) item.fmt |= sorting->descending ? HDF_SORTDOWN : HDF_SORTUP;
        ::SendMessageW(header, HDM_SETITEMW, column, reinterpret_cast<LPARAM>(&item));
    }
}

void ContentsView::moveRows(std::span<const std::uint32_t> newRows) {
    const Changing changing(*this);
    const RedrawPause pause(list_);
    showSortArrow();
    const int focused = focusedRow();
    if (focused >= 0 && static_cast<std::size_t>(focused) < newRows.size()) {
        setState(static_cast<int>(newRows[static_cast<std::size_t>(focused)]), LVIS_FOCUSED, LVIS_FOCUSED);
    }
    if (selectedCount() == newRows.size()) return;
    std::vector<std::uint32_t> selected;
    for (LRESULT row = -1;
         (row = ::SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;) {
        if (static_cast<std::size_t>(row) < newRows.size()) selected.push_back(newRows[static_cast<std::size_t>(row)]);
    }
    std::sort(selected.begin(), selected.end());
    setState(kEveryRow, 0, LVIS_SELECTED);
    for (const std::uint32_t row : selected) setState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
}

void ContentsView::setState(int row, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    ::SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

std::uint32_t ContentsView::selectedCount() const { return SelectedCount(list_); }

int ContentsView::focusedRow() const {
    return static_cast<int>(::SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
}

void ContentsView::onGetDisplayInfo(LVITEMW& item) {
    if (contents_ == nullptr || item.iItem < 0) return;
    const auto row = static_cast<std::uint32_t>(item.iItem);
    if ((item.mask & LVIF_TEXT) != 0) {
        std::wstring& text = shownTexts_[nextText_++ % shownTexts_.size()];
        text = contents_->text(row, static_cast<std::size_t>(item.iSubItem));
        item.pszText = text.data();
    }
    if ((item.mask & LVIF_IMAGE) != 0) item.iImage = contents_->icon(row);
}

int ContentsView::onFindItem(const NMLVFINDITEMW& find) const {
    const bool byText = (find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0 && find.lvfi.psz != nullptr;
    if (contents_ == nullptr || !byText) return -1;
    const auto row = contents_->findName(find.lvfi.psz, static_cast<std::uint32_t>(std::max(find.iStart, 0)));
    return row ? static_cast<int>(*row) : -1;
}

}  // namespace tovar
