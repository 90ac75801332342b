#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "browser/contents_list.h"
#include "browser/view_style.h"
#include "browser/win32/pane_keys.h"
#include "shell/breather.h"
#include "shell/message_boxes.h"

namespace tovar {

/// The contents list `LV1`: rows that are asked for when they are painted, as a report or in another style.
class ContentsView {
public:
    /// @return false on failure
    bool create(HWND parent, PaneKeys& keys, MessageBoxes& messages);
    /// The window that holds the list is about to go.
    void release();
    [[nodiscard]] HWND hwnd() const noexcept { return list_; }

    /// @param dpi  dots per inch, for the icons
    void setScale(int dpi);
    /// Takes the desktop's colours as they are now.
    void refreshColours();
    /// Gives the columns the widths for a new font. One that the user has made wider or narrower stays so in
    /// proportion.
    void measureColumnsAnew();

    /// No rows and no columns.
    void clear();
    /// @param contents  must outlive what the list shows
    void show(const ContentsList& contents);
    /// Takes the selection along to the rows' new places.
    void moveRows(std::span<const std::uint32_t> newRows);

    /// Shows the same rows in another style. The selection stays, and the row with the focus in sight.
    void setStyle(ViewStyle style);
    // With a breather row by row, with breaths in between; else in one go. What the user selects in a breath is told as
    // ever. Throw WorkAbandoned.
    void selectAll(Breather* breather);
    void invertSelection(Breather* breather);
    /// Selects one row and no other, gives it the focus and brings it in sight.
    void showRow(int row);
    /// @return from top to bottom
    [[nodiscard]] std::vector<std::uint32_t> selectedRows() const;
    /// @return where a row's icon and name are, in the list's own coordinates; empty for a row that is not in sight
    [[nodiscard]] RECT placeOfRow(int row) const;
    /// @param point  in the list's own coordinates
    /// @return the row there; -1 = none
    [[nodiscard]] int rowAt(POINT point) const;

    /// @return whether the selection changes by the program's hand now
    [[nodiscard]] bool isChanging() const noexcept { return changing_ != 0; }
    [[nodiscard]] std::uint32_t selectedCount() const;
    /// @return the row with the focus; -1 = none
    [[nodiscard]] int focusedRow() const;

    // Answers to the list's questions.
    void onGetDisplayInfo(LVITEMW& item);
    /// @return the row found; -1 = none
    [[nodiscard]] int onFindItem(const NMLVFINDITEMW& find) const;

private:
    class Changing {
    public:
        explicit Changing(ContentsView& view) : view_(view) { ++view_.changing_; }
        ~Changing() { --view_.changing_; }
        Changing(const Changing&) = delete;
        Changing& operator=(const Changing&) = delete;

    private:
        ContentsView& view_;
    };

    static constexpr int kEveryRow = -1;

    [[nodiscard]] HWND header() const;
    [[nodiscard]] std::uint32_t rowCount() const;
    void setStyleBits(LONG_PTR bits);
    void setStyleBySample(LONG_PTR bits);
    void showColumns();
    /// Lets the list measure what it would paint.
    void paintUnseen();
    void showSortArrow();
    /// Sends a message past those who watch the list: what is asked for every row is asked very often.
    LRESULT ask(UINT message, WPARAM wParam, LPARAM lParam) const;
    void setState(int row, UINT state, UINT mask);
    void selectNone();
    void selectOthers(Breather* breather);
    void selectOnly(const std::vector<std::uint32_t>& rows);

    HWND list_ = nullptr;
    WNDPROC ownProcedure_ = nullptr;
    const ContentsList* contents_ = nullptr;
    std::vector<int> measuredWidths_;  ///< of the columns, as their texts want them
    int changing_ = 0;
    std::uint32_t rowsInSample_ = 0;          ///< of all rows, while the list measures them; 0: it has all
    std::array<std::wstring, 4> shownTexts_;  ///< the list reads a text some time after it was given
    std::size_t nextText_ = 0;
};

}  // namespace tovar
