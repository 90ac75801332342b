#include "browser/win32/pane_keys.h"

// windows.h first
#include <commctrl.h>

namespace tovar {
namespace {

static_assert(static_cast<int>(Key::Back) == VK_BACK && static_cast<int>(Key::Enter) == VK_RETURN &&
              static_cast<int>(Key::Up) == VK_UP && static_cast<int>(Key::Delete) == VK_DELETE &&
              static_cast<int>(Key::F3) == VK_F3 && static_cast<int>(Key::F6) == VK_F6);

// A host that treats its window as a dialog would take Enter and Escape for its own buttons.
bool isDialogKey(const PaneKeys& keys, LPARAM lParam) {
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    return message != nullptr && message->message == WM_KEYDOWN &&
           (message->wParam == VK_RETURN || (message->wParam == VK_ESCAPE && keys.wantsPaneEscape()));
}

// A key that was a command would come once more, as a character that lists and trees answer with a beep.
bool isControlCharacter(WPARAM character) noexcept { return character < L' '; }

LRESULT CALLBACK keyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                              DWORD_PTR data) noexcept {
    const bool isTextField = id == static_cast<UINT_PTR>(PaneKind::TextField);
    auto& keys = *reinterpret_cast<PaneKeys*>(data);
    try {
        switch (message) {
            case WM_KEYDOWN:
            case WM_SYSKEYDOWN:
                if (keys.onPaneKey(window, strokeOf(wParam))) return 0;
                break;
            case WM_CHAR:
                if (!isTextField && isControlCharacter(wParam)) return 0;
                break;
            case WM_SYSCHAR:
                if (keys.onPaneAltLetter(static_cast<wchar_t>(wParam))) return 0;
                break;
            default:
                break;
        }
    } catch (...) {
        return 0;
    }
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, &keyProcedure, id);
    const LRESULT answer = ::DefSubclassProc(window, message, wParam, lParam);
    return message == WM_GETDLGCODE && !isTextField && isDialogKey(keys, lParam) ? answer | DLGC_WANTMESSAGE : answer;
}

}  // namespace

bool watchKeys(HWND pane, PaneKeys& keys, PaneKind kind) {
    return ::SetWindowSubclass(pane, &keyProcedure, static_cast<UINT_PTR>(kind), reinterpret_cast<DWORD_PTR>(&keys)) !=
           FALSE;
}

KeyStroke strokeOf(WPARAM virtualKey) noexcept {
    const auto isDown = [](int key) { return ::GetKeyState(key) < 0; };
    return {static_cast<Key>(virtualKey), isDown(VK_CONTROL), isDown(VK_SHIFT), isDown(VK_MENU)};
}

}  // namespace tovar
