#include "shell/folder_tree_presenter.h"

#include <utility>

#include "shell/letter_case.h"
#include "shell/paths.h"
#include "shell/text_split.h"

// The way down to a folder that is to be selected.
namespace tovar {
namespace {

constexpr wchar_t kSeparator = L'\\';

/// @return what follows a folder's path in that of one inside it, or in its own; nullopt for any other path
std::optional<std::wstring_view> restBelow(std::wstring_view path, std::wstring_view folder) {
    const bool isRoot = folder.ends_with(kSeparator);
    if (folder.empty() || path.size() < folder.size()) return std::nullopt;
    if (foldCase(path.substr(0, folder.size())) != foldCase(folder)) return std::nullopt;
    const std::wstring_view rest = path.substr(folder.size());
    return rest.empty() || isRoot || rest.front() == kSeparator ? std::optional(rest) : std::nullopt;
}

/// @return "C:\" or "\\server\share"; empty for a path that begins with neither
std::wstring rootOf(const std::wstring& path) {
    if (HasDriveRoot(path)) return path.substr(0, 3);
    if (!IsUncPath(path)) return {};
    const std::size_t server = path.find(kSeparator, 2);
    if (server == path.npos || server + 1 >= path.size()) return {};
    return path.substr(0, path.find(kSeparator, server + 1));
}

}  // namespace

bool FolderTreePresenter::selectFolder(std::wstring_view path) {
    const std::wstring wanted = StripTrailingSeparator(path);
    walk_.reset();
    const FolderNode place = placeFor(wanted);
    if (place == kNoFolder) return false;
    Walk walk;
    walk.node = place;
    const auto rest = restBelow(wanted, at(place).path).value_or(std::wstring_view());
    for (const std::wstring_view name : splitText(rest, LR"(\)")) {
        if (!name.empty()) walk.names.emplace_back(name);
    }
    walk_ = std::move(walk);
    return walkOn();
}

/// Goes down as far as is known.
/// @return false when there is no such folder
bool FolderTreePresenter::walkOn() {
    bool found = true, waits = false;
    {
        const Change change(*this);
        while (found && !waits && !walk_->names.empty()) {
            waits = askForWalk();
            if (!waits) found = stepDown();
        }
        waits = waits || (found && isUnproven(walk_->node) && askForWalk());
    }
    if (waits) walk_->told = true;
    if (walk_->told) selectionChanged_ = true;  // as one that is being read, or was until now
    if (waits) {
        tellSelection();
        return true;
    }
    const FolderNode reached = walk_->node;
    walk_.reset();
    FolderNode node = kNoFolder;
    {
        const Change change(*this);
        node = removeMissing(reached);
        openWayTo(node);
    }
    // The computer itself is nearer to nothing.
    if (node != computer_) display_.select(node);
    tellSelection();
    return found && node == reached;
}

/// A folder that is shown only because somebody named it, where asking whether it is there takes long.
bool FolderTreePresenter::isUnproven(FolderNode node) const {
    const Node& known = at(node);
    return known.kept && !known.loaded && source_.isSlow(path(node));
}

/// @return whether the answer takes long
bool FolderTreePresenter::askForWalk() {
    const FolderNode node = walk_->node;
    if (!at(node).loaded && !walk_->asked) {
        walk_->asked = true;
        load(node);
    }
    return !at(node).loaded && at(node).reading;
}

/// @return false when there is no folder of the next name
bool FolderTreePresenter::stepDown() {
    const FolderNode next = childFor(walk_->node, walk_->names.front(), walk_->asked);
    if (next == kNoFolder) return false;
    walk_->node = next;
    walk_->asked = false;
    walk_->names.pop_front();
    return true;
}

/// Takes away a folder that was shown because it was to be selected, and those above it, where none of them is there.
/// @return the nearest one that stays
FolderNode FolderTreePresenter::removeMissing(FolderNode node) {
    while (at(node).kept && at(node).missing) {
        const FolderNode missing = std::exchange(node, at(node).parent);
        const bool isPlace = at(missing).kind == Kind::Drive;
        removeNode(missing);
        if (isPlace) break;
    }
    return node;
}

void FolderTreePresenter::openWayTo(FolderNode node) {
    std::vector<FolderNode> way;
    for (FolderNode above = at(node).parent; above != kNoFolder; above = at(above).parent) way.push_back(above);
    for (auto above = way.rbegin(); above != way.rend(); ++above) display_.expand(*above);
}

/// @return the place whose folder lies nearest above the path, or is the path's own; kNoFolder when there is none
FolderNode FolderTreePresenter::placeFor(const std::wstring& path) {
    FolderNode nearest = kNoFolder;
    const auto consider = [&](FolderNode node) {
        if (!restBelow(path, at(node).path)) return;
        if (nearest == kNoFolder || at(node).path.size() > at(nearest).path.size()) nearest = node;
    };
    if (desktop_ == kNoFolder) return kNoFolder;
    consider(desktop_);
    for (const FolderNode place : at(desktop_).children) consider(place);
    for (const FolderNode drive : at(computer_).children) consider(drive);
    if (nearest != kNoFolder) return nearest;
    // A share of the network, or a drive that the desktop does not show.
    Node place;
    place.kind = Kind::Drive;
    place.name = place.path = rootOf(path);
    if (place.path.empty() || !source_.isFolder(place.path)) return kNoFolder;
    return addKept(computer_, std::move(place));
}

/// @return the folder of that name inside another one; kNoFolder when there is none
/// @param justLooked  whether what is known of the folder is new
FolderNode FolderTreePresenter::childFor(FolderNode node, const std::wstring& name, bool justLooked) {
    if (const FolderNode child = knownChild(node, name); child != kNoFolder) return child;
    if (!at(node).loaded && at(node).missing) return kNoFolder;
    if (name == L"." || name == L".." || !source_.isFolder(pathInside(node, name))) return kNoFolder;
    if (!justLooked) {
        // Made a moment ago.
        reload(node);
        if (!nodes_.contains(node)) return kNoFolder;
        if (const FolderNode child = knownChild(node, name); child != kNoFolder) return child;
    }
    Node hidden;
    hidden.name = name;
    hidden.hidden = true;
    return addKept(node, std::move(hidden));
}

FolderNode FolderTreePresenter::knownChild(FolderNode node, const std::wstring& name) const {
    const std::wstring folded = foldCase(name);
    FolderNode like = kNoFolder;
    for (const FolderNode child : at(node).children) {
        if (at(child).kind != Kind::Inside) continue;
        if (at(child).name == name) return child;
        if (like == kNoFolder && foldCase(at(child).name) == folded) like = child;
    }
    return like;
}

}  // namespace tovar
