#include "browser/member_search.h"

#include <algorithm>

namespace tovar {
namespace {

constexpr std::uint64_t kCharactersPerUnit = 64;

}  // namespace

void MemberSearch::begin(std::wstring_view text, MemberPlace gap, Direction direction) {
    gap.item = std::min(gap.item, itemCount(gap.folder));
    pattern_ = NamePattern(text);
    direction_ = direction;
    start_ = next_ = gap;
    lastRound_ = false;
    wrapped_ = false;
    units_ = 0;
}

MemberSearch::Outcome MemberSearch::step(std::uint64_t units) {
    if (pattern_.empty()) return Outcome::NotFound;
    for (const std::uint64_t limit = units_ + units; units_ < limit;) {
        ++units_;
        if (atEndOfFolder()) {
            if (lastRound_) return Outcome::NotFound;
            enterNextFolder();
            continue;
        }
        const std::uint32_t item = takeItem();
        std::uint64_t charactersRead = 0;
        const bool matches = pattern_.matches(nameOf(item), charactersRead);
        units_ += charactersRead / kCharactersPerUnit;
        if (!matches) continue;
        found_ = {next_.folder, item};
        return Outcome::Found;
    }
    return Outcome::Searching;
}

std::uint32_t MemberSearch::itemCount(Folder folder) const {
    return static_cast<std::uint32_t>(folders_.children(folder).size() + folders_.files(folder).size());
}

CompactText MemberSearch::nameOf(std::uint32_t item) const {
    const auto subfolders = folders_.children(next_.folder);
    if (item < subfolders.size()) return folders_.text(subfolders[item]);
    return entries_.name(folders_.files(next_.folder)[item - subfolders.size()]);
}

bool MemberSearch::atEndOfFolder() const {
    if (direction_ == Direction::Forward) {
        return next_.item == (lastRound_ ? start_.item : itemCount(next_.folder));
    }
    return next_.item == (lastRound_ ? start_.item : 0);
}

std::uint32_t MemberSearch::takeItem() { return direction_ == Direction::Forward ? next_.item++ : --next_.item; }

void MemberSearch::enterNextFolder() {
    const bool forward = direction_ == Direction::Forward;
    next_.folder = forward ? folderAfter(next_.folder) : folderBefore(next_.folder);
    next_.item = forward ? 0 : itemCount(next_.folder);
    lastRound_ = next_.folder == start_.folder;
}

// Folders bear their numbers in the order in which they stand among their like, so a folder's place is found by halves.
Folder MemberSearch::folderAfter(Folder folder) {
    if (const auto inside = folders_.children(folder); !inside.empty()) return inside.front();
    for (auto above = folders_.parent(folder); above; above = folders_.parent(folder)) {
        const auto alike = folders_.children(*above);
        const auto next = std::ranges::upper_bound(alike, folder);
        if (next != alike.end()) return *next;
        folder = *above;
        ++units_;
    }
    wrapped_ = true;
    return FolderModel::kRoot;
}

Folder MemberSearch::folderBefore(Folder folder) {
    Folder last = FolderModel::kRoot;
    if (const auto above = folders_.parent(folder)) {
        const auto alike = folders_.children(*above);
        const auto place = std::ranges::lower_bound(alike, folder);
        if (place == alike.begin()) return *above;
        last = *(place - 1);
    } else {
        wrapped_ = true;
    }
    for (auto inside = folders_.children(last); !inside.empty(); inside = folders_.children(last)) {
        last = inside.back();
        ++units_;
    }
    return last;
}

}  // namespace tovar
