#include "shell/folder_tree_presenter.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "shell/letter_case.h"
#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr wchar_t kSeparator = L'\\';

void goDown(std::wstring& path, std::wstring_view name) {
    if (!path.ends_with(kSeparator)) path += kSeparator;
    path += name;
}

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

/// One change of what is shown, painted when it ends.
class FolderTreePresenter::Change {
public:
    explicit Change(FolderTreePresenter& tree) : tree_(tree) {
        if (tree_.changes_++ == 0) tree_.display_.beginChange();
    }
    ~Change() {
        if (--tree_.changes_ == 0) tree_.display_.endChange();
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

private:
    FolderTreePresenter& tree_;
};

void FolderTreePresenter::start() {
    for (const auto& [number, node] : nodes_) source_.unwatch(number);
    nodes_.clear();
    walk_.reset();
    desktop_ = computer_ = selected_ = kNoFolder;
    const Change change(*this);
    desktop_ = addPlace(Kind::Desktop, kNoFolder, kNoFolder, source_.desktop());
    std::vector<FolderNode> places;
    FolderPlace documents = source_.documents();
    if (!documents.path.empty()) {
        places.push_back(addPlace(Kind::Place, desktop_, kNoFolder, std::move(documents)));
    }
    computer_ = addPlace(Kind::Computer, desktop_, places.empty() ? kNoFolder : places.back(), source_.computer());
    places.push_back(computer_);
    nodes_.at(desktop_).children = std::move(places);
    load(desktop_);
    load(computer_);
    display_.expand(desktop_);
    display_.expand(computer_);
}

FolderNode FolderTreePresenter::add(FolderNode parent, FolderNode after, Node node) {
    const FolderNode number = next_++;
    node.parent = parent;
    nodes_.emplace(number, std::move(node));
    display_.insert(number, parent, after);
    return number;
}

FolderNode FolderTreePresenter::addPlace(Kind kind, FolderNode parent, FolderNode after, FolderPlace place) {
    Node node;
    node.kind = kind;
    node.name = std::move(place.name);
    node.path = std::move(place.path);
    node.icon = place.icon;
    return add(parent, after, std::move(node));
}

FolderNode FolderTreePresenter::addKept(FolderNode parent, Node node) {
    const Change change(*this);
    node.kept = true;
    std::vector<FolderNode> children = at(parent).children;
    const FolderNode added = add(parent, children.empty() ? kNoFolder : children.back(), std::move(node));
    children.push_back(added);
    childrenAre(parent, std::move(children));
    return added;
}

std::optional<std::wstring> FolderTreePresenter::selectedFolder() const {
    std::wstring folder = path(selected_);
    return folder.empty() ? std::nullopt : std::optional(std::move(folder));
}

std::wstring FolderTreePresenter::path(FolderNode node) const {
    std::vector<const std::wstring*> names;
    auto found = nodes_.find(node);
    for (; found != nodes_.end() && found->second.kind == Kind::Inside; found = nodes_.find(found->second.parent)) {
        names.push_back(&found->second.name);
    }
    if (found == nodes_.end()) return {};
    std::wstring path = found->second.path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) goDown(path, **name);
    return path;
}

bool FolderTreePresenter::mayHaveFolders(FolderNode node) {
    Node& asked = nodes_.at(node);
    if (!asked.mayHaveFolders) {
        asked.mayHaveFolders = asked.kind == Kind::Computer || source_.mayHaveFolders(path(node));
    }
    return *asked.mayHaveFolders;
}

/// @return whether the folders inside are known now
bool FolderTreePresenter::load(FolderNode node) {
    if (at(node).loaded) return true;
    if (at(node).kind == Kind::Computer) {
        nodes_.at(node).loaded = true;
        source_.watchDrives(node);
        mergeDrives();
        return true;
    }
    if (!at(node).reading) look(node);
    return at(node).loaded;
}

void FolderTreePresenter::look(FolderNode node) {
    nodes_.at(node).reading = true;
    if (std::optional<FolderLook> found = source_.lookInto(node, path(node))) {
        onLook(node, std::move(*found));
    } else {
        display_.update(node);
        if (node == selected_) selectionChanged_ = true;
    }
}

