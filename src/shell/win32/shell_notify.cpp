#include "shell/win32/shell_notify.h"

// windows.h first
#include <shlobj.h>

#include <array>
#include <utility>

namespace tovar {
namespace {

constexpr UINT kChanged = WM_APP;
constexpr LONG kEvents = SHCNE_CREATE | SHCNE_RENAMEITEM | SHCNE_UPDATEITEM;

std::wstring pathOf(PCIDLIST_ABSOLUTE item) {
    std::array<wchar_t, MAX_PATH + 1> path{};
    if (item == nullptr || !::SHGetPathFromIDListW(item, path.data())) return {};
    return path.data();
}

}  // namespace

bool WenShellNotify::create(HWND parent, int id) {
    Description description;
    description.className = L"WenShellNotify";
    description.style = WS_CHILD;
    description.parent = parent;
    if (!Window::create(description)) return false;
    ::SetWindowLongPtrW(hwnd(), GWLP_ID, id);
    return true;
}

bool WenShellNotify::start() {
    if (registration_ != 0 || hwnd() == nullptr) return registration_ != 0;
    LPITEMIDLIST desktop = nullptr;
    if (FAILED(::SHGetSpecialFolderLocation(nullptr, CSIDL_DESKTOP, &desktop))) return false;
    const SHChangeNotifyEntry everywhere{desktop, TRUE};
    registration_ = ::SHChangeNotifyRegister(hwnd(), SHCNRF_ShellLevel | SHCNRF_InterruptLevel | SHCNRF_NewDelivery,
                                             kEvents, kChanged, 1, &everywhere);
    ::CoTaskMemFree(desktop);
    return registration_ != 0;
}

void WenShellNotify::stop() noexcept {
    if (registration_ != 0) ::SHChangeNotifyDeregister(std::exchange(registration_, 0));
}

std::optional<LRESULT> WenShellNotify::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case kChanged:
            tell(reinterpret_cast<HANDLE>(wParam), static_cast<DWORD>(lParam));
            return 0;
        case WM_DESTROY:
            stop();
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

void WenShellNotify::tell(HANDLE change, DWORD process) {
    PIDLIST_ABSOLUTE* items = nullptr;
    LONG event = 0;
    const HANDLE lock = ::SHChangeNotification_Lock(change, process, &items, &event);
    if (lock == nullptr) return;
    std::wstring first, second;
    if (items != nullptr) {
        first = pathOf(items[0]);
        second = pathOf(items[1]);
    }
    ::SHChangeNotification_Unlock(lock);
    // What is still on its way after stop() is of no interest.
    if (registration_ != 0) listener_.onShellNotify(first, second);
}

}  // namespace tovar
