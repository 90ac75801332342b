#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "browser/unpack_view.h"

namespace tovar::test {

/// Remembers what a user would see of the extraction dialog.
class FakeUnpackView final : public UnpackView {
public:
    std::wstring caption, pattern, folder;
    bool overwrite = false, keepFolders = false;
    bool overwriteEnabled = true, selectedEnabled = true, patternEnabled = true;
    bool okEnabled = true, newFolderEnabled = true, hidden = false, closed = false;
    MemberScope scope = MemberScope::Matching;
    std::vector<std::wstring> shownInTree;
    std::vector<std::wstring> parents;  ///< folders that New Folder was for
    std::wstring newFolder;             ///< what the user makes there
    std::function<void(const std::wstring&)> onTree;
    std::function<std::optional<bool>(const std::wstring&)> onAsked;

    [[nodiscard]] WindowHandle hWnd() const override { return const_cast<FakeUnpackView*>(this); }
    void setCaption(std::wstring_view text) override { caption = text; }
    void check(bool over, bool keep) override {
        overwrite = over;
        keepFolders = keep;
    }
    void enableOverwrite(bool enabled) override { overwriteEnabled = enabled; }
    void choose(MemberScope chosen) override { scope = chosen; }
    void enableSelected(bool enabled) override { selectedEnabled = enabled; }
    void setPattern(std::wstring_view text) override { pattern = text; }
    void enablePattern(bool enabled) override { patternEnabled = enabled; }
    void showInTree(const std::wstring& path) override {
        shownInTree.push_back(path);
        if (onTree) onTree(path);
    }
    void showFolder(std::wstring_view path) override { folder = path; }
    void enableOk(bool enabled) override { okEnabled = enabled; }
    void enableNewFolder(bool enabled) override { newFolderEnabled = enabled; }
    [[nodiscard]] std::optional<bool> askForFolder(const std::wstring& path) override {
        return onAsked ? onAsked(path) : true;
    }
    [[nodiscard]] std::wstring promptNewFolder(std::wstring& parent) override {
        parent += L'\\';
        parents.push_back(parent);
        return newFolder;
    }
    void hide() override { hidden = true; }
    void close() override { closed = true; }
};

}  // namespace tovar::test
