#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <deque>
#include <functional>
#include <string>

#include "win32/dialogs/work_dialogs.h"

namespace tovar::test {

/// Answers dialogs and message boxes of this thread, one after the other, each within its own message loop. One that
/// nobody foresaw is a failure and is cancelled, and so is one that was foreseen and does not come.
class Conversation {
public:
    using Step = std::function<void(HWND dialog)>;

    explicit Conversation(std::deque<Step> steps) : steps_(std::move(steps)) {
        current() = this;
        timer_ = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &onTimer);
    }
    ~Conversation() {
        ::KillTimer(nullptr, timer_);
        current() = nullptr;
        EXPECT_TRUE(steps_.empty()) << steps_.size() << " dialogs did not come";
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    /// Text of a message box, or empty.
    static std::wstring boxText(HWND dialog) {
        constexpr int kTextId = 0xFFFF;
        const HWND text = ::GetDlgItem(dialog, kTextId);
        return text == nullptr ? std::wstring() : textOf(text);
    }

private:
    static Conversation*& current() {
        static Conversation* conversation = nullptr;
        return conversation;
    }
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current() != nullptr) current()->look();
    }
    void look() {
        constexpr int kPatience = 500;
        const HWND dialog = archiver::testing::frontDialog();
        if (dialog == nullptr) return;
        if (dialog == answered_) {
            if (++ticks_ < kPatience) return;
            ADD_FAILURE() << "a dialog did not end";
            ::EndDialog(dialog, IDCANCEL);
            return;
        }
        answered_ = dialog;
        ticks_ = 0;
        if (steps_.empty()) {
            ADD_FAILURE() << "nobody expected this dialog";
            ::EndDialog(dialog, IDCANCEL);
            return;
        }
        const Step step = std::move(steps_.front());
        steps_.pop_front();
        step(dialog);
    }

    std::deque<Step> steps_;
    HWND answered_ = nullptr;
    int ticks_ = 0;
    UINT_PTR timer_ = 0;
};

}  // namespace tovar::test
