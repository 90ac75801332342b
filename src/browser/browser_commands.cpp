#include "browser/browser_commands.h"

#include <algorithm>
#include <array>

namespace tovar {
namespace {

constexpr KeyStroke plain(Key key) { return {key, false, false, false}; }
constexpr KeyStroke control(Key key) { return {key, true, false, false}; }
constexpr KeyStroke control(char letter) { return control(static_cast<Key>(letter)); }
constexpr KeyStroke shift(Key key) { return {key, false, true, false}; }
constexpr KeyStroke alt(Key key) { return {key, false, false, true}; }

constexpr CommandDescription kCommands[] = {
    {.command = mnuEdit, .menuText = L"&Edit"},
    {.command = mnuEditSelect, .menuText = L"&Select"},
    {.command = mnuView, .menuText = L"&View"},
    {.command = mnuViewStyle, .menuText = L"&Style"},
    {.command = kOpen, .menuText = L"&Open", .shortcutText = L"Enter", .key = plain(Key::Enter)},
    {.command = mnuEditExtract, .menuText = L"&Extract...", .shortcutText = L"Ctrl+E", .key = control('E')},
    {.command = mnuEditAdd, .menuText = L"&Add..."},
    {.command = kAddFolder, .menuText = L"Add &whole folder..."},
    {.command = mnuEditDelete, .menuText = L"&Delete", .shortcutText = L"Del", .key = plain(Key::Delete)},
    {.command = kCopy,
     .menuText = L"&Copy",
     .shortcutText = L"Ctrl+C",
     .key = control('C'),
     .otherKey = control(Key::Insert)},
    {.command = kPaste,
     .menuText = L"&Paste",
     .shortcutText = L"Ctrl+V",
     .key = control('V'),
     .otherKey = shift(Key::Insert)},
    {.command = mnuEditSelectAll, .menuText = L"Se&lect all", .shortcutText = L"Ctrl+A", .key = control('A')},
    {.command = mnuEditSelectInvert, .menuText = L"&Invert selection", .shortcutText = L"Ctrl+I", .key = control('I')},
    {.command = kFind, .menuText = L"&Find...", .shortcutText = L"Ctrl+F", .key = control('F')},
    {.command = kFindNext, .menuText = L"Find &next", .shortcutText = L"F3", .key = plain(Key::F3)},
    {.command = kFindPrevious, .menuText = L"Find pre&vious", .shortcutText = L"Shift+F3", .key = shift(Key::F3)},
    // As windows inside another one are closed everywhere.
    {.command = mnuEditExit,
     .menuText = L"E&xit",
     .shortcutText = L"Ctrl+F4",
     .key = control(Key::F4),
     .otherKey = control('W')},
    {.command = mnuViewStyleLargeIcons, .menuText = L"Lar&ge icons", .shortcutText = L"Ctrl+1", .key = control('1')},
    {.command = mnuViewStyleSmallIcons, .menuText = L"&Small icons", .shortcutText = L"Ctrl+2", .key = control('2')},
    {.command = mnuViewStyleList, .menuText = L"&List", .shortcutText = L"Ctrl+3", .key = control('3')},
    {.command = mnuViewStyleDetails, .menuText = L"&Details", .shortcutText = L"Ctrl+4", .key = control('4')},
    {.command = mnuViewStyleExactDetails,
     .menuText = L"&Exact details",
     .shortcutText = L"Ctrl+5",
     .key = control('5')},
    {.command = kRefresh, .menuText = L"&Refresh", .shortcutText = L"F5", .key = plain(Key::F5)},
    {.command = Add, .buttonText = L"Add", .hint = L"Add files to the archive"},
    {.command = Extract, .buttonText = L"Extract", .hint = L"Extract the selected files, or all (Ctrl+E)"},
    {.command = GoUp,
     .menuText = L"Go &up",
     .shortcutText = L"Backspace",
     .key = plain(Key::Back),
     .otherKey = alt(Key::Up),
     .buttonText = L"Go up",
     .hint = L"Go to the folder above (Backspace)"},
};

constexpr std::array kStyles = {mnuViewStyleLargeIcons, mnuViewStyleSmallIcons, mnuViewStyleList, mnuViewStyleDetails,
                                mnuViewStyleExactDetails};

}  // namespace

std::span<const CommandDescription> browserCommands() noexcept { return kCommands; }

const CommandDescription* describe(int command) noexcept {
    const auto* const found = std::ranges::find(kCommands, command, &CommandDescription::command);
    return found != std::end(kCommands) ? found : nullptr;
}

BrowserCommand actionOf(BrowserCommand command) noexcept {
    if (command == Add) return mnuEditAdd;
    return command == Extract ? mnuEditExtract : command;
}

BrowserCommand commandOfKey(const KeyStroke& key) noexcept {
    if (key.key == Key::None) return kNoCommand;
    for (const CommandDescription& each : kCommands) {
        if (each.key == key || each.otherKey == key) return each.command;
    }
    return kNoCommand;
}

BrowserCommand commandOf(ViewStyle style) noexcept { return kStyles[static_cast<std::size_t>(style)]; }

std::optional<ViewStyle> viewStyleOf(BrowserCommand command) noexcept {
    const auto found = std::ranges::find(kStyles, command);
    if (found == kStyles.end()) return std::nullopt;
    return static_cast<ViewStyle>(found - kStyles.begin());
}

std::wstring menuLine(const CommandDescription& command) {
    std::wstring line(command.menuText);
    if (!command.shortcutText.empty()) line.append(1, L'\t').append(command.shortcutText);
    return line;
}

}  // namespace tovar
