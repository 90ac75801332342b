#pragma once
#include <windows.h>

#include <string>

#include "browser/win32/work_dialog_controls.h"
#include "win32/commands/host_window.h"

namespace tovar::test {

using archiver::testing::HostWindow;
using archiver::testing::OnDialog;
using archiver::testing::pressKey;
using archiver::testing::runMessages;
using archiver::testing::textOf;

inline HWND item(HWND dialog, int id) { return ::GetDlgItem(dialog, id); }
inline std::wstring itemText(HWND dialog, int id) { return textOf(item(dialog, id)); }

inline RECT placeOf(HWND window) {
    RECT area{};
    ::GetWindowRect(window, &area);
    return area;
}

inline std::wstring faceOf(HWND control) {
    LOGFONTW description{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0)), sizeof description, &description);
    return description.lfFaceName;
}

}  // namespace tovar::test
