#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace tovar::test {

/// Answers the message boxes of this thread and keeps what they said. One at a time.
class MessageBoxWatch {
public:
    struct Seen {
        std::wstring title, text;
        HWND owner = nullptr;
        bool information = false, exclamation = false;  ///< its icon
    };

    MessageBoxWatch() {
        current() = this;
        timer_ = ::SetTimer(nullptr, 0, 10, &onTimer);
    }
    ~MessageBoxWatch() {
        ::KillTimer(nullptr, timer_);
        current() = nullptr;
    }
    MessageBoxWatch(const MessageBoxWatch&) = delete;
    MessageBoxWatch& operator=(const MessageBoxWatch&) = delete;

    std::vector<Seen> seen;
    /// What happens while a box is up, before it is answered.
    std::function<void()> whileUp;

private:
    static constexpr int kTextId = 0xFFFF;

    static MessageBoxWatch*& current() {
        static MessageBoxWatch* watch = nullptr;
        return watch;
    }

    static std::wstring textOf(HWND window) {
        std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
        text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
        return text;
    }

    static bool hasIcon(HWND box, const wchar_t* name) {
        for (HWND child = nullptr; (child = ::FindWindowExW(box, child, L"Static", nullptr)) != nullptr;) {
            const LRESULT icon = ::SendMessageW(child, STM_GETICON, 0, 0);
            if (icon != 0) return reinterpret_cast<HICON>(icon) == ::LoadIconW(nullptr, name);
        }
        return false;
    }

    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &onWindow, 0);
    }

    static BOOL CALLBACK onWindow(HWND window, LPARAM) {
        wchar_t name[16] = L"";
        ::GetClassNameW(window, name, 16);
        const HWND text = ::GetDlgItem(window, kTextId);
        if (std::wstring(name) != L"#32770" || !::IsWindowVisible(window) || text == nullptr) return TRUE;
        MessageBoxWatch& self = *current();
        self.seen.push_back({textOf(window), textOf(text), ::GetWindow(window, GW_OWNER),
                             hasIcon(window, IDI_INFORMATION), hasIcon(window, IDI_EXCLAMATION)});
        if (self.whileUp) self.whileUp();
        ::SendMessageW(window, WM_COMMAND, IDOK, 0);
        return FALSE;
    }

    UINT_PTR timer_;
};

}  // namespace tovar::test
