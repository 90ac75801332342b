#include "archivers/commands/win32/owner_window.h"

namespace archiver {
namespace {

/// Disabling a window of a thread that waits for us would wait for ever.
bool answers(HWND window) noexcept {
    if (::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId()) return true;
    constexpr UINT kMilliseconds = 2000;
    DWORD_PTR result = 0;
    return ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kMilliseconds, &result) != 0;
}

}  // namespace

OwnerWindow::OwnerWindow(HWND window) noexcept
    : window_(window != nullptr && ::IsWindow(window) && answers(window) ? window : nullptr) {
    if (window_ == nullptr) return;
    focus_ = ::GetFocus();
    if (!::IsWindowEnabled(window_)) return;
    ::EnableWindow(window_, FALSE);
    disabled_ = true;
}

OwnerWindow::~OwnerWindow() {
    enable();
    restoreFocus();
}

void OwnerWindow::enable() noexcept {
    if (disabled_ && ::IsWindow(window_)) ::EnableWindow(window_, TRUE);
    disabled_ = false;
}

/// Only where the user has not gone on to another window meanwhile.
void OwnerWindow::restoreFocus() const noexcept {
    if (focus_ == nullptr || !::IsWindow(focus_) || !::IsWindowEnabled(focus_)) return;
    const HWND root = ::GetAncestor(focus_, GA_ROOT);
    if (::GetActiveWindow() != root) return;
    const HWND now = ::GetFocus();
    if (now == nullptr || now == root) ::SetFocus(focus_);
}

}  // namespace archiver
