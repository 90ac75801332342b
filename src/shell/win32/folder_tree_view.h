#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "shell/folder_tree_presenter.h"
#include "shell/win32/folder_icons.h"
#include "shell/win32/shell_folder_source.h"
#include "shell/win32/window.h"

namespace tovar {

/// The folders of the computer as a tree, for a dialog or window. It follows the disk while it is shown, and takes the
/// keyboard as any tree does; F5 looks at everything anew. The control fills its window, which follows WM_SIZE; a font
/// is given to it with WM_SETFONT or, with all controls of a form, by ApplyFont.
class WenFolderTreeView final : public Window, private FolderTreeDisplay {
public:
    /// Called when another folder is selected, by the user, by SelectFolder, or because the selected one has gone or
    /// changed its name, or its state; SelectedFolder() and State() tell which. Nothing thrown in it goes further.
    using SelectionChanged = std::function<void()>;

    /// @param reader  see ShellFolderSource
    explicit WenFolderTreeView(ShellFolderSource::Reader reader = {});
    ~WenFolderTreeView() override;

    /// Creates the control and shows the drives; nothing is selected yet and nothing is reported.
    /// @param place  in the parent's client area
    /// @param id     the control's number in its parent
    /// @return false on failure
    bool create(HWND parent, const RECT& place, int id, SelectionChanged changed);

    /// Creates the control in place of one of a dialog's template (a frame, say), which goes: it takes over its place,
    /// its number and its turn for the Tab key. For a dialog's onLoad.
    bool createInstead(HWND dialog, int id, SelectionChanged changed);

    /// Selects a folder, however deep, and opens the way down to it.
    /// @param path  absolute; longer than MAX_PATH, short names, "/" and a separator at the end are taken too
    /// @return false when there is no such folder: the nearest one above it is selected, if any. True also where that
    ///         takes long to tell; it is selected later then.
    bool SelectFolder(std::wstring_view path);

    /// @return path of the selected folder, without a separator at its end but for a drive root; nullopt when nothing
    ///         is selected, or what is selected is no folder of the file system (the computer itself)
    [[nodiscard]] std::optional<std::wstring> SelectedFolder() const { return presenter_.selectedFolder(); }

    /// @return what is known of the selected folder, or of one that SelectFolder has not reached yet: only one that is
    ///         there should be worked with
    [[nodiscard]] FolderState State() const { return presenter_.selectedState(); }

    /// @return the width at which all that is open can be read, in pixels
    [[nodiscard]] int widthOfTexts() const;

    /// @return the tree view inside
    [[nodiscard]] HWND tree() const noexcept { return tree_; }

private:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onGone() override;
    std::optional<LRESULT> onSize(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onFocus(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onFont(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onGetFont(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onTimer(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onNotify(WPARAM wParam, LPARAM lParam);
    LRESULT onGetDisplayInfo(NMHDR& header);
    LRESULT onExpanding(NMHDR& header);
    LRESULT onSelected(NMHDR& header);
    LRESULT onItemGone(NMHDR& header);
    LRESULT onKey(NMHDR& header);

    void insert(FolderNode node, FolderNode parent, FolderNode after) override;
    void remove(FolderNode node) override;
    void update(FolderNode node) override;
    void expand(FolderNode node) override;
    void select(FolderNode node) override;
    void beginChange() override;
    void endChange() override;
    void selectionChanged() override;

    [[nodiscard]] HTREEITEM itemOf(FolderNode node) const;
    void describe(FolderNode node, TVITEMW& item);

    HWND tree_ = nullptr;
    SelectionChanged changed_;
    ShellFolderSource source_;
    FolderTreePresenter presenter_{source_, *this};
    std::unordered_map<FolderNode, HTREEITEM> items_;
    FolderIcons icons_;
    std::wstring shownText_;  ///< the tree reads a text after it was given
};

}  // namespace tovar
