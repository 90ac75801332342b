#include "shell/win32/owner_pause.h"

namespace tovar {

OwnerPause::OwnerPause(HWND owner) {
    if (owner == nullptr) return;
    root_ = ::GetAncestor(owner, GA_ROOT);
    focus_ = ::GetFocus();
    // EnableWindow answers whether the window was disabled: another dialog does that, and it will end it.
    disabled_ = root_ != nullptr && !::EnableWindow(root_, FALSE);
}

OwnerPause::~OwnerPause() { resume(); }

void OwnerPause::resume() noexcept {
    if (!disabled_) return;
    disabled_ = false;
    if (::IsWindow(root_)) ::EnableWindow(root_, TRUE);
}

void OwnerPause::returnFocus() noexcept {
    if (!::IsWindow(root_) || !::IsWindowEnabled(root_)) return;
    // A control that went meanwhile leaves the focus to its window.
    const bool there = ::IsWindow(focus_) && ::GetAncestor(focus_, GA_ROOT) == root_ && ::IsWindowVisible(focus_) &&
                       ::IsWindowEnabled(focus_);
    if (::GetActiveWindow() != root_) ::SetActiveWindow(root_);
    if (there) ::SetFocus(focus_);
}

}  // namespace tovar