/// A folder that was looked into before may be gone afterwards.
void FolderTreePresenter::onLook(FolderNode node, FolderLook look) {
    Node& seen = nodes_.at(node);
    seen.reading = false;
    seen.missing = !look.exists;
    const bool listed = look.error == 0;
    if (listed || seen.loaded) {
        if (!listed && !look.exists) {
            leave(node);
        } else {
            seen.loaded = true;
            mergeFolders(node, std::move(look.folders));
        }
        return;
    }
    if (node != selected_) source_.unwatch(node);
    // A drive can be tried again: its disk may lie in it then.
    seen.mayHaveFolders = seen.kind == Kind::Drive || !seen.children.empty();
    display_.update(node);
}

void FolderTreePresenter::onLateLook(FolderNode node, FolderLook look) {
    const auto found = nodes_.find(node);
    if (found == nodes_.end() || !found->second.reading) return;
    const bool opens = std::exchange(found->second.openWhenRead, false);
    const bool again = std::exchange(found->second.readAgain, false);
    if (node == selected_) selectionChanged_ = true;
    onLook(node, std::move(look));
    if (!nodes_.contains(node)) return;
    display_.update(node);
    if (opens && !at(node).children.empty()) display_.expand(node);
    if (again) reload(node);
}

void FolderTreePresenter::reload(FolderNode node) {
    const Node& known = at(node);
    if (known.kind == Kind::Computer) {
        mergeDrives();
        return;
    }
    if (known.reading) {
        nodes_.at(node).readAgain = true;
    } else if (known.loaded) {
        look(node);
    } else {
        nodes_.at(node).mayHaveFolders = !known.children.empty() || source_.mayHaveFolders(path(node));
        display_.update(node);
    }
}

/// A folder that was looked into is there no more.
void FolderTreePresenter::leave(FolderNode node) {
    const Change change(*this);
    if (at(node).kind == Kind::Inside) {
        removeNode(node);
        return;
    }
    mergeFolders(node, {});
    Node& left = nodes_.at(node);
    if (left.kind != Kind::Drive) return;
    left.loaded = false;
    left.mayHaveFolders.reset();
    source_.unwatch(node);
    display_.update(node);
}

void FolderTreePresenter::removeNode(FolderNode node) {
    const FolderNode parent = at(node).parent;
    std::vector<FolderNode> children = at(parent).children;
    forget(node);
    std::erase(children, node);
    childrenAre(parent, std::move(children));
}

void FolderTreePresenter::mergeFolders(FolderNode node, std::vector<SubFolder> folders) {
    const Change change(*this);
    std::vector<FolderNode> children;
    std::unordered_map<std::wstring, FolderNode> known;
    for (const FolderNode child : at(node).children) {
        if (at(child).kind == Kind::Inside) {
            known.emplace(at(child).name, child);
        } else {
            children.push_back(child);
        }
    }
    findRenamed(folders, known);
    for (SubFolder& folder : folders) {
        FolderNode child = kNoFolder;
        if (const auto found = known.find(folder.name); found != known.end()) {
            child = found->second;
            known.erase(found);
            Node& stays = nodes_.at(child);
            stays.kept = false;
            stays.created = folder.created;
            const bool looksOther = stays.hidden != folder.hidden || stays.customised != folder.customised;
            stays.hidden = folder.hidden;
            stays.customised = folder.customised;
            if (looksOther) display_.update(child);
        } else {
            Node fresh;
            fresh.name = std::move(folder.name);
            fresh.hidden = folder.hidden;
            fresh.customised = folder.customised;
            fresh.created = folder.created;
            child = add(node, children.empty() ? kNoFolder : children.back(), std::move(fresh));
        }
        children.push_back(child);
    }
    // From the last one up: a tree moves what stands below each one that goes.
    const std::vector<FolderNode> before = at(node).children;
    std::vector<FolderNode> kept;
    for (auto child = before.rbegin(); child != before.rend(); ++child) {
        const auto left = known.find(at(*child).name);
        if (left == known.end() || left->second != *child) continue;
        if (at(*child).kept && source_.isFolder(path(*child))) {
            kept.push_back(*child);
        } else {
            forget(*child);
        }
    }
    children.insert(children.end(), kept.rbegin(), kept.rend());
    childrenAre(node, std::move(children));
}

