#pragma once
#include <optional>
#include <string>
#include <vector>

#include "browser/browser_view.h"

namespace tovar::test {

/// Remembers what a user would see.
class FakeBrowserView final : public BrowserView {
public:
    WindowHandle window = this;
    std::wstring title, status;
    std::optional<Folder> selected;
    std::vector<Folder> expanded;
    std::vector<std::wstring> addresses;  ///< the history
    std::wstring address;
    bool goUpEnabled = true;
    int timesCleared = 0, timesFoldersShown = 0, timesContentsShown = 0, timesCaretMoved = 0;
    std::vector<std::uint32_t> newRows;

    [[nodiscard]] WindowHandle hWnd() const override { return window; }
    void setTitle(std::wstring_view text) override { title = text; }
    void clear() override {
        ++timesCleared;
        selected.reset();
        expanded.clear();
    }
    void showFolders() override { ++timesFoldersShown; }
    void selectFolder(Folder folder, bool expand) override {
        selected = folder;
        if (expand) expanded.push_back(folder);
    }
    void showContents() override { ++timesContentsShown; }
    void moveRows(std::span<const std::uint32_t> rows) override { newRows.assign(rows.begin(), rows.end()); }
    void addAddress(std::wstring_view text) override { addresses.emplace_back(text); }
    void chooseAddress(std::size_t index) override { address = addresses.at(index); }
    void moveAddressCaretToEnd() override { ++timesCaretMoved; }
    void enableGoUp(bool enabled) override { goUpEnabled = enabled; }
    void setStatus(std::wstring_view text) override { status = text; }
};

}  // namespace tovar::test
