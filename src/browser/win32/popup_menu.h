#pragma once
#include <windows.h>

#include <functional>
#include <memory>
#include <type_traits>

#include "browser/browser_menus.h"
#include "shell/win32/handles.h"

namespace tovar {

using UniqueMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, CloseWith<&::DestroyMenu>>;

/// Makes a menu of the browser window as it stands now. Its entries have the commands' identifiers.
/// @param style  gets the mark among its likes
/// @return null on failure
[[nodiscard]] UniqueMenu makePopupMenu(BrowserMenu menu, const std::function<bool(BrowserCommand)>& isEnabled,
                                       ViewStyle style);

/// Shows a menu and waits until it is closed.
/// @param owner    a window of the calling thread; it hears of the menu
/// @param place    where, in screen coordinates
/// @param exclude  what the menu must not cover, in screen coordinates; null = nothing
/// @return what was chosen; kNoCommand for nothing
BrowserCommand trackPopupMenu(HMENU menu, HWND owner, POINT place, const RECT* exclude);

}  // namespace tovar
