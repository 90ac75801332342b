#include "browser/win32/contents_view.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "browser/win32/browser_controls.h"
#include "browser/win32/text_extent.h"
#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"
#include "shell/win32/handles.h"
#include "shell/win32/list_view.h"
#include "shell/win32/subclass.h"
#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

constexpr std::uint32_t kMeasuredRows = 1000;
constexpr int kSmallIcon = 16, kLargeIcon = 32;  // at 96 dots per inch

int widthOf(const ContentsColumn& column, const TextExtent& extent) {
    return static_cast<int>(std::lround(extent.widthOf(column.measuringText) * column.factor));
}

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

LONG_PTR styleBits(ViewStyle style) {
    switch (style) {
        case ViewStyle::LargeIcons:
            return LVS_ICON;
        case ViewStyle::SmallIcons:
            return LVS_SMALLICON;
        case ViewStyle::List:
            return LVS_LIST;
        default:
            return LVS_REPORT;
    }
}

}  // namespace

bool ContentsView::create(HWND parent, PaneKeys& keys, MessageBoxes& messages) {
    list_ = createControl(parent, WC_LISTVIEWW, L"Contents",
                          WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE,
                          WS_EX_CLIENTEDGE, LV1);
    if (list_ == nullptr) return false;
    constexpr DWORD kExtended = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
    ::SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    ownProcedure_ = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(list_, GWLP_WNDPROC));
    if (!watchKeys(list_, keys)) return false;
    ShareImageLists(list_);
    AttachSystemImageList(list_, true);
    Subclass(list_, &ListViewWindowProc, this, messages);
    return true;
}

void ContentsView::release() {
    contents_ = nullptr;
    Unsubclass(list_);
}

void ContentsView::clear() {
    const Changing changing(*this);
    const RedrawPause pause(list_);
    contents_ = nullptr;
    ::SendMessageW(list_, LVM_SETITEMCOUNT, 0, 0);
    setState(kEveryRow, 0, LVIS_SELECTED | LVIS_FOCUSED);
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
        if (!::IsWindowVisible(list_)) paintUnseen();
    }
}

// Some lists measure their rows when they paint for the first time, and draw their scroll bars anew for it, once more
// than what is seen of them needs: 15 ms and more each time.
void ContentsView::paintUnseen() {
    const std::unique_ptr<std::remove_pointer_t<HDC>, CloseWith<&::DeleteDC>> unseen(::CreateCompatibleDC(nullptr));
    ::SendMessageW(list_, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(unseen.get()), PRF_CLIENT);
}

void ContentsView::showColumns() {
    const TextExtent extent(list_);
    measuredWidths_.clear();
    int place = 0;
    for (const ContentsColumn& shown : contents_->columns()) {
        std::wstring header(shown.header);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.fmt = formatOf(shown.alignment);
        column.cx = widthOf(shown, extent);
        column.pszText = header.data();
        column.iSubItem = place;
        ::SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&column));
        measuredWidths_.push_back(column.cx);
        ++place;
    }
}

HWND ContentsView::header() const { return reinterpret_cast<HWND>(::SendMessageW(list_, LVM_GETHEADER, 0, 0)); }

void ContentsView::measureColumnsAnew() {
    if (contents_ == nullptr) return;
    const TextExtent extent(list_);
    const auto columns = contents_->columns();
    for (std::size_t place = 0; place < std::min<std::size_t>(columns.size(), measuredWidths_.size()); ++place) {
        // The header knows the widths also while the list is no report.
        HDITEMW item{};
        item.mask = HDI_WIDTH;
        if (::SendMessageW(header(), HDM_GETITEMW, place, reinterpret_cast<LPARAM>(&item)) == FALSE) continue;
        const int former = std::exchange(measuredWidths_[place], widthOf(columns[place], extent));
        if (former <= 0) continue;
        item.cxy = ::MulDiv(item.cxy, measuredWidths_[place], former);
        ::SendMessageW(header(), HDM_SETITEMW, place, reinterpret_cast<LPARAM>(&item));
    }
}

// The lists of the main screen's scale are those that were attached. Nobody else can replace them: only who asks the
// list's own procedure.
void ContentsView::setScale(int dpi) {
    const struct {
        WPARAM which;
        int size;
    } lists[] = {{LVSIL_SMALL, kSmallIcon}, {LVSIL_NORMAL, kLargeIcon}};
    for (const auto& each : lists) {
        const HIMAGELIST images = SystemImageListOfSize(scaled(each.size, dpi));
        callOldProcedure(list_, LVM_SETIMAGELIST, each.which, reinterpret_cast<LPARAM>(images));
    }
}

