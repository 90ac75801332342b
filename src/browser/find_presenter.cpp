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
    const bool isLonger = !text_.empty() && text.starts_with(text_);
    text_ = text;
    stop();
    view_.enableMoves(!text_.empty());
    view_.showState({}, false);
    if (text_.empty() || !browser_.currentFolder()) return;
    const auto row = browser_.currentPlace();
    // The user has gone elsewhere: the search begins there.
    if (!lastRow_ || row != lastRow_) origin_ = row;
    moving_ = false;
    search(isLonger ? row : origin_, Direction::Forward, Begin::AtRow);
}

void FindPresenter::onMove(Direction direction) {
    if (!browser_.currentFolder()) return;
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
    if (searching_) {
        proceed();
    } else {
        view_.runSlices(false);
    }
}

void FindPresenter::proceed() {
    const bool isFirst = !searching_;
    searching_ = false;  // a search that throws is over
    const Outcome outcome = search_.step(kUnitsInSlice);
    if (outcome != Outcome::Searching) {
        finish(outcome);
        return;
    }
    searching_ = true;
    if (!isFirst) return;
    view_.showState(kSearching, false);
    view_.runSlices(true);
}

void FindPresenter::finish(Outcome outcome) {
    view_.runSlices(false);
    if (outcome == Outcome::NotFound || !browser_.showMember(search_.found())) {
        view_.showState(kNotFound, true);
        return;
    }
    lastRow_ = search_.found();
    if (moving_) origin_ = lastRow_;
    std::wstring_view state;
    if (search_.wrapped()) state = direction_ == Direction::Forward ? kWentOnFromBeginning : kWentOnFromEnd;
    view_.showState(state, false);
}

void FindPresenter::stop() {
    if (!searching_) return;
    searching_ = false;
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
