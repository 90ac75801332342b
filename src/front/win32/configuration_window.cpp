#include "front/win32/configuration_window.h"

#include "settings/win32/config_dialog.h"

namespace tovar {
namespace {

BOOL CALLBACK takeFirst(HWND window, LPARAM result) {
    if (!::IsWindowVisible(window) || !::IsWindowEnabled(window)) return TRUE;
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
}

// Configure is told of no window. Its user works in the active one of the calling thread: the host's, or a dialog over
// it, which must stay below ours. While another program is in front there is none: then it is the thread's topmost
// window that takes input.
HWND ownerForDialog() {
    if (const HWND active = ::GetActiveWindow()) return active;
    HWND found = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &takeFirst, reinterpret_cast<LPARAM>(&found));
    return found;
}

}  // namespace

void WindowsConfiguration::showModal() {
    fConfig dialog(settings_, inventory_);
    shown_ = &dialog;
    dialog.ask(ownerForDialog(), fontName_());
    shown_ = nullptr;
}

void WindowsConfiguration::close() noexcept {
    if (shown_ != nullptr) shown_->cancel();
}

void WindowsConfiguration::bringToFront() noexcept {
    if (shown_ != nullptr) shown_->bringToFront();
}

}  // namespace tovar
