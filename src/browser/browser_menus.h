#pragma once
#include <span>

#include "browser/browser_commands.h"

namespace tovar {

/// The menus of the browser window: those of the menu band, and those that a right click shows.
enum class BrowserMenu {
    Edit,
    View,
    Rows,       ///< on rows of the contents list
    EmptyArea,  ///< below and beside them
    Folders,    ///< on a folder of the tree
};

/// @return from top to bottom; kNoCommand stands for a line between entries, `mnuEditSelect` and `mnuViewStyle` for
///         menus inside
[[nodiscard]] std::span<const BrowserCommand> entriesOf(BrowserMenu menu) noexcept;

/// @return the entries of a menu inside another one; empty for other commands
[[nodiscard]] std::span<const BrowserCommand> entriesInside(BrowserCommand command) noexcept;

/// @return what a double click or Enter would do at the same place; kNoCommand where there is nothing of the kind
[[nodiscard]] BrowserCommand defaultEntryOf(BrowserMenu menu) noexcept;

}  // namespace tovar
