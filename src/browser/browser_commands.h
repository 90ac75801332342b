#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "browser/view_style.h"

namespace tovar {

/// The commands of the browser window, by the identifiers that menus, toolbar and keyboard send. Apart from those of
/// the controls (win32/browser_controls.h).
enum BrowserCommand : int {
    kNoCommand = 0,
    // Menus
    mnuEdit = 200,
    mnuEditSelect,
    mnuView,
    mnuViewStyle,
    // Entries of menus
    mnuEditAdd = 300,
    mnuEditDelete,
    mnuEditExtract,
    mnuEditSelectAll,
    mnuEditSelectInvert,
    mnuEditExit,
    mnuViewStyleLargeIcons,
    mnuViewStyleSmallIcons,
    mnuViewStyleList,
    mnuViewStyleDetails,
    mnuViewStyleExactDetails,
    kOpen,     ///< the row that has the focus
    kRefresh,  ///< lists the archive again
    kFind,     ///< starts to look for members by their names
    kFindNext,
    kFindPrevious,
    kCopy,       ///< copies members to the clipboard
    kPaste,      ///< adds the files of the clipboard
    kAddFolder,  ///< adds a folder that the user picks, or what he picks in it
    // Buttons of the toolbar
    Add = 400,
    Extract,
    GoUp,
};

/// Keys as the system numbers them (virtual-key codes); letters and digits are their own upper-case characters.
enum class Key : std::uint16_t {
    None = 0,
    Back = 0x08,
    Enter = 0x0D,
    Up = 0x26,
    Insert = 0x2D,
    Delete = 0x2E,
    F3 = 0x72,
    F4,
    F5,
    F6
};

/// A key with the keys that are held down with it.
struct KeyStroke {
    Key key = Key::None;
    bool control = false, shift = false, alt = false;
    bool operator==(const KeyStroke&) const = default;
};

/// Everything that is written of a command, for menus, toolbar and keyboard alike.
struct CommandDescription {
    BrowserCommand command = kNoCommand;
    std::wstring_view menuText{};      ///< with "&" before the letter that chooses it
    std::wstring_view shortcutText{};  ///< of `key`, as menus show it; empty = none
    KeyStroke key{};
    KeyStroke otherKey{};            ///< does the same, and is not shown
    std::wstring_view buttonText{};  ///< of the toolbar
    std::wstring_view hint{};        ///< what the toolbar says of it under the mouse
};

/// @return all commands and menus, each once
[[nodiscard]] std::span<const CommandDescription> browserCommands() noexcept;
/// @return null for a number that is no command
[[nodiscard]] const CommandDescription* describe(int command) noexcept;

/// The command that a button of the toolbar stands for: `Add` does what `mnuEditAdd` does. Others stand for themselves.
[[nodiscard]] BrowserCommand actionOf(BrowserCommand command) noexcept;

/// @return kNoCommand for a key that means nothing
[[nodiscard]] BrowserCommand commandOfKey(const KeyStroke& key) noexcept;

[[nodiscard]] BrowserCommand commandOf(ViewStyle style) noexcept;
/// @return the style that an entry of `mnuViewStyle` chooses; nullopt for other commands
[[nodiscard]] std::optional<ViewStyle> viewStyleOf(BrowserCommand command) noexcept;

/// @return the line of a menu: the text, and after a tab the shortcut
[[nodiscard]] std::wstring menuLine(const CommandDescription& command);

}  // namespace tovar
