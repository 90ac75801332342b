#include "shell/win32/desktop_watch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

struct RecordingListener final : DesktopListener {
    void onDesktopChanged(UINT message, WPARAM wParam, LPARAM) override {
        messages.push_back(message);
        lastParameter = wParam;
    }
    std::vector<UINT> messages;
    WPARAM lastParameter = 0;
};

BOOL CALLBACK collect(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

TEST(DesktopWatch, TellsWhatTopLevelWindowsAreTold) {
    RecordingListener listener;
    DesktopWatch watch(listener);
    ASSERT_TRUE(watch.start());
    for (const UINT message : {WM_SETTINGCHANGE, WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_DISPLAYCHANGE, WM_TIMECHANGE}) {
        ::SendMessageW(watch.hwnd(), message, 42, 0);
    }
    EXPECT_EQ(listener.messages,
              (std::vector<UINT>{WM_SETTINGCHANGE, WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_DISPLAYCHANGE}));
    EXPECT_EQ(listener.lastParameter, 42U);
}

TEST(DesktopWatch, IsAmongTheWindowsThatAreTold) {
    RecordingListener listener;
    DesktopWatch watch(listener);
    ASSERT_TRUE(watch.start());
    std::vector<HWND> topLevel;
    ::EnumThreadWindows(::GetCurrentThreadId(), &collect, reinterpret_cast<LPARAM>(&topLevel));
    EXPECT_NE(std::find(topLevel.begin(), topLevel.end(), watch.hwnd()), topLevel.end());
    EXPECT_FALSE(::IsWindowVisible(watch.hwnd()));
}

TEST(DesktopWatch, HearsNothingOnceStopped) {
    RecordingListener listener;
    DesktopWatch watch(listener);
    ASSERT_TRUE(watch.start());
    const HWND window = watch.hwnd();
    watch.stop();
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(watch.hwnd(), nullptr);
}

}  // namespace
}  // namespace tovar::test
