#include "browser_walks/walk_model.h"

#include <algorithm>
#include <numeric>

namespace tovar::test {
namespace {

constexpr wchar_t kArchiveName[] = L"a.zip";
constexpr const wchar_t* kNonsense[] = {L"nowhere", L"a.zip\\nowhere\\",     L"   ", L"\\\\?\\", L"b.zip\\a\\", L":",
                                        L"..\\",    L"a.zip\\a\\\\nowhere\\"};

std::size_t digits(std::size_t number) { return number < 10 ? 1 : 1 + digits(number / 10); }

std::wstring written(std::size_t number) {
    std::wstring text(digits(number), L'0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number /= 10) {
        *digit = static_cast<wchar_t>(L'0' + number % 10);
    }
    return text;
}

std::wstring otherCase(std::wstring text) {
    for (wchar_t& letter : text) {
        if (letter >= L'a' && letter <= L'z') {
            letter = static_cast<wchar_t>(letter - L'a' + L'A');
        } else if (letter >= L'A' && letter <= L'Z') {
            letter = static_cast<wchar_t>(letter - L'A' + L'a');
        }
    }
    return text;
}

}  // namespace

WalkModel::WalkModel(Dice& dice, bool changeable) : dice_(dice), changeable_(changeable) {
    next_.grow(dice_, dice_.roll(40));
}

void WalkModel::open() {
    archive_ = next_;
    list();
}

void WalkModel::list() {
    if (!archive_.has(current_)) current_ = L"\\";
    selected_.assign(rowCount(), false);
    show(current_);
    status_ = L"Archive has " + written(archive_.size()) + L" files 4,321 Bytes 01/05/17 17:30:58";
}

void WalkModel::show(const std::wstring& key) {
    if (anySelected()) status_ = L"0 Objects are selected.";
    current_ = key;
    selected_.assign(rowCount(), false);
    const std::wstring address = kArchiveName + key;
    if (std::find(addresses_.begin(), addresses_.end(), address) == addresses_.end()) addresses_.push_back(address);
}

bool WalkModel::anySelected() const { return std::find(selected_.begin(), selected_.end(), true) != selected_.end(); }

void WalkModel::work(const std::wstring& command) {
    work_ = command;
    const std::vector<PlainRow> rows = archive_.rows(current_);
    for (const std::size_t item : order()) {
        if (selected_[item]) work_ += L' ' + rows[item].path;
    }
}

void WalkModel::tellSelection() {
    const auto count = static_cast<std::size_t>(std::count(selected_.begin(), selected_.end(), true));
    status_ = written(count) + L" Objects are selected.";
}

Step WalkModel::choose() {
    const std::size_t rows = rowCount();
    const Texts folders = archive_.folders();
    switch (dice_.roll(18)) {
        case 0:
        case 1:
            return {StepKind::SelectFolder, folders[dice_.roll(folders.size())]};
        case 2: {
            std::wstring key = current_;
            while (key.size() > 1 && dice_.oneIn(2)) key = keyAbove(key);
            return {StepKind::CollapseFolder, key};
        }
        case 3:
            return {StepKind::GoUp};
        case 4:
        case 5:
            return typedAddress();
        case 6:
        case 7:
            return chosenAddress();
        case 8:
        case 9:
            if (style_ < kDetails) return {StepKind::ChangeStyle, {}, kExactDetails};  // there are no headers
            return {StepKind::ClickHeader, {}, dice_.roll(9)};
        case 10:
            return {StepKind::SelectAll};
        case 11:
            return {StepKind::Invert};
        case 12:
            if (dice_.oneIn(2)) {
                next_ = archive_;
                dice_.oneIn(2) ? next_.shrink(dice_) : next_.grow(dice_, dice_.roll(20));
            }
            return {StepKind::Refresh};
        case 13: {
            Step step{StepKind::SelectRows};
            for (std::size_t row = 0; row < rows; ++row) {
                if (dice_.oneIn(3)) step.rows.push_back(row);
            }
            if (!step.rows.empty()) return step;
            return {StepKind::SelectAll};
        }
        case 14:
            return {StepKind::ChangeStyle, {}, dice_.roll(5)};
        case 15:
            return commandStep();
        default:
            if (rows == 0) return {StepKind::GoUp};
            return {StepKind::OpenRow, {}, dice_.roll(rows)};
    }
}

Step WalkModel::commandStep() {
    switch (dice_.roll(4)) {
        case 0:
        case 1: {
            const std::vector<PlainRow> rows = archive_.rows(current_);
            for (std::size_t item = 0; changeable_ && item < rows.size(); ++item) {
                if (selected_[item]) next_.remove(rows[item]);
            }
            return {StepKind::Delete};
        }
        case 2:
            if (changeable_) next_.grow(dice_, 1 + dice_.roll(5));
            return {StepKind::Add};
        default:
            return {StepKind::Extract};
    }
}

std::size_t WalkModel::foldersWritten(const std::wstring& key) const {
    const Texts folders = archive_.folders();
    return static_cast<std::size_t>(std::count_if(folders.begin(), folders.end(), [&](const std::wstring& each) {
        return smallLetters(each) == smallLetters(key);
    }));
}

// Which folder is meant when one has vanished and several others have its letters is no matter of walks.
Step WalkModel::chosenAddress() {
    const std::size_t number = dice_.roll(addresses_.size());
    const std::wstring key = addresses_[number].substr(std::size(kArchiveName) - 1);
    if (archive_.has(key) || foldersWritten(key) < 2) return {StepKind::ChooseAddress, {}, number};
    return {StepKind::GoUp};
}

Step WalkModel::typedAddress() {
    const Texts folders = archive_.folders();
    const std::wstring& key = folders[dice_.roll(folders.size())];
    const bool isOnlyOne = foldersWritten(key) == 1;
    switch (dice_.roll(6)) {
        case 0:
            return {StepKind::TypeAddress, kArchiveName + key};
        case 1:
            return {StepKind::TypeAddress, key};
        case 2:
            if (isOnlyOne) return {StepKind::TypeAddress, kArchiveName + otherCase(key)};
            return {StepKind::TypeAddress, L""};
        case 3:
            if (isOnlyOne && key.size() > 1)
                return {StepKind::TypeAddress, kArchiveName + key.substr(0, key.size() - 1)};
            return {StepKind::TypeAddress, kArchiveName};
        default:
            return {StepKind::TypeAddress, kNonsense[dice_.roll(std::size(kNonsense))]};
    }
}

void WalkModel::apply(const Step& step) {
    const std::vector<std::size_t> rows = order();
    switch (step.kind) {
        case StepKind::SelectFolder:
            if (step.text != current_) show(step.text);
            break;
        case StepKind::CollapseFolder:
            // What is inside a closed folder gives way to it; the root stays open.
            if (step.text != current_ && step.text.size() > 1) show(step.text);
            break;
        case StepKind::OpenRow: {
            const Texts folders = archive_.foldersIn(current_);
            const std::size_t item = rows[step.number];
            if (item < folders.size()) {
                show(current_ + folders[item] + L"\\");
            } else {
                work_ = L"open " + archive_.rows(current_)[item].path;
            }
            break;
        }
        case StepKind::GoUp:
            if (current_.size() > 1) show(keyAbove(current_));
            break;
        case StepKind::TypeAddress:
            enterAddress(step.text);
            break;
        case StepKind::ChooseAddress:
            enterAddress(addresses_[step.number]);
            break;
        case StepKind::ClickHeader:
            sorting_ = Sorting{step.number, !(sorting_ && sorting_->descending)};
            break;
        case StepKind::SelectRows:
            selected_.assign(selected_.size(), false);
            for (const std::size_t row : step.rows) selected_[rows[row]] = true;
            tellSelection();
            break;
        case StepKind::SelectAll:
            if (rows.empty()) break;
            selected_.assign(selected_.size(), true);
            tellSelection();
            break;
        case StepKind::Invert:
            if (rows.empty()) break;
            selected_.flip();
            tellSelection();
            break;
        case StepKind::Refresh:
            archive_ = next_;
            list();
            break;
        case StepKind::ChangeStyle:
            style_ = step.number;
            break;
        case StepKind::Extract:
            work(L"extract");
            break;
        case StepKind::Delete:
            if (!changeable_ || !anySelected()) break;
            work(L"delete");
            archive_ = next_;
            list();
            break;
        case StepKind::Add:
            if (!changeable_) break;
            work_ = L"add " + current_;
            archive_ = next_;
            list();
            break;
    }
}

void WalkModel::enterAddress(const std::wstring& text) {
    if (text.empty()) return;
    const std::wstring name = kArchiveName;
    std::wstring key = text.substr(0, name.size()) == name ? text.substr(name.size()) : text;
    if (key.empty() || key.back() != L'\\') key += L'\\';
    if (smallLetters(key) == smallLetters(current_)) return;
    const Texts folders = archive_.folders();
    auto found = std::find(folders.begin(), folders.end(), key);
    if (found == folders.end()) {
        found = std::find_if(folders.begin(), folders.end(),
                             [&](const std::wstring& each) { return smallLetters(each) == smallLetters(key); });
    }
    if (found != folders.end()) show(*found);
}

std::vector<std::size_t> WalkModel::order() const {
    const std::vector<PlainRow> rows = archive_.rows(current_);
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (!sorting_) return order;
    const std::size_t column = sorting_->column;
    const auto isBefore = [&](const PlainRow& left, const PlainRow& right) {
        if (left.isFolder != right.isFolder) return left.isFolder;
        if (!isExact()) return smallLetters(left.cells[column]) < smallLetters(right.cells[column]);
        if (left.ranks[column] != right.ranks[column]) return left.ranks[column] < right.ranks[column];
        const bool isText = column == 0 || column == 4 || column == 6 || column == 7;
        return isText && smallLetters(left.exactCells[column]) < smallLetters(right.exactCells[column]);
    };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        return sorting_->descending ? isBefore(rows[right], rows[left]) : isBefore(rows[left], rows[right]);
    });
    return order;
}

Seen WalkModel::expected() const {
    Seen seen;
    seen.selectedFolder = current_;
    seen.foldersInTree = archive_.foldersIn(current_);
    seen.rootIsOpen = true;
    const std::vector<PlainRow> rows = archive_.rows(current_);
    for (const std::size_t item : order()) {
        if (selected_[item]) seen.selectedRows.push_back(seen.rows.size());
        seen.rows.push_back(isExact() ? rows[item].exactCells : rows[item].cells);
    }
    if (sorting_) seen.sortedBy = written(sorting_->column) + (sorting_->descending ? L" down" : L" up");
    seen.addresses = addresses_;
    seen.address = kArchiveName + current_;
    seen.status = status_;
    seen.style = style_ == kExactDetails ? kDetails : style_;
    seen.work = work_;
    seen.commands = {{"mnuEdit", true},
                     {"Add", changeable_},
                     {"Extract", true},
                     {"GoUp", current_.size() > 1},
                     {"mnuEditDelete", changeable_ && anySelected()},
                     {"kOpen", anySelected()},
                     {"mnuEditSelectAll", !rows.empty()}};
    return seen;
}

}  // namespace tovar::test
