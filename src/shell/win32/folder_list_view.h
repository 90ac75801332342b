#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "shell/folder_list_presenter.h"
#include "shell/win32/folder_icons.h"
#include "shell/win32/shell_folder_contents.h"

namespace tovar {

/// The list of what is inside a folder, as a part of a window: that passes on what the control notifies.
class FolderListView final : private FolderListDisplay {
public:
    /// @param reader  see ShellFolderContents
    explicit FolderListView(ShellFolderContents::Reader reader = {}) : contents_(std::move(reader)) {}

    struct Events {
        /// Names relative to the folder, CR LF between them.
        std::function<void(const std::wstring&)> namesSelected;
        std::function<void(const std::wstring&)> folderOpened;
    };

    /// @param selectionMessage  sent to the parent, to be answered with reportSelection: a selection of very many rows
    ///                          comes as a notification for each
    /// @return false on failure
    bool create(HWND parent, int id, UINT selectionMessage, Events events);
    void gone() noexcept { list_ = nullptr; }
    [[nodiscard]] HWND hwnd() const noexcept { return list_; }

    /// @return empty when none is shown
    [[nodiscard]] const std::wstring& folder() const noexcept { return presenter_.folder(); }
    /// @param path  nullopt: nothing is shown
    void showFolder(std::optional<std::wstring> path);
    void place(int left, int top, int width, int height);
    void onTick() { presenter_.onTick(); }
    /// Tells the names that are selected, unless they have been told.
    void reportSelection();

    /// @return the answer to a notification of the control; nullopt for default handling
    std::optional<LRESULT> onNotify(NMHDR& header);

private:
    LRESULT onGetDisplayInfo(LVITEMW& item);
    LRESULT onFindItem(const NMLVFINDITEMW& find) const;
    [[nodiscard]] int iconOf(const FolderFile& file);
    void noteSelection();

    void showRows(std::uint32_t count) override;
    void selectRows(const std::vector<std::uint32_t>& rows) override;
    [[nodiscard]] std::vector<std::uint32_t> selectedRows() const override;
    void namesSelected(const std::wstring& names) override { events_.namesSelected(names); }
    void folderOpened(const std::wstring& path) override { events_.folderOpened(path); }

    HWND list_ = nullptr;
    UINT selectionMessage_ = 0;
    Events events_;
    ShellFolderContents contents_;
    FolderListPresenter presenter_{contents_, *this};
    bool changing_ = false, noted_ = false;
    int folderIcon_ = 0;
    std::map<std::wstring, int> icons_;  ///< by extension, or by name where each file has its own
    std::wstring shownText_;             ///< the list reads a text after it was given
};

}  // namespace tovar
