#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

namespace tovar {

/// Keeps a list view from destroying the image lists it is given. Comes before AttachSystemImageList.
void ShareImageLists(HWND listView);

/// Gives a list view the system's small and normal image lists, or takes both away. Comes before Subclass with
/// ListViewWindowProc.
void AttachSystemImageList(HWND listView, bool attach);

/// @return whether the list view took the item
bool SetListItem(HWND listView, const LVITEMW& item);

[[nodiscard]] UINT SelectedCount(HWND listView);

/// Procedure for a subclassed list view. Nobody, not even the control itself, can replace its image lists any more; its
/// own procedure comes back when it is destroyed.
LRESULT CALLBACK ListViewWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace tovar
