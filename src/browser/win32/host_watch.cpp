#include "browser/win32/host_watch.h"

// windows.h first
#include <commctrl.h>

namespace tovar {

void HostWatch::start(HWND host, HostSizeListener& listener) noexcept {
    if (host == host_) return;
    stop();
    listener_ = &listener;
    const auto self = reinterpret_cast<DWORD_PTR>(this);
    if (host != nullptr && ::SetWindowSubclass(host, &procedure, self, self) != FALSE) host_ = host;
}

void HostWatch::stop() noexcept {
    if (host_ != nullptr) ::RemoveWindowSubclass(host_, &procedure, reinterpret_cast<UINT_PTR>(this));
    host_ = nullptr;
}

LRESULT CALLBACK HostWatch::procedure(HWND host, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR data) noexcept {
    if (message == WM_NCDESTROY) reinterpret_cast<HostWatch*>(data)->stop();
    const LRESULT answer = ::DefSubclassProc(host, message, wParam, lParam);
    if (message != WM_SIZE || wParam == SIZE_MINIMIZED) return answer;
    // The host may have closed the browser meanwhile.
    DWORD_PTR stillThere = 0;
    if (::GetWindowSubclass(host, &procedure, id, &stillThere) == FALSE) return answer;
    try {
        reinterpret_cast<HostWatch*>(data)->listener_->onHostSized();
    } catch (...) {
        // The window stays as it is.
    }
    return answer;
}

}  // namespace tovar
