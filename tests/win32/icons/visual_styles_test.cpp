#include "shell/win32/visual_styles.h"

#include <gtest/gtest.h>
// windows.h first
#include <commctrl.h>

#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr UINT kGetIdealSize = 0x1601;  // BCM_GETIDEALSIZE: only version 6 of the controls answers it

bool isVersion6(const TestWindow& button) {
    SIZE size{};
    return ::SendMessageW(button.get(), kGetIdealSize, 0, reinterpret_cast<LPARAM>(&size)) != FALSE;
}

TEST(VisualStyles, AreThoseOfVersionSixWhileTheyLastAndNoLonger) {
    const TestWindow before = makeWindow(L"BUTTON", WS_POPUP);
    EXPECT_FALSE(isVersion6(before));
    {
        const VisualStyles styles;
        EXPECT_TRUE(styles.active());
        EXPECT_TRUE(isVersion6(makeWindow(L"BUTTON", WS_POPUP)));
    }
    EXPECT_FALSE(isVersion6(makeWindow(L"BUTTON", WS_POPUP)));
}

}  // namespace
}  // namespace tovar::test
