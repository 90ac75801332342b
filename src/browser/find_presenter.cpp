#include "browser/find_presenter.h"

namespace tovar {
namespace {

// A few milliseconds of work: 1,000,000 members take some twenty slices, and nobody waits for one.
constexpr std::uint64_t kUnitsInSlice = 65'536;

constexpr std::wstring_view kSearching = L"Searching...";
constexpr std::wstring_view kNotFound = L"Not found";
constexpr std::wstring_view kWentOnFromBeginning = L"Continued from the beginning";
constexpr std::wstring_view kWentOnFromEnd = L"Continued from the end";

}  // namespace

FindPresenter::FindPresenter(FindView& view, BrowserPresenter& browser, const EntryTable& entries)
    : view_(view), browser_(browser), search_(browser.folders(), entries) {}

void FindPresenter::onFind() {
    if (!browser_.currentFolder()) return;
    show();
    view_.enterText();
}

void FindPresenter::show() {
    if (shown_) return;
    shown_ = true;
    lastRow_.reset();
    view_.showState({}, false);
    view_.enableMoves(!text_.empty());
    view_.setShown(true);
}

void FindPresenter::onTextChanged(std::wstring_view text) {
    const bool hasBegun = task_ != Task::BeginTyped;
    isLonger_ = !text_.empty() && text.starts_with(text_) && (hasBegun || isLonger_);
    text_ = text;
    stop();
    view_.enableMoves(!text_.empty());
    view_.showState({}, false);
    if (text_.empty() || !browser_.currentFolder()) return;
    if (browser_.isFilling()) {
        wait(Task::BeginTyped);
    } else {
        beginTyped();
    }
}

void FindPresenter::beginTyped() {
    const auto row = browser_.currentPlace();
    // The user has gone elsewhere: the search begins there.
    if (!lastRow_ || row != lastRow_) origin_ = row;
    moving_ = false;
    search(isLonger_ ? row : origin_, Direction::Forward, Begin::AtRow);
}

void FindPresenter::onMove(Direction direction) {
    if (!browser_.currentFolder() || browser_.isFilling()) return;
    if (text_.empty()) {
        onFind();
        return;
    }
    show();
    stop();
    moving_ = true;
    search(browser_.currentPlace(), direction, Begin::BesideRow);
}

void FindPresenter::search(std::optional<MemberPlace> row, Direction direction, Begin begin) {
    lastRow_ = browser_.currentPlace();
    MemberPlace gap{*browser_.currentFolder(), 0};
    if (row) {
        gap = *row;
        // The gap behind the row, when the row itself comes last.
        if ((direction == Direction::Forward) == (begin == Begin::BesideRow)) ++gap.item;
    }
    direction_ = direction;
    search_.begin(text_, gap, direction);
    proceed();
}

void FindPresenter::onSlice() {
    if (task_ != Task::None && browser_.isFilling()) return;
    const Task task = task_;
    stop();  // what throws is over
    view_.runSlices(false);
    if (!browser_.currentFolder()) return;
    switch (task) {
        case Task::BeginTyped:
            beginTyped();
            break;
        case Task::Search:
            proceed();
            break;
        case Task::ShowFound:
            showFound();
            break;
        default:
            break;
    }
}

void FindPresenter::proceed() {
    const Outcome outcome = search_.step(kUnitsInSlice);
    if (outcome == Outcome::Searching) {
        wait(Task::Search);
    } else if (outcome == Outcome::NotFound) {
        view_.showState(kNotFound, true);
    } else if (const Folder folder = search_.found().folder;
               folder != browser_.currentFolder() && browser_.takesLongToShow(folder)) {
        // Messages run then, and the text field may go with its window: not inside the field's own message.
        wait(Task::ShowFound);
    } else {
        showFound();
    }
}

void FindPresenter::wait(Task task) {
    task_ = task;
    view_.showState(kSearching, false);
    view_.runSlices(true);
}

void FindPresenter::showFound() {
    const MemberPlace found = search_.found();
    std::wstring_view state;
    if (search_.wrapped()) state = direction_ == Direction::Forward ? kWentOnFromBeginning : kWentOnFromEnd;
    // When it is not shown, the user or the host went elsewhere meanwhile.
    if (browser_.showMember(found)) {
        lastRow_ = found;
        if (moving_) origin_ = found;
    } else {
        state = {};
    }
    if (task_ == Task::None) view_.showState(state, false);
}

void FindPresenter::stop() {
    if (task_ == Task::None) return;
    task_ = Task::None;
    view_.runSlices(false);
}

void FindPresenter::onClose() {
    if (!shown_) return;
    stop();
    shown_ = false;
    view_.setShown(false);
}

void FindPresenter::onListingGone() {
    stop();
    origin_.reset();
    lastRow_.reset();
    view_.showState({}, false);
}

}  // namespace tovar