/// A folder that is gone and a new one that was made at the same moment are one that has got another name: it keeps
/// what is open and selected inside.
void FolderTreePresenter::findRenamed(const std::vector<SubFolder>& folders,
                                      std::unordered_map<std::wstring, FolderNode>& known) {
    struct Candidate {
        const SubFolder* now = nullptr;
        FolderNode before = kNoFolder;
        bool ambiguous = false;
    };
    std::unordered_map<std::uint64_t, Candidate> candidates;
    std::unordered_set<std::wstring_view> listed;
    for (const SubFolder& folder : folders) {
        listed.insert(folder.name);
        if (folder.created == 0 || known.contains(folder.name)) continue;
        Candidate& candidate = candidates[folder.created];
        candidate.ambiguous |= candidate.now != nullptr;
        candidate.now = &folder;
    }
    if (candidates.empty()) return;
    for (const auto& [name, child] : known) {
        const auto candidate = candidates.find(at(child).created);
        if (candidate == candidates.end() || listed.contains(name)) continue;
        candidate->second.ambiguous |= candidate->second.before != kNoFolder;
        candidate->second.before = child;
    }
    for (const auto& [created, candidate] : candidates) {
        if (candidate.ambiguous || candidate.before == kNoFolder) continue;
        Node& renamed = nodes_.at(candidate.before);
        known.erase(renamed.name);
        renamed.name = candidate.now->name;
        known.emplace(renamed.name, candidate.before);
        display_.update(candidate.before);
        if (isInside(selected_, candidate.before)) selectionChanged_ = true;
    }
}

void FolderTreePresenter::mergeDrives() {
    const Change change(*this);
    std::unordered_map<std::wstring, FolderNode> known;
    for (const FolderNode child : at(computer_).children) known.emplace(foldCase(at(child).path), child);
    std::vector<FolderNode> children;
    for (FolderPlace& drive : source_.drives()) {
        FolderNode child = kNoFolder;
        if (const auto found = known.find(foldCase(drive.path)); found != known.end()) {
            child = found->second;
            known.erase(found);
            Node& stays = nodes_.at(child);
            stays.kept = false;
            stays.icon = drive.icon;
            if (std::exchange(stays.name, std::move(drive.name)) != stays.name) display_.update(child);
        } else {
            const FolderNode after = children.empty() ? kNoFolder : children.back();
            child = addPlace(Kind::Drive, computer_, after, std::move(drive));
        }
        children.push_back(child);
    }
    for (const auto& [path, child] : known) {
        if (at(child).kept) {
            children.push_back(child);
        } else {
            forget(child);
        }
    }
    childrenAre(computer_, std::move(children));
}

/// Takes a node away with all inside it. Its parent's children are the caller's business.
void FolderTreePresenter::forget(FolderNode node) {
    const FolderNode parent = at(node).parent;
    if (walk_ && isInside(walk_->node, node)) walk_ = Walk{parent, {}, true, true};  // nearer there is nothing
    if (isInside(selected_, node)) {
        const std::optional<Walk> walk = walk_;
        display_.select(parent);
        walk_ = walk;
    }
    display_.remove(node);
    std::vector<FolderNode> gone{node};
    while (!gone.empty()) {
        const FolderNode each = gone.back();
        gone.pop_back();
        const auto found = nodes_.find(each);
        if (found == nodes_.end()) continue;
        gone.insert(gone.end(), found->second.children.begin(), found->second.children.end());
        if (found->second.loaded || found->second.reading) source_.unwatch(each);
        nodes_.erase(found);
    }
}

void FolderTreePresenter::childrenAre(FolderNode node, std::vector<FolderNode> children) {
    Node& parent = nodes_.at(node);
    parent.children = std::move(children);
    const bool may = !parent.children.empty();
    if (parent.mayHaveFolders == may) return;
    parent.mayHaveFolders = may;
    display_.update(node);
}

bool FolderTreePresenter::isInside(FolderNode node, FolderNode above) const {
    auto found = nodes_.find(node);
    for (; found != nodes_.end() && found->first != above; found = nodes_.find(found->second.parent)) {
    }
    return found != nodes_.end();
}

bool FolderTreePresenter::onExpanding(FolderNode node) {
    load(node);
    const bool hasFolders = !at(node).children.empty();
    nodes_.at(node).openWhenRead = !hasFolders && at(node).reading;
    tellSelection();
    return hasFolders;
}

