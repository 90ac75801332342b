#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "browser/browser_commands.h"
#include "browser/folder_model.h"
#include "browser/view_style.h"
#include "shell/breather.h"
#include "shell/window_handle.h"

namespace tovar {

/// The browser window as its presenter sees it. The window takes what it shows from the presenter's folders and
/// contents.
class BrowserView {
public:
    virtual ~BrowserView() = default;

    /// @return null once the window is gone
    [[nodiscard]] virtual WindowHandle hWnd() const = 0;

    virtual void setTitle(std::wstring_view title) = 0;

    /// Empties the tree and the list.
    virtual void clear() = 0;
    /// Fills the tree from the presenter's folders.
    virtual void showFolders() = 0;
    /// Selects a folder in the tree, opening those above it.
    virtual void selectFolder(Folder folder, bool expand) = 0;

    /// Makes the list's columns and rows anew from the presenter's contents; nothing is selected.
    virtual void showContents() = 0;
    /// The rows stand in another order now; the selection goes with them.
    /// @param newRows  for each row from before the row where it is now
    virtual void moveRows(std::span<const std::uint32_t> newRows) = 0;

    /// Selects one row and no other, gives it the focus and brings it in sight.
    virtual void showRow(std::uint32_t row) = 0;

    /// Appends an entry to the address box's history.
    virtual void addAddress(std::wstring_view address) = 0;
    /// Chooses an entry of the history, counted from 0, and shows its text.
    virtual void chooseAddress(std::size_t index) = 0;
    virtual void moveAddressCaretToEnd() = 0;

    /// Shows the same rows in another style, with the texts that they have now. The selection stays.
    virtual void setViewStyle(ViewStyle style) = 0;
    // Both return the number of rows selected afterwards. With a breather they take breaths between rows, in which
    // their user may select others; without one they do it in one go. WorkAbandoned leaves what is selected by then.
    virtual std::uint32_t selectAll(Breather* breather) = 0;
    virtual std::uint32_t invertSelection(Breather* breather) = 0;
    /// @return from top to bottom
    [[nodiscard]] virtual std::vector<std::uint32_t> selectedRows() const = 0;
    /// @return the row that the keyboard is at; nullopt when there is none
    [[nodiscard]] virtual std::optional<std::uint32_t> focusedRow() const = 0;

    /// Enables or disables what the user always sees of a command: `mnuEdit`, or a button of the toolbar.
    virtual void enable(BrowserCommand command, bool enabled) = 0;
    virtual void setStatus(std::wstring_view text) = 0;
    /// Hears what the shell tells of files, or does not any more.
    virtual void watchShell(bool watched) = 0;
    /// Calls the presenter's onFinishDrop outside of every other message.
    virtual void finishDropSoon() = 0;
    /// Closes the window as its user would. It may be gone only after the call.
    virtual void close() = 0;
};

}  // namespace tovar
