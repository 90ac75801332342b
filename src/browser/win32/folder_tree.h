#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <optional>
#include <vector>

#include "browser/folder_model.h"

namespace tovar {

/// The folder tree `TV1`. The folders inside a folder are inserted when it is opened for the first time, so that an
/// archive of very many folders comes up at once.
class FolderTree {
public:
    /// @return false on failure
    bool create(HWND parent);
    [[nodiscard]] HWND hwnd() const noexcept { return tree_; }

    /// @param icon  places in the system image lists
    void setIcons(int closed, int open);
    /// @param dpi  dots per inch, for the icons and for how far folders are indented
    void setScale(int dpi);

    void clear();
    /// @param folders  must outlive what the tree shows
    void show(const FolderModel& folders);
    /// Selects a folder and brings it into view, opening those above it.
    void select(Folder folder, bool expand);

    /// @return how wide the tree must be for the texts that it shows now, in pixels
    [[nodiscard]] int widthOfTexts() const;

    /// @return nullopt when none is selected
    [[nodiscard]] std::optional<Folder> selected() const;
    /// @return whether the folders inside a folder are shown; also for one with none inside
    [[nodiscard]] bool isExpanded(Folder folder) const;

    /// @return the folder that an item of the tree stands for
    [[nodiscard]] static Folder folderOf(const TVITEMW& item) noexcept { return static_cast<Folder>(item.lParam); }
    /// TVN_ITEMEXPANDING for opening: makes sure that what is inside is there.
    void insertChildren(Folder folder);

private:
    /// Sends a message past those who watch the tree: what is sent for every folder is sent very often.
    LRESULT ask(UINT message, WPARAM wParam, LPARAM lParam) const;
    void insert(Folder folder, HTREEITEM parent);
    void expand(Folder folder);

    HWND tree_ = nullptr;
    WNDPROC ownProcedure_ = nullptr;
    int closedIcon_ = 0, openIcon_ = 0;
    const FolderModel* folders_ = nullptr;
    std::vector<HTREEITEM> items_;  ///< by folder; null while not inserted
};

}  // namespace tovar
