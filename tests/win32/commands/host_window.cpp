#include "win32/commands/host_window.h"

#include <gtest/gtest.h>

namespace archiver::testing {
namespace {

constexpr wchar_t kClass[] = L"CommandsTestHost";
OnDialog* waiting = nullptr;

std::wstring classOf(HWND window) {
    wchar_t name[64];
    return {name, name + ::GetClassNameW(window, name, 64)};
}

}  // namespace

HostWindow::HostWindow(const RECT& place) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &HostWindow::procedure;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.hbrBackground = ::GetSysColorBrush(COLOR_WINDOW);
    windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kClass;
    ::RegisterClassW(&windowClass);
    window_ = ::CreateWindowExW(0, kClass, L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, place.left, place.top,
                                place.right - place.left, place.bottom - place.top, nullptr, nullptr,
                                windowClass.hInstance, this);
    child_ = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 20, 60, 700, 450, window_, nullptr,
                               windowClass.hInstance, nullptr);
    edit_ = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_BORDER, 20, 20, 200, 24, window_, nullptr,
                              windowClass.hInstance, nullptr);
    ::SetForegroundWindow(window_);
    ::SetFocus(edit_);
    runMessages();
    told_.clear();
}

HostWindow::~HostWindow() {
    if (::IsWindow(window_)) ::DestroyWindow(window_);
    ::UnregisterClassW(kClass, ::GetModuleHandleW(nullptr));
}

int HostWindow::told(UINT message) const {
    const auto found = told_.find(message);
    return found == told_.end() ? 0 : found->second;
}

LRESULT CALLBACK HostWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* const self = reinterpret_cast<HostWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr) {
        ++self->told_[message];
        if (const auto found = self->answers_.find(message); found != self->answers_.end()) return found->second;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

HWND frontDialog() {
    HWND found = nullptr;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM result) WINAPI -> BOOL {
            if (!::IsWindowVisible(window) || !::IsWindowEnabled(window) || classOf(window) != L"#32770") return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::vector<std::wstring> childTexts(HWND window) {
    std::vector<std::wstring> texts;
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (::IsWindowVisible(child)) texts.push_back(textOf(child));
    }
    return texts;
}

HWND childWithText(HWND window, const std::wstring& text) {
    for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (textOf(child) == text) return child;
    }
    return nullptr;
}

void pressKey(WPARAM key) {
    HWND target = ::GetFocus();
    if (!::IsChild(frontDialog(), target)) target = frontDialog();
    ::PostMessageW(target, WM_KEYDOWN, key, 1);
    ::PostMessageW(target, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void runMessages() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
}

OnDialog::OnDialog(std::function<void(HWND dialog)> act)
    : act_(std::move(act)), timer_(::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnDialog::tick)) {
    waiting = this;
}

OnDialog::~OnDialog() {
    waiting = nullptr;
    ::KillTimer(nullptr, timer_);
    EXPECT_NE(dialog_, nullptr) << "no dialog came";
}

void CALLBACK OnDialog::tick(HWND, UINT, UINT_PTR, DWORD) {
    if (waiting == nullptr) return;
    OnDialog& self = *waiting;
    if (self.dialog_ == nullptr) {
        self.dialog_ = frontDialog();
        if (self.dialog_ != nullptr) self.act_(self.dialog_);
        return;
    }
    constexpr int kPatience = 300;
    if (++self.ticksSince_ == kPatience && ::IsWindowVisible(self.dialog_)) {
        ADD_FAILURE() << "the dialog did not end";
        ::EndDialog(self.dialog_, 0);
    }
}

}  // namespace archiver::testing
