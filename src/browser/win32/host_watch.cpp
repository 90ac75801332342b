#include "browser/win32/host_watch.h"

namespace tovar {
namespace {

constexpr UINT kInterval = 50;  ///< milliseconds: a border that is drawn with the mouse is followed well enough

}  // namespace

void HostWatch::start(HWND window, HWND host, HostSizeListener& listener) noexcept {
    stop();
    if (host == nullptr || ::SetTimer(window, kTimer, kInterval, nullptr) == 0) return;
    window_ = window;
    host_ = host;
    listener_ = &listener;
    size_ = sizeOfHost();
}

void HostWatch::stop() noexcept {
    if (host_ != nullptr) ::KillTimer(window_, kTimer);
    host_ = nullptr;
}

void HostWatch::onTimer(UINT_PTR timer) {
    if (timer != kTimer || host_ == nullptr || ::IsIconic(host_)) return;
    const SIZE now = sizeOfHost();
    if (now.cx == size_.cx && now.cy == size_.cy) return;
    size_ = now;
    listener_->onHostSized();  // the watch may go in it
}

SIZE HostWatch::sizeOfHost() const noexcept {
    RECT client{};
    ::GetClientRect(host_, &client);
    return {client.right, client.bottom};
}

}  // namespace tovar
