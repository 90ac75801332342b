#include "shell/folder_tree_presenter.h"

#include <algorithm>
#include <utility>

namespace tovar {
namespace {

constexpr wchar_t kSeparator = L'\\';

void goDown(std::wstring& path, std::wstring_view name) {
    if (!path.ends_with(kSeparator)) path += kSeparator;
    path += name;
}

}  // namespace

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

std::wstring FolderTreePresenter::pathInside(FolderNode node, std::wstring_view name) const {
    std::wstring inside = path(node);
    goDown(inside, name);
    return inside;
}

bool FolderTreePresenter::mayHaveFolders(FolderNode node) {
    Node& asked = nodes_.at(node);
    if (!asked.mayHaveFolders) {
        asked.mayHaveFolders = asked.kind == Kind::Computer || source_.mayHaveFolders(path(node));
    }
    return *asked.mayHaveFolders;
}

FolderState FolderTreePresenter::selectedState() const {
    if (walk_) return FolderState::Reading;
    const auto found = nodes_.find(selected_);
    if (found == nodes_.end() || found->second.missing) return FolderState::Missing;
    return isReading(selected_) ? FolderState::Reading : FolderState::There;
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

}  // namespace tovar
