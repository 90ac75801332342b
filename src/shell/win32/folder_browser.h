#pragma once
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "shell/win32/folder_list_view.h"
#include "shell/win32/folder_tree_view.h"
#include "shell/win32/splitter.h"
#include "shell/win32/window.h"

namespace tovar {

/// The folders of the computer as a tree, beside it what is inside the chosen one, and a bar between both that the
/// mouse drags. Both parts follow the disk and the window's size.
class WenFolderBrowser final : public Window, private SplitterOwner {
public:
    struct Events {
        /// The chosen folder is another one; nullopt when it is none of the file system. What was selected in the
        /// folder before is not any more.
        /// @param state  told anew when it has become another one
        std::function<void(const std::optional<std::wstring>& folder, FolderState state)> folderChanged;
        /// Names of files and folders inside the chosen one, CR LF between them; empty when none is selected.
        std::function<void(const std::wstring& names)> namesSelected;
    };

    /// The readers are those of the system where they are empty.
    explicit WenFolderBrowser(ShellFolderSource::Reader folders = {}, ShellFolderContents::Reader contents = {})
        : tree_(std::move(folders)), list_(std::move(contents)) {}
    ~WenFolderBrowser() override;

    /// Creates the control in place of one of a dialog's template, which goes. For a dialog's onLoad.
    /// @return false on failure
    bool createInstead(HWND dialog, int id, Events events);

    /// @return false when there is no such folder: the nearest one above it is chosen, if any
    bool SelectFolder(std::wstring_view path) { return tree_.SelectFolder(path); }
    [[nodiscard]] std::optional<std::wstring> SelectedFolder() const { return tree_.SelectedFolder(); }

    /// Tells the selected names now; otherwise that waits until the window's messages have been answered.
    void reportSelection() { list_.reportSelection(); }

    [[nodiscard]] HWND tree() const noexcept { return tree_.tree(); }
    [[nodiscard]] HWND list() const noexcept { return list_.hwnd(); }
    [[nodiscard]] HWND bar() const noexcept { return splitter_.hwnd(); }

private:
    static constexpr int kTreeShare = 45;  ///< per cent of the width

    bool create(HWND parent, const RECT& place, int id);
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onGone() override { list_.gone(); }
    std::optional<LRESULT> onSize(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onFocus(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onFont(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onTimer(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onNotify(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onSelectionNoted(WPARAM wParam, LPARAM lParam);
    void onFolderChanged();
    void layOut();

    // SplitterOwner
    void onSplitterMoved() override { layOut(); }
    int onSplitterFit() override { return tree_.widthOfTexts(); }
    void onSplitterLeave(bool backwards) override { ::SetFocus(backwards ? tree_.tree() : list_.hwnd()); }

    Events events_;
    WenFolderTreeView tree_;
    FolderListView list_;
    Splitter splitter_{*this, kTreeShare};
};

}  // namespace tovar
