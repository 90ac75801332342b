#include "shell/win32/window.h"

#include "shell/win32/module_instance.h"

namespace tovar {

Window::~Window() {
    destroy();
    // Does nothing while another window of the class lives, and nothing when none was ever there. A class that stayed
    // behind would point into a module that may be unloaded.
    if (!className_.empty()) ::UnregisterClassW(className_.c_str(), moduleInstance());
}

bool Window::create(const Description& description) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = description.classStyle;
    windowClass.lpfnWndProc = &Window::procedure;
    windowClass.hInstance = moduleInstance();
    windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = description.className.c_str();
    if (::RegisterClassExW(&windowClass) == 0 && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return false;
    className_ = description.className;
    const bool sized = description.size.cx != 0 && description.size.cy != 0;
    ::CreateWindowExW(description.extendedStyle, className_.c_str(), L"", description.style, CW_USEDEFAULT,
                      CW_USEDEFAULT, sized ? description.size.cx : CW_USEDEFAULT,
                      sized ? description.size.cy : CW_USEDEFAULT, description.parent, nullptr, moduleInstance(), this);
    return hwnd_ != nullptr;
}

void Window::destroy() noexcept {
    if (hwnd_ != nullptr) ::DestroyWindow(hwnd_);
}

LRESULT CALLBACK Window::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* const self = static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->hwnd_ = window;
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* const self = reinterpret_cast<Window*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
    std::optional<LRESULT> answer;
    try {
        answer = self->onMessage(message, wParam, lParam);
    } catch (...) {
        // The system's own handling is the best that is left.
    }
    if (message != WM_NCDESTROY) return answer ? *answer : ::DefWindowProcW(window, message, wParam, lParam);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    const LRESULT last = ::DefWindowProcW(window, message, wParam, lParam);
    self->hwnd_ = nullptr;
    try {
        self->onGone();
    } catch (...) {
        // Nobody is left to tell.
    }
    return last;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)), L'\0');
    // The length may count a character too many.
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size() + 1))));
    return text;
}

}  // namespace tovar
