#pragma once
#include <windows.h>

#include "shell/message_boxes.h"

namespace tovar {

/// Property of a subclassed window: the procedure that it had before.
inline constexpr const wchar_t* kOldWndProc = L"OldWndProc";
/// Property of a subclassed window: the object that owns it, for the new procedure's use.
inline constexpr const wchar_t* kObjectPtr = L"ObjectPtr";

/// Gives a window another procedure. A window that has one already keeps it.
/// @param owner     stored with the window; null = none
/// @param messages  tells the user of a failure
/// @return false on failure; the window is then as it was
bool Subclass(HWND window, WNDPROC newProcedure, void* owner, MessageBoxes& messages);

/// Gives a subclassed window its own procedure back.
/// @return false for a window that is not subclassed, or when the system refuses
bool Unsubclass(HWND window);

/// For a new procedure: lets the window's own one answer, the default one when it has none.
LRESULT callOldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace tovar
