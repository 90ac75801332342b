#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tovar::test {

/// @return the menu that is open and lies above all others; null = none
inline HMENU openMenu() {
    const HWND window = ::FindWindowW(L"#32768", nullptr);
    constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
    if (window == nullptr || !::IsWindowVisible(window)) return nullptr;
    return reinterpret_cast<HMENU>(::SendMessageW(window, kGetMenu, 0, 0));
}

inline std::wstring textOfEntry(HMENU menu, int place) {
    std::array<wchar_t, 128> text{};
    ::GetMenuStringW(menu, static_cast<UINT>(place), text.data(), static_cast<int>(text.size()), MF_BYPOSITION);
    return text.data();
}

/// The texts of a menu from top to bottom; empty ones for lines.
inline std::vector<std::wstring> textsOf(HMENU menu) {
    std::vector<std::wstring> texts;
    for (int place = 0; place < ::GetMenuItemCount(menu); ++place) texts.push_back(textOfEntry(menu, place));
    return texts;
}

inline MENUITEMINFOW entryOf(HMENU menu, int command) {
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STATE | MIIM_FTYPE | MIIM_SUBMENU;
    EXPECT_NE(::GetMenuItemInfoW(menu, static_cast<UINT>(command), FALSE, &item), FALSE) << command;
    return item;
}
inline bool isEntryEnabled(HMENU menu, int command) {
    return (entryOf(menu, command).fState & (MFS_DISABLED | MFS_GRAYED)) == 0;
}

/// Does one thing after the other while menus are open, from a timer that the menus' own message loop lets run. A step
/// is done once its condition holds. What is open after the last step is closed.
class MenuDriver {
public:
    struct Step {
        std::function<bool()> ready;
        std::function<void()> act;
    };

    explicit MenuDriver(std::vector<Step> steps) : steps_(std::move(steps)) {
        current_ = this;
        timer_ = ::SetTimer(nullptr, 0, kInterval, &MenuDriver::onTimer);
    }
    ~MenuDriver() {
        ::KillTimer(nullptr, timer_);
        current_ = nullptr;
        EXPECT_EQ(done_, steps_.size()) << "steps that were done";
    }
    MenuDriver(const MenuDriver&) = delete;
    MenuDriver& operator=(const MenuDriver&) = delete;

    /// A step for when a menu is open, whichever it is.
    static Step whenOpen(std::function<void(HMENU)> act) {
        return {[] { return openMenu() != nullptr; }, [act = std::move(act)] { act(openMenu()); }};
    }
    /// Presses a key in the open menu.
    static Step key(HWND owner, WORD key) {
        return whenOpen([=](HMENU) { ::PostMessageW(owner, WM_KEYDOWN, key, 0); });
    }
    static Step letter(HWND owner, wchar_t letter) {
        return whenOpen([=](HMENU) { ::PostMessageW(owner, WM_CHAR, letter, 0); });
    }

private:
    static constexpr UINT kInterval = 10;       // milliseconds
    static constexpr int kMostIntervals = 500;  // for one step

    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current_ != nullptr) current_->next();
    }
    void next() {
        if (done_ == steps_.size() || ++waited_ > kMostIntervals) {
            if (openMenu() != nullptr) ::EndMenu();
            return;
        }
        if (!steps_[done_].ready()) return;
        waited_ = 0;
        steps_[done_++].act();
    }

    static inline MenuDriver* current_ = nullptr;
    std::vector<Step> steps_;
    std::size_t done_ = 0;
    int waited_ = 0;
    UINT_PTR timer_ = 0;
};

}  // namespace tovar::test
