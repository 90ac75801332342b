#pragma once
#include <windows.h>

namespace tovar {

/// @return where a thing of the inner size begins in the middle of the outer one; halves are rounded to the even number
[[nodiscard]] int centredOffset(int outer, int inner) noexcept;

/// Moves a dialog to the middle of its owner's window, or of the screen when it has none.
void CenterDialog(HWND dialog, HWND owner);

/// Moves a window so that its caption, and as much of the rest as fits, lies on its monitor beside the task bar.
void keepOnScreen(HWND window);

/// Makes a form's window a child of the container's window.
/// @param fit  whether the form also fills the container
void EmbedForm(HWND form, HWND container, bool fit);

}  // namespace tovar
