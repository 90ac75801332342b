#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "browser/browser_presenter.h"
#include "browser/member_search.h"
#include "drivers/entry_table.h"

namespace tovar {

/// The bar in which members are looked for, as its presenter sees it.
class FindView {
public:
    virtual ~FindView() = default;

    /// Shows or hides the bar. When it goes, the keyboard returns to where it was before it came to the bar.
    virtual void setShown(bool shown) = 0;
    /// Brings the keyboard to the text field, with the whole text selected.
    virtual void enterText() = 0;
    /// Enables or disables the buttons for the next and the previous one.
    virtual void enableMoves(bool enabled) = 0;
    /// Says how the search goes; nothing when the text is empty.
    /// @param failed  there is no such member: to be seen at a glance
    virtual void showState(std::wstring_view text, bool failed) = 0;
    /// Has onSlice called time and again while no message waits, until it is told to stop.
    virtual void runSlices(bool running) = 0;
};

/// Decides what happens in the bar in which members are looked for by their names (NamePattern), in the whole archive.
/// A text is looked for as it is typed, from the current row on: a longer text from what was found for the shorter one,
/// another text from where the search began. While the archive is being listed, and when none is open, nothing is
/// looked for. While the browser puts rows in order, messages run: the search waits then.
class FindPresenter {
public:
    using Direction = MemberSearch::Direction;
    using Outcome = MemberSearch::Outcome;

    /// All must outlive the object.
    /// @param entries  the table that the browser's folders were made from
    FindPresenter(FindView& view, BrowserPresenter& browser, const EntryTable& entries);

    /// Members are to be looked for: shows the bar, or goes back to it.
    void onFind();
    void onTextChanged(std::wstring_view text);
    // Also while the bar is hidden: they show it, and begin there when there is no text yet.
    void onNext() { onMove(Direction::Forward); }
    void onPrevious() { onMove(Direction::Backward); }
    /// The time for a slice of the search has come.
    void onSlice();
    void onClose();

    /// What was listed is no more: the archive is being listed again, or the window goes.
    void onListingGone();

    [[nodiscard]] bool isShown() const noexcept { return shown_; }

private:
    enum class Begin { AtRow, BesideRow };
    /// What is to be done at the next slice.
    enum class Task { None, BeginTyped, Search, ShowFound };

    void show();
    void onMove(Direction direction);
    void beginTyped();
    void search(std::optional<MemberPlace> row, Direction direction, Begin begin);
    void proceed();
    void showFound();
    void wait(Task task);
    void stop();

    FindView& view_;
    BrowserPresenter& browser_;
    MemberSearch search_;
    std::wstring text_;
    std::optional<MemberPlace> origin_;   ///< the row where the search for a text begins
    std::optional<MemberPlace> lastRow_;  ///< the current row as the last search left it
    Direction direction_ = Direction::Forward;
    Task task_ = Task::None;
    bool isLonger_ = false;  ///< the text goes on from the one that was looked for last
    bool moving_ = false;    ///< the search is for the next or the previous one
    bool shown_ = false;
};

}  // namespace tovar
