#pragma once
#include <windows.h>

#include <cstddef>
#include <optional>

namespace tovar {

/// A row of a window's command table: which control, which notification of it, and who answers.
/// Menu entries have the notification 0, accelerator keys 1.
template <class Window>
struct CommandRoute {
    WORD control, notification;
    void (Window::*handler)();
};

/// Runs the handler of a WM_COMMAND message.
/// @return false when no row fits: default handling goes on
template <class Window, std::size_t N>
bool dispatchCommand(Window& window, const CommandRoute<Window> (&routes)[N], WPARAM wParam) {
    for (const auto& route : routes) {
        if (MAKEWPARAM(route.control, route.notification) != wParam) continue;
        (window.*route.handler)();
        return true;
    }
    return false;
}

/// A row of a window's table of control notifications (WM_NOTIFY).
template <class Window>
struct NotifyRoute {
    UINT_PTR control;
    UINT code;
    LRESULT (Window::*handler)(NMHDR& header);
};

/// @return the handler's answer, or nullopt when no row fits: default handling goes on
template <class Window, std::size_t N>
std::optional<LRESULT> dispatchNotify(Window& window, const NotifyRoute<Window> (&routes)[N], LPARAM lParam) {
    auto* const header = reinterpret_cast<NMHDR*>(lParam);
    for (const auto& route : routes) {
        if (route.control == header->idFrom && route.code == header->code) return (window.*route.handler)(*header);
    }
    return std::nullopt;
}

/// A row of a window's message table.
template <class Window>
struct MessageRoute {
    UINT message;
    std::optional<LRESULT> (Window::*handler)(WPARAM wParam, LPARAM lParam);
};

/// @return the handler's answer, or nullopt when no row fits or the handler leaves the message to default handling
template <class Window, std::size_t N>
std::optional<LRESULT> dispatchMessage(Window& window, const MessageRoute<Window> (&routes)[N], UINT message,
                                       WPARAM wParam, LPARAM lParam) {
    for (const auto& route : routes) {
        if (route.message == message) return (window.*route.handler)(wParam, lParam);
    }
    return std::nullopt;
}

}  // namespace tovar
