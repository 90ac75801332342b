#include "shell/win32/system_message_boxes.h"

#include <windows.h>

#include <string>

#include "shell/win32/visual_styles.h"

namespace tovar {

void SystemMessageBoxes::show(WindowHandle owner, std::wstring_view text, std::wstring_view title, MessageIcon icon) {
    UINT style = MB_OK | (icon == MessageIcon::Exclamation ? MB_ICONEXCLAMATION : MB_ICONINFORMATION);
    // Without an owner nothing else would keep the host's windows from being used behind the box.
    if (owner == nullptr) style |= MB_TASKMODAL;
    const VisualStyles styles;
    ::MessageBoxW(static_cast<HWND>(owner), std::wstring(text).c_str(), std::wstring(title).c_str(), style);
}

}  // namespace tovar
