#pragma once
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "win32/folders/folder_room.h"

namespace tovar::test {

/// Does things with a modal dialog of this thread, one after the other, each once the dialog of that class and title is
/// there. Lives while the dialog is shown.
class DialogDriver {
public:
    using Step = std::function<void(HWND dialog)>;

    DialogDriver() {
        current() = this;
        timer_ = ::SetTimer(nullptr, 0, 10, &DialogDriver::onTimer);
        end_ = ::GetTickCount64() + 20000;
    }
    ~DialogDriver() {
        ::KillTimer(nullptr, timer_);
        current() = nullptr;
        EXPECT_EQ(next_, steps_.size()) << "the dialog went before all was done";
    }
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    /// @param title  of the dialog; empty for one with any title
    void then(std::wstring title, Step step) { steps_.push_back({std::move(title), std::move(step)}); }

private:
    struct Planned {
        std::wstring title;
        Step step;
    };

    static DialogDriver*& current() {
        static DialogDriver* driver = nullptr;
        return driver;
    }
    static HWND find(const std::wstring& title) {
        struct Search {
            const std::wstring& title;
            HWND found;
        } search{title, nullptr};
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM data) WINAPI -> BOOL {
                auto& wanted = *reinterpret_cast<Search*>(data);
                wchar_t name[16] = L"";
                ::GetClassNameW(window, name, 16);
                if (std::wstring_view(name) != L"#32770" || !::IsWindowVisible(window)) return TRUE;
                if (!wanted.title.empty() && textOf(window) != wanted.title) return TRUE;
                wanted.found = window;
                return FALSE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current() != nullptr) current()->goOn();
    }
    void goOn() {
        if (inside_ || next_ >= steps_.size()) return;
        const HWND dialog = find(steps_[next_].title);
        if (dialog == nullptr) {
            if (::GetTickCount64() > end_) giveUp();
            return;
        }
        inside_ = true;
        const Step step = steps_[next_++].step;
        step(dialog);
        inside_ = false;
    }
    /// Closes what is open, so that the test ends.
    static void giveUp() {
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM) WINAPI -> BOOL {
                if (::IsWindowVisible(window)) ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
                return TRUE;
            },
            0);
    }

    UINT_PTR timer_ = 0;
    ULONGLONG end_ = 0;
    std::vector<Planned> steps_;
    std::size_t next_ = 0;
    bool inside_ = false;
};

inline void click(HWND dialog, int id) { ::PostMessageW(::GetDlgItem(dialog, id), BM_CLICK, 0, 0); }
inline void pressEnter(HWND control) {
    ::PostMessageW(control, WM_KEYDOWN, VK_RETURN, 0x001C0001);
    ::PostMessageW(control, WM_KEYUP, VK_RETURN, static_cast<LPARAM>(0xC01C0001));
}

}  // namespace tovar::test