// Said here, because not every tree tells that a selection inside moves to the folder that is closed over it.
void FolderTreePresenter::onCollapsing(FolderNode node) {
    if (node != selected_ && isInside(selected_, node)) display_.select(node);
}

void FolderTreePresenter::onSelected(FolderNode node) {
    walk_.reset();
    if (node == selected_) return;
    const auto before = nodes_.find(selected_);
    if (before != nodes_.end() && !before->second.loaded && !before->second.reading) source_.unwatch(selected_);
    selected_ = node;
    // The first folder made in the selected one is to be seen, also while it has not been opened.
    const auto now = nodes_.find(node);
    if (now != nodes_.end() && !now->second.loaded && !now->second.reading) {
        const std::wstring folder = path(node);
        if (!folder.empty() && source_.isSlow(folder)) {
            look(node);  // to learn whether it is there
        } else {
            source_.watchFolder(node, folder);
        }
    }
    selectionChanged_ = true;
    tellSelection();
}

// Not in the middle of a change: who hears of it may change the tree himself.
void FolderTreePresenter::tellSelection() {
    if (changes_ == 0 && std::exchange(selectionChanged_, false)) display_.selectionChanged();
}

void FolderTreePresenter::onTick() {
    for (FolderSource::LateLook& late : source_.takeLate()) onLateLook(late.key, std::move(late.look));
    if (walk_ && !at(walk_->node).reading) walkOn();
    for (const FolderNode changed : source_.takeChanges()) {
        if (nodes_.contains(changed)) reload(changed);
    }
    tellSelection();
}

void FolderTreePresenter::refresh() {
    std::vector<FolderNode> loaded;
    for (auto& [number, node] : nodes_) {
        if (node.loaded) {
            loaded.push_back(number);
        } else if (node.children.empty()) {
            node.mayHaveFolders.reset();
        }
    }
    // Those above have the lower numbers: what has gone with one of them is not asked any more.
    std::sort(loaded.begin(), loaded.end());
    {
        const Change change(*this);
        for (const FolderNode node : loaded) {
            if (nodes_.contains(node)) reload(node);
        }
    }
    tellSelection();
}

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

/// Goes down as far as is known.
/// @return false when there is no such folder
bool FolderTreePresenter::walkOn() {
    bool found = true;
    FolderNode node = kNoFolder;
    {
        const Change change(*this);
        bool waits = false;
        while (found && !walk_->names.empty()) {
            waits = askForWalk();
            if (waits) break;
            const FolderNode next = childFor(walk_->node, walk_->names.front(), walk_->asked);
            found = next != kNoFolder;
            if (!found) break;
            walk_->node = next;
            walk_->asked = false;
            walk_->names.pop_front();
        }
        waits = waits || (found && isUnproven(walk_->node) && askForWalk());
        if (waits) {
            walk_->told = selectionChanged_ = true;
        } else {
            node = walk_->node;
        }
    }
    if (node == kNoFolder) {
        tellSelection();
        return true;
    }
    if (walk_->told) selectionChanged_ = true;  // as one that is being read
    walk_.reset();
    {
        const Change change(*this);
        while (at(node).kept && at(node).missing) {
            found = false;
            const FolderNode missing = std::exchange(node, at(node).parent);
            const bool isPlace = at(missing).kind == Kind::Drive;
            removeNode(missing);
            if (isPlace) break;
        }
        std::vector<FolderNode> way;
        for (FolderNode above = at(node).parent; above != kNoFolder; above = at(above).parent) way.push_back(above);
        for (auto above = way.rbegin(); above != way.rend(); ++above) display_.expand(*above);
    }
    // The computer itself is nearer to nothing.
    if (node != computer_) display_.select(node);
    tellSelection();
    return found;
}

FolderState FolderTreePresenter::selectedState() const {
    if (walk_) return FolderState::Reading;
    const auto found = nodes_.find(selected_);
    if (found == nodes_.end() || found->second.missing) return FolderState::Missing;
    return isReading(selected_) ? FolderState::Reading : FolderState::There;
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
    std::wstring wanted = path(node);
    goDown(wanted, name);
    if (name == L"." || name == L".." || !source_.isFolder(wanted)) return kNoFolder;
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
