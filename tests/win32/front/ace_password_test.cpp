#include <gtest/gtest.h>
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <utility>

#include "browser/win32/browser_controls.h"
#include "browser/win32/work_dialog_controls.h"
#include "win32/front/support/component_fixture.h"

namespace tovar {
namespace {

/// Answers the password dialogs of this thread, one after the other.
class PasswordUser {
public:
    using Step = std::function<void(HWND dialog)>;

    explicit PasswordUser(std::deque<Step> steps) : steps_(std::move(steps)) {
        current() = this;
        timer_ = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &onTimer);
    }
    ~PasswordUser() {
        ::KillTimer(nullptr, timer_);
        current() = nullptr;
        EXPECT_TRUE(steps_.empty()) << "too few dialogs came";
    }
    PasswordUser(const PasswordUser&) = delete;
    PasswordUser& operator=(const PasswordUser&) = delete;

private:
    static PasswordUser*& current() {
        static PasswordUser* user = nullptr;
        return user;
    }
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        const HWND dialog = ::FindWindowW(L"#32770", L"Password");
        PasswordUser* const self = current();
        if (self == nullptr || dialog == nullptr || dialog == self->answered_ || !::IsWindowVisible(dialog)) return;
        self->answered_ = dialog;
        if (self->steps_.empty()) {
            ADD_FAILURE() << "too many dialogs came";
            ::EndDialog(dialog, IDCANCEL);
            return;
        }
        const Step step = std::move(self->steps_.front());
        self->steps_.pop_front();
        step(dialog);
    }

    std::deque<Step> steps_;
    HWND answered_ = nullptr;
    UINT_PTR timer_ = 0;
};

class AcePasswordInHost : public test::ComponentFixture {
protected:
    /// Opens the browser's first row, and lets messages run until so many message boxes were shown.
    void openFirstRow(std::size_t untilBoxes) {
        const HWND list = ::GetDlgItem(host.browser(), LV1);
        ASSERT_NE(list, nullptr);
        LVITEMW item{};
        item.state = item.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
        ::SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
        ::SendMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
        const ULONGLONG deadline = ::GetTickCount64() + 20000;
        while (boxes.seen.size() < untilBoxes && ::GetTickCount64() < deadline) {
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
            test::runMessages();
        }
        test::runMessages();
    }
};

TEST_F(AcePasswordInHost, IsAskedForWithTheHostsFontUntilTheUserGivesUp) {
    // With three members, all under one password; made by another encoder.
    const std::wstring archive = folder / L"secret.ace";
    std::filesystem::copy_file(test::programFolder() / L"data" / L"ace" / L"encrypted.ace", archive);
    test::Value result;
    ASSERT_EQ(object->SetFont(makeBstr(L"Courier New").get(), 0, result.get()), S_OK);
    ASSERT_TRUE(open(archive));
    const PasswordUser user({
        [&](HWND dialog) {
            wchar_t named[MAX_PATH] = L"";
            ::GetDlgItemTextW(dialog, IDC_LBL_ARCHIVE, named, MAX_PATH);
            EXPECT_EQ(std::filesystem::path(named).filename(), L"secret.ace");
            LOGFONTW font{};
            ::GetObjectW(reinterpret_cast<HFONT>(::SendDlgItemMessageW(dialog, IDC_TXT_PASSWORD, WM_GETFONT, 0, 0)),
                         sizeof font, &font);
            EXPECT_EQ(std::wstring(font.lfFaceName), L"Courier New");
            EXPECT_EQ(::GetWindow(dialog, GW_OWNER), host.window());
            EXPECT_FALSE(::IsWindowEnabled(host.window()));
            ::SetDlgItemTextW(dialog, IDC_TXT_PASSWORD, L"surely not this one");
            ::PostMessageW(::GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
        },
        [](HWND dialog) { ::PostMessageW(::GetDlgItem(dialog, IDCANCEL), BM_CLICK, 0, 0); },
    });
    openFirstRow(2);
    ASSERT_EQ(boxes.seen.size(), 2U);
    EXPECT_EQ(boxes.seen[0].title, L"ACE Message");
    EXPECT_EQ(boxes.seen[0].text, L"Password is not correct ! Try it again.");
    EXPECT_TRUE(boxes.seen[0].exclamation);
    EXPECT_EQ(boxes.seen[1].title, L"ACE Message");
    EXPECT_TRUE(boxes.seen[1].text.starts_with(L"Can not extract:\r\n"));
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_TRUE(busy()) << "the browser is still there";
}

}  // namespace
}  // namespace tovar
