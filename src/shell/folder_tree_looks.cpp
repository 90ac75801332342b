#include "shell/folder_tree_presenter.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "shell/letter_case.h"

// What the looks into folders find, and how the tree follows it.
namespace tovar {

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
    KnownFolders known;
    for (const FolderNode child : at(node).children) {
        if (at(child).kind == Kind::Inside) {
            known.emplace(at(child).name, child);
        } else {
            children.push_back(child);
        }
    }
    findRenamed(folders, known);
    for (SubFolder& folder : folders) {
        if (const auto found = known.find(folder.name); found != known.end()) {
            children.push_back(found->second);
            known.erase(found);
            mergeFolder(children.back(), folder);
        } else {
            Node fresh;
            fresh.name = std::move(folder.name);
            fresh.hidden = folder.hidden;
            fresh.customised = folder.customised;
            fresh.created = folder.created;
            children.push_back(add(node, children.empty() ? kNoFolder : children.back(), std::move(fresh)));
        }
    }
    const std::vector<FolderNode> kept = forgetUnlisted(node, known);
    children.insert(children.end(), kept.begin(), kept.end());
    childrenAre(node, std::move(children));
}

void FolderTreePresenter::mergeFolder(FolderNode node, const SubFolder& folder) {
    Node& stays = nodes_.at(node);
    stays.kept = false;
    stays.created = folder.created;
    const bool looksOther = stays.hidden != folder.hidden || stays.customised != folder.customised;
    stays.hidden = folder.hidden;
    stays.customised = folder.customised;
    if (looksOther) display_.update(node);
}

/// Takes away the folders that are listed no more, but for those that were to be selected and are there all the same.
/// @param unlisted  by their names
/// @return those that stay
std::vector<FolderNode> FolderTreePresenter::forgetUnlisted(FolderNode node, const KnownFolders& unlisted) {
    std::vector<FolderNode> kept;
    // From the last one up: a tree moves what stands below each one that goes.
    const std::vector<FolderNode> before = at(node).children;
    for (auto child = before.rbegin(); child != before.rend(); ++child) {
        const auto left = unlisted.find(at(*child).name);
        if (left == unlisted.end() || left->second != *child) continue;
        if (at(*child).kept && source_.isFolder(path(*child))) {
            kept.push_back(*child);
        } else {
            forget(*child);
        }
    }
    std::reverse(kept.begin(), kept.end());
    return kept;
}

/// A folder that is gone and a new one that was made at the same moment are one that has got another name: it keeps
/// what is open and selected inside.
void FolderTreePresenter::findRenamed(const std::vector<SubFolder>& folders, KnownFolders& known) {
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

}  // namespace tovar
