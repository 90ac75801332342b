#pragma once
#include <iterator>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "shell/folder_tree_presenter.h"

namespace tovar::test {

/// A tree as a user would see it: every folder once, in the order in which the presenter put it.
class FakeFolderTreeDisplay final : public FolderTreeDisplay {
public:
    FolderTreePresenter* presenter = nullptr;
    FolderNode selectedNode = kNoFolder;
    std::vector<std::optional<std::wstring>> reported;  ///< selected paths, in the order in which they were told
    std::set<FolderNode> expanded;
    int depth = 0, painted = 0;

    /// Opens a folder as a user does.
    bool userExpands(FolderNode node) {
        if (!presenter->onExpanding(node)) return false;
        expanded.insert(node);
        return true;
    }
    void userCollapses(FolderNode node) {
        presenter->onCollapsing(node);
        expanded.erase(node);
    }
    void userSelects(FolderNode node) { select(node); }

    [[nodiscard]] FolderNode root() const { return children_.at(kNoFolder).front(); }
    [[nodiscard]] std::vector<std::wstring> namesIn(FolderNode node) const {
        std::vector<std::wstring> names;
        if (!children_.contains(node)) return names;
        for (const FolderNode child : children_.at(node)) names.push_back(presenter->name(child));
        return names;
    }
    /// @return kNoFolder when there is none of that name
    [[nodiscard]] FolderNode in(FolderNode node, const std::wstring& name) const {
        if (!children_.contains(node)) return kNoFolder;
        for (const FolderNode child : children_.at(node)) {
            if (presenter->name(child) == name) return child;
        }
        return kNoFolder;
    }

    void insert(FolderNode node, FolderNode parent, FolderNode after) override {
        auto& siblings = children_[parent];
        const auto place = after == kNoFolder ? siblings.begin() : std::next(places_.at(after).second);
        places_[node] = {parent, siblings.insert(place, node)};
    }
    void remove(FolderNode node) override {
        const auto [parent, place] = places_.at(node);
        children_[parent].erase(place);
        expanded.erase(node);
    }
    void update(FolderNode) override {}
    void expand(FolderNode node) override {
        if (presenter->onExpanding(node)) expanded.insert(node);
    }
    void select(FolderNode node) override {
        selectedNode = node;
        presenter->onSelected(node);
    }
    void beginChange() override { ++depth; }
    void endChange() override {
        --depth;
        ++painted;
    }
    void selectionChanged() override {
        if (depth != 0) reported.push_back(L"within a change");
        reported.push_back(presenter->selectedFolder());
    }

private:
    using Siblings = std::list<FolderNode>;

    std::map<FolderNode, Siblings> children_;
    std::map<FolderNode, std::pair<FolderNode, Siblings::iterator>> places_;  ///< with the parent
};

}  // namespace tovar::test
