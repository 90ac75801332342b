#pragma once
#include <algorithm>
#include <map>
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
    std::map<BrowserCommand, bool> enabled;  ///< as it was told last
    ViewStyle style = ViewStyle::Details;
    std::uint32_t rowCount = 0;  ///< what can be selected
    std::vector<std::uint32_t> selection;
    std::optional<std::uint32_t> focus;
    int timesClosed = 0, timesCleared = 0, timesFoldersShown = 0, timesContentsShown = 0, timesCaretMoved = 0;
    std::vector<std::uint32_t> newRows;
    bool watched = false;  ///< the shell
    int timesFinishing = 0;
    std::vector<std::uint32_t> shownRows;  ///< brought in sight, one after the other

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
    void showRow(std::uint32_t row) override {
        selection = {row};
        focus = row;
        shownRows.push_back(row);
    }
    void addAddress(std::wstring_view text) override { addresses.emplace_back(text); }
    void chooseAddress(std::size_t index) override { address = addresses.at(index); }
    void moveAddressCaretToEnd() override { ++timesCaretMoved; }
    void setViewStyle(ViewStyle newStyle) override { style = newStyle; }
    std::uint32_t selectAll(Breather* breather) override {
        selection.clear();
        return invertSelection(breather);
    }
    std::uint32_t invertSelection(Breather* breather) override {
        std::vector<bool> formerly(rowCount);
        for (const std::uint32_t row : selection) formerly.at(row) = true;
        selection.clear();
        PacedWork work(breather);
        for (std::uint32_t row = 0; row < rowCount; ++row) {
            if (!formerly[row]) selection.push_back(row);
            work.done();
        }
        return static_cast<std::uint32_t>(selection.size());
    }
    [[nodiscard]] std::vector<std::uint32_t> selectedRows() const override { return selection; }
    [[nodiscard]] std::optional<std::uint32_t> focusedRow() const override { return focus; }
    void enable(BrowserCommand command, bool isEnabled) override {
        enabled[command] = isEnabled;
        if (command == GoUp) goUpEnabled = isEnabled;
    }
    void close() override { ++timesClosed; }
    void setStatus(std::wstring_view text) override { status = text; }
    void watchShell(bool isWatched) override { watched = isWatched; }
    void finishDropSoon() override { ++timesFinishing; }
};

}  // namespace tovar::test
