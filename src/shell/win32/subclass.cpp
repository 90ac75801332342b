#include "shell/win32/subclass.h"

#include <array>
#include <cstdint>
#include <cwchar>
#include <string>

#include "shell/component_name.h"
#include "shell/win32/windows_system_information.h"

namespace tovar {
namespace {

std::wstring hexadecimal(HWND window) {
    std::array<wchar_t, 2 * sizeof(std::uintptr_t) + 1> digits{};
    std::swprintf(digits.data(), digits.size(), L"%IX", reinterpret_cast<std::uintptr_t>(window));
    return digits.data();
}

void tellFailure(HWND window, DWORD error, MessageBoxes& messages) {
    const std::wstring text = L"Error subclassing window &H" + hexadecimal(window) + L"\r\n\r\nErr# " +
                              std::to_wstring(error) + L": " + WindowsSystemInformation().errorText(error);
    messages.show(nullptr, text, kComponentName, MessageIcon::Exclamation);
}

WNDPROC oldProcedure(HWND window) { return reinterpret_cast<WNDPROC>(::GetPropW(window, kOldWndProc)); }

}  // namespace

bool Subclass(HWND window, WNDPROC newProcedure, void* owner, MessageBoxes& messages) {
    if (oldProcedure(window) != nullptr) return true;
    const LONG_PTR old = ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(newProcedure));
    bool done = old != 0 && ::SetPropW(window, kOldWndProc, reinterpret_cast<HANDLE>(old));
    if (done && owner != nullptr) done = ::SetPropW(window, kObjectPtr, owner) != FALSE;
    if (done) return true;
    const DWORD error = ::GetLastError();
    if (old != 0) ::SetWindowLongPtrW(window, GWLP_WNDPROC, old);
    ::RemovePropW(window, kOldWndProc);
    tellFailure(window, error, messages);
    return false;
}

bool Unsubclass(HWND window) {
    const WNDPROC old = oldProcedure(window);
    if (old == nullptr) return false;
    if (::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(old)) == 0) return false;
    ::RemovePropW(window, kOldWndProc);
    ::RemovePropW(window, kObjectPtr);
    return true;
}

LRESULT callOldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC old = oldProcedure(window);
    return old != nullptr ? ::CallWindowProcW(old, window, message, wParam, lParam)
                          : ::DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace tovar