// Not every list view follows the desktop's colours by itself.
void ContentsView::refreshColours() {
    ::SendMessageW(list_, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(::GetSysColor(COLOR_WINDOW)));
    ::SendMessageW(list_, LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(::GetSysColor(COLOR_WINDOW)));
    ::SendMessageW(list_, LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(::GetSysColor(COLOR_WINDOWTEXT)));
}

void ContentsView::showSortArrow() {
    const auto sorting = contents_->sorting();
    for (std::size_t column = 0; column < contents_->columns().size(); ++column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header(), HDM_GETITEMW, column, reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (sorting && sorting->column == column) item.fmt |= sorting->descending ? HDF_SORTDOWN : HDF_SORTUP;
        ::SendMessageW(header(), HDM_SETITEMW, column, reinterpret_cast<LPARAM>(&item));
    }
}

void ContentsView::setStyle(ViewStyle style) {
    const Changing changing(*this);
    const RedrawPause pause(list_);
    const LONG_PTR former = ::GetWindowLongPtrW(list_, GWL_STYLE);
    const LONG_PTR wanted = (former & ~static_cast<LONG_PTR>(LVS_TYPEMASK)) | styleBits(style);
    const bool isMeasured = style == ViewStyle::SmallIcons || style == ViewStyle::List;
    if (wanted != former) {
        if (isMeasured && rowCount() > kMeasuredRows) {
            setStyleBySample(wanted);
        } else {
            setStyleBits(wanted);
        }
        // Some lists move each icon to its place when they may paint again, and invalidate where it was and is; none
        // has to move by then.
        if (style == ViewStyle::SmallIcons || style == ViewStyle::LargeIcons) {
            ::SendMessageW(list_, LVM_ARRANGE, LVA_DEFAULT, 0);
        }
    }
    const int focused = focusedRow();
    if (focused >= 0) ::SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(focused), FALSE);
}

std::uint32_t ContentsView::rowCount() const {
    return static_cast<std::uint32_t>(::SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0));
}

void ContentsView::setStyleBits(LONG_PTR bits) { ::SetWindowLongPtrW(list_, GWL_STYLE, bits); }

// Some lists measure the names of all rows when they take such a style, and once more when they paint small icons for
// the first time: a million of them in five seconds and more. They keep the width that they find, however many rows
// come afterwards, so a sample of the names serves as well. With its rows a list forgets which of them were selected.
void ContentsView::setStyleBySample(LONG_PTR bits) {
    const std::uint32_t count = rowCount(), selected = selectedCount();
    const int focused = focusedRow();
    const std::vector<std::uint32_t> rows = selected == count ? std::vector<std::uint32_t>() : selectedRows();
    ::SendMessageW(list_, LVM_SETITEMCOUNT, 0, 0);
    rowsInSample_ = count;
    ::SendMessageW(list_, LVM_SETITEMCOUNT, kMeasuredRows, 0);
    setStyleBits(bits);
    paintUnseen();
    rowsInSample_ = 0;
    ::SendMessageW(list_, LVM_SETITEMCOUNT, count, 0);
    if (selected == count) setState(kEveryRow, LVIS_SELECTED, LVIS_SELECTED);
    for (const std::uint32_t row : rows) setState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
    if (focused >= 0) setState(focused, LVIS_FOCUSED, LVIS_FOCUSED);
}

RECT ContentsView::placeOfRow(int row) const {
    RECT place{LVIR_SELECTBOUNDS, 0, 0, 0}, client{}, seen{};
    ::GetClientRect(list_, &client);
    if (::SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)) == FALSE ||
        ::IntersectRect(&seen, &place, &client) == FALSE) {
        return {};
    }
    return seen;
}

int ContentsView::rowAt(POINT point) const {
    LVHITTESTINFO hit{};
    hit.pt = point;
    return static_cast<int>(::SendMessageW(list_, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

LRESULT ContentsView::ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::CallWindowProcW(ownProcedure_, list_, message, wParam, lParam);
}

void ContentsView::onGetDisplayInfo(LVITEMW& item) {
    if (contents_ == nullptr || item.iItem < 0) return;
    auto row = static_cast<std::uint32_t>(item.iItem);
    if (rowsInSample_ != 0) row = static_cast<std::uint32_t>(std::uint64_t{row} * rowsInSample_ / kMeasuredRows);
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
