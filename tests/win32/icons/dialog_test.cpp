#include "shell/win32/dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "shell/win32/message_map.h"
#include "win32/icons/test_dialog.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr UINT kRunScript = WM_APP;

/// Closes itself once its script has run.
class fTest final : public Dialog {
public:
    std::function<void(fTest&)> script;
    std::wstring text;
    bool cancelled = false;

    [[nodiscard]] HWND item(int id) const { return control(id); }
    [[nodiscard]] bool isOpen() const { return hwnd() != nullptr; }
    void click(int id) const { ::SendMessageW(control(id), BM_CLICK, 0, 0); }

private:
    void onLoad() override { ::PostMessageW(hwnd(), kRunScript, 0, 0); }
    std::optional<INT_PTR> onMessage(UINT message, WPARAM, LPARAM) override {
        if (message != kRunScript) return std::nullopt;
        script(*this);
        return TRUE;
    }
    bool onCommand(WPARAM wParam) override {
        static constexpr CommandRoute<fTest> routes[] = {
            {IDOK, BN_CLICKED, &fTest::onOk},
            {IDCANCEL, BN_CLICKED, &fTest::onCancel},
            {IDC_THROW, BN_CLICKED, &fTest::onThrow},
            {IDC_TEXT, EN_CHANGE, &fTest::onText},
        };
        return dispatchCommand(*this, routes, wParam);
    }
    void onOk() { ::EndDialog(hwnd(), IDOK); }
    void onCancel() {
        cancelled = true;
        ::EndDialog(hwnd(), IDCANCEL);
    }
    void onThrow() { throw std::runtime_error("trouble"); }
    void onText() { text = textOf(control(IDC_TEXT)); }
};

TEST(Dialog, RunsTheHandlersOfItsTable) {
    fTest dialog;
    dialog.script = [](fTest& self) {
        ::SetWindowTextW(self.item(IDC_TEXT), L"typed");
        self.click(IDOK);
    };
    EXPECT_EQ(dialog.showModal(nullptr, IDD_TEST, L""), IDOK);
    EXPECT_EQ(dialog.text, L"typed");
    EXPECT_FALSE(dialog.cancelled);
    EXPECT_FALSE(dialog.isOpen());
}

TEST(Dialog, IsCancelledByItsSystemMenu) {
    fTest dialog;
    dialog.script = [](fTest& self) { ::SendMessageW(::GetParent(self.item(IDOK)), WM_SYSCOMMAND, SC_CLOSE, 0); };
    EXPECT_EQ(dialog.showModal(nullptr, IDD_TEST, L""), IDCANCEL);
    EXPECT_TRUE(dialog.cancelled);
}

TEST(Dialog, LetsNothingThrownLeaveItsProcedure) {
    fTest dialog;
    dialog.script = [](fTest& self) {
        self.click(IDC_THROW);
        self.click(IDOK);
    };
    EXPECT_EQ(dialog.showModal(nullptr, IDD_TEST, L""), IDOK);
}

TEST(Dialog, GivesItsControlsTheHostsFont) {
    std::wstring face;
    fTest dialog;
    dialog.script = [&](fTest& self) {
        face = faceOf(self.item(IDC_TEXT));
        self.click(IDOK);
    };
    dialog.showModal(nullptr, IDD_TEST, L"Courier New");
    EXPECT_EQ(face, L"Courier New");
}

TEST(Dialog, CanBeShownAgain) {
    fTest dialog;
    dialog.script = [](fTest& self) { self.click(IDCANCEL); };
    EXPECT_EQ(dialog.showModal(nullptr, IDD_TEST, L"Courier New"), IDCANCEL);
    dialog.script = [](fTest& self) { self.click(IDOK); };
    EXPECT_EQ(dialog.showModal(nullptr, IDD_TEST, L""), IDOK);
}

TEST(Dialog, SaysWhenItCouldNotBeShown) {
    fTest dialog;
    EXPECT_EQ(dialog.showModal(nullptr, 999, L""), -1);
}

}  // namespace
}  // namespace tovar::test
