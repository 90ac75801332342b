#include "front/win32/message_watch.h"

#include <commctrl.h>

#include <utility>

namespace tovar {
namespace {

constexpr UINT_PTR kSubclass = 1;

}  // namespace

std::unique_ptr<MessageWatch> MessageWatch::of(HWND window) {
    auto messages = std::make_shared<Messages>();
    auto forWindow = std::make_unique<std::shared_ptr<Messages>>(messages);
    auto watch = std::unique_ptr<MessageWatch>(new MessageWatch(std::move(messages)));
    if (!::SetWindowSubclass(window, &procedure, kSubclass, reinterpret_cast<DWORD_PTR>(forWindow.get()))) {
        return nullptr;
    }
    static_cast<void>(forWindow.release());  // the window's own, until its last message
    return watch;
}

void MessageWatch::whenIdle(std::function<void()> action) {
    if (messages_->running == 0) {
        action();
    } else {
        messages_->waiting = std::move(action);
    }
}

LRESULT CALLBACK MessageWatch::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data) noexcept {
    auto* const forWindow = reinterpret_cast<std::shared_ptr<Messages>*>(data);
    const std::shared_ptr<Messages> messages = *forWindow;
    ++messages->running;
    if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(window, &procedure, id);
        delete forWindow;  // NOLINT: released to the window in `of`
    }
    const LRESULT result = ::DefSubclassProc(window, message, wParam, lParam);
    if (--messages->running == 0 && messages->waiting) std::exchange(messages->waiting, nullptr)();
    return result;
}

}  // namespace tovar
