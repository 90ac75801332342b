#include "shell/win32/system_message_boxes.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

namespace tovar {
namespace {

constexpr int kTextControl = 0xFFFF;
constexpr int kIconControl = 1088;
constexpr UINT kTickMilliseconds = 10;
constexpr UINT kGetIdealSize = 0x1601;  // BCM_GETIDEALSIZE: only version 6 of the controls answers it

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// What a user would have seen of a box.
struct Seen {
    HWND box = nullptr, owner = nullptr, watched = nullptr;
    std::wstring text, title;
    bool watchedEnabled = true, ok = false, other = false, version6 = false;
    HICON icon = nullptr;
};

// Answers the message box that comes up in this thread; the timer runs in the box's own message loop.
class Answerer {
public:
    Answerer() {
        seen = Seen();
        timer_ = ::SetTimer(nullptr, 0, kTickMilliseconds, &Answerer::tick);
    }
    ~Answerer() { ::KillTimer(nullptr, timer_); }
    Answerer(const Answerer&) = delete;
    Answerer& operator=(const Answerer&) = delete;

    static inline Seen seen;

private:
    static BOOL CALLBACK findBox(HWND window, LPARAM found) {
        wchar_t name[16] = {};
        ::GetClassNameW(window, name, 16);
        if (std::wstring_view(name) != L"#32770" || ::IsWindowVisible(window) == FALSE) return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }

    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
        HWND box = nullptr;
        ::EnumThreadWindows(::GetCurrentThreadId(), &findBox, reinterpret_cast<LPARAM>(&box));
        if (box == nullptr || seen.box != nullptr) return;
        seen.box = box;
        seen.owner = ::GetWindow(box, GW_OWNER);
        seen.title = textOf(box);
        seen.text = textOf(::GetDlgItem(box, kTextControl));
        seen.ok = ::GetDlgItem(box, IDOK) != nullptr;
        SIZE ideal{};
        seen.version6 = ::SendDlgItemMessageW(box, IDOK, kGetIdealSize, 0, reinterpret_cast<LPARAM>(&ideal)) != FALSE;
        seen.other = ::GetDlgItem(box, IDNO) != nullptr || ::GetDlgItem(box, IDYES) != nullptr;
        seen.icon = reinterpret_cast<HICON>(::SendDlgItemMessageW(box, kIconControl, STM_GETICON, 0, 0));
        seen.watchedEnabled = seen.watched == nullptr || ::IsWindowEnabled(seen.watched) != FALSE;
        ::PostMessageW(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }

    UINT_PTR timer_ = 0;
};

// A window that a box can belong to, or stand in front of.
class OwnerWindow {
public:
    OwnerWindow()
        : window_(::CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                    nullptr, nullptr, nullptr)) {}
    ~OwnerWindow() { ::DestroyWindow(window_); }
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    [[nodiscard]] HWND get() const { return window_; }

private:
    HWND window_;
};

TEST(SystemMessageBoxes, ShowTextAndTitleWithAnOkButton) {
    const OwnerWindow owner;
    const Answerer answerer;
    SystemMessageBoxes().show(owner.get(), L"The text \u8868.\r\nAnd more.", L"ZIP Message", MessageIcon::Exclamation);
    EXPECT_EQ(Answerer::seen.text, L"The text \u8868.\r\nAnd more.");
    EXPECT_EQ(Answerer::seen.title, L"ZIP Message");
    EXPECT_TRUE(Answerer::seen.ok);
    EXPECT_FALSE(Answerer::seen.other);
    EXPECT_EQ(Answerer::seen.owner, owner.get());
    EXPECT_EQ(Answerer::seen.icon, ::LoadIconW(nullptr, IDI_EXCLAMATION));
    EXPECT_FALSE(::IsWindow(Answerer::seen.box)) << "show returns when the user has answered";
}

TEST(SystemMessageBoxes, KnowTheInformationIcon) {
    const Answerer answerer;
    SystemMessageBoxes().show(nullptr, L"text", L"title", MessageIcon::Information);
    EXPECT_EQ(Answerer::seen.icon, ::LoadIconW(nullptr, IDI_INFORMATION));
}

TEST(SystemMessageBoxes, HoldTheThreadsWindowsWithoutAnOwner) {
    const OwnerWindow other;
    const Answerer answerer;
    Answerer::seen.watched = other.get();
    SystemMessageBoxes().show(nullptr, L"text", L"title", MessageIcon::Exclamation);
    EXPECT_NE(Answerer::seen.box, nullptr);
    EXPECT_FALSE(Answerer::seen.watchedEnabled);
    EXPECT_TRUE(::IsWindowEnabled(other.get()));
}

TEST(SystemMessageBoxes, FollowTheDesktopsVisualStyleWhateverTheHostsProgramSays) {
    const Answerer answerer;
    SystemMessageBoxes().show(nullptr, L"text", L"title", MessageIcon::Exclamation);
    EXPECT_TRUE(Answerer::seen.version6);
}

}  // namespace
}  // namespace tovar
