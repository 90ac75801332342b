#include "browser/win32/contents_view.h"

#include <algorithm>
#include <vector>

#include "shell/win32/child_control.h"
#include "shell/win32/list_view.h"

// Which rows of the contents list are selected, and which one has the focus.
namespace tovar {
namespace {

constexpr std::uint32_t kManyRows = 200;
constexpr std::uint32_t kUnitsToAsk = 2, kUnitsToSet = 4;  ///< of work, for a row

}  // namespace

void ContentsView::moveRows(std::span<const std::uint32_t> newRows) {
    const Changing changing(*this);
    const RedrawPause pause(list_);
    showSortArrow();
    const int focused = focusedRow();
    if (focused >= 0 && static_cast<std::size_t>(focused) < newRows.size()) {
        setState(static_cast<int>(newRows[static_cast<std::size_t>(focused)]), LVIS_FOCUSED, LVIS_FOCUSED);
    }
    if (selectedCount() == newRows.size()) return;
    std::vector<std::uint32_t> rows = selectedRows();
    std::erase_if(rows, [&](std::uint32_t row) { return row >= newRows.size(); });
    for (std::uint32_t& row : rows) row = newRows[row];
    std::sort(rows.begin(), rows.end());
    selectOnly(rows);
}

// Some lists go through all rows in either case, a million of them in 350 ms when they are told once, and do not answer
// meanwhile.
void ContentsView::selectAll(Breather* breather) {
    if (breather == nullptr) {
        const Changing changing(*this);
        const RedrawPause pause(list_);
        setState(kEveryRow, LVIS_SELECTED, LVIS_SELECTED);
        return;
    }
    const RedrawPause pause(list_);  // rows out of sight too would be told to paint themselves
    PacedWork work(breather);
    const std::uint32_t count = rowCount();
    for (std::uint32_t row = 0; row < count; ++row) {
        {
            const Changing changing(*this);
            setState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
        }
        work.done(kUnitsToSet);
    }
}

void ContentsView::selectOthers(Breather* breather) {
    const RedrawPause pause(list_);
    PacedWork work(breather);
    const std::uint32_t count = rowCount();
    std::vector<std::uint32_t> others;
    for (std::uint32_t row = 0; row < count; ++row) {
        if (ask(LVM_GETITEMSTATE, row, LVIS_SELECTED) == 0) others.push_back(row);
        work.done(kUnitsToAsk);
    }
    {
        const Changing changing(*this);
        selectNone();
    }
    for (const std::uint32_t row : others) {
        {
            const Changing changing(*this);
            setState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
        }
        work.done(kUnitsToSet);
    }
}

// A list sets all its rows at once, but parts of them only row by row: the smaller part is the one to touch.
void ContentsView::invertSelection(Breather* breather) {
    if (breather != nullptr) {
        selectOthers(breather);
        return;
    }
    const Changing changing(*this);
    const RedrawPause pause(list_);
    const std::uint32_t count = rowCount();
    const std::vector<std::uint32_t> rows = selectedRows();
    if (rows.size() <= count / 2) {
        setState(kEveryRow, LVIS_SELECTED, LVIS_SELECTED);
        for (const std::uint32_t row : rows) setState(static_cast<int>(row), 0, LVIS_SELECTED);
        return;
    }
    std::vector<std::uint32_t> others;
    others.reserve(count - rows.size());
    auto next = rows.begin();
    for (std::uint32_t row = 0; row < count; ++row) {
        if (next != rows.end() && *next == row) {
            ++next;
        } else {
            others.push_back(row);
        }
    }
    selectOnly(others);
}

// Some lists take rows out of the selection one by one, and very many take seconds. A list that has no rows for a
// moment forgets the selection at once, and with it the focus and how far it was scrolled.
void ContentsView::selectNone() {
    if (selectedCount() >= kManyRows) {
        const WPARAM count = rowCount();
        const int focused = focusedRow();
        const LRESULT top = ::SendMessageW(list_, LVM_GETTOPINDEX, 0, 0);
        ::SendMessageW(list_, LVM_SETITEMCOUNT, 0, 0);
        ::SendMessageW(list_, LVM_SETITEMCOUNT, count, 0);
        if (focused >= 0) setState(focused, LVIS_FOCUSED, LVIS_FOCUSED);
        ::SendMessageW(list_, LVM_ENSUREVISIBLE, count - 1, FALSE);
        ::SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(top), FALSE);
    }
    setState(kEveryRow, 0, LVIS_SELECTED);
}

void ContentsView::selectOnly(const std::vector<std::uint32_t>& rows) {
    selectNone();
    for (const std::uint32_t row : rows) setState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
}

void ContentsView::showRow(int row) {
    const Changing changing(*this);
    {
        const RedrawPause pause(list_);
        selectNone();
        setState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ::SendMessageW(list_, LVM_SETSELECTIONMARK, 0, row);  // a selection with Shift goes on from here
    }
    ::SendMessageW(list_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

std::vector<std::uint32_t> ContentsView::selectedRows() const {
    std::vector<std::uint32_t> rows;
    rows.reserve(selectedCount());
    for (LRESULT row = -1; (row = ask(LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;) {
        rows.push_back(static_cast<std::uint32_t>(row));
    }
    return rows;
}

void ContentsView::setState(int row, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

std::uint32_t ContentsView::selectedCount() const { return SelectedCount(list_); }

int ContentsView::focusedRow() const {
    return static_cast<int>(::SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
}

}  // namespace tovar
