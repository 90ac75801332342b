#pragma once
#include <gtest/gtest.h>

#include "folders/fakes/fake_folder_source.h"
#include "folders/fakes/fake_folder_tree_display.h"

namespace tovar::test {

using Texts = std::vector<std::wstring>;
using Reports = std::vector<std::optional<std::wstring>>;

/// A presenter over a computer in memory and a tree that remembers.
class FolderTreeFixture : public testing::Test {
protected:
    FolderTreeFixture() { display.presenter = &tree; }

    FolderNode computer() const { return display.in(display.root(), L"My Computer"); }
    FolderNode drive() const { return display.in(computer(), L"(C:)"); }
    /// The node of a folder below drive C that is shown, by its names from there.
    FolderNode shown(const Texts& names) const {
        FolderNode node = drive();
        for (const std::wstring& name : names) node = display.in(node, name);
        return node;
    }
    std::wstring selectedPath() const { return tree.selectedFolder().value_or(L"(none)"); }

    FakeFolderSource source;
    FakeFolderTreeDisplay display;
    FolderTreePresenter tree{source, display};
};

}  // namespace tovar::test
