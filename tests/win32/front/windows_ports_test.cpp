#include "front/win32/windows_ports.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "shell/win32/handles.h"

namespace tovar {
namespace {

HWND makeWindow(DWORD style, int width, int height) {
    return ::CreateWindowExW(0, L"STATIC", L"", style, 10, 20, width, height, nullptr, nullptr, nullptr, nullptr);
}

DWORD styleOf(HWND window) { return static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE)); }

class WindowSystemTest : public testing::Test {
protected:
    UniqueWindow host{makeWindow(WS_OVERLAPPEDWINDOW, 800, 600)};
    WindowsWindowSystem windows;
};

TEST_F(WindowSystemTest, KnowsWindows) {
    EXPECT_TRUE(windows.isWindow(host.get()));
    EXPECT_FALSE(windows.isWindow(nullptr));
    const HWND gone = makeWindow(WS_POPUP, 10, 10);
    ::DestroyWindow(gone);
    EXPECT_FALSE(windows.isWindow(gone));
}

TEST_F(WindowSystemTest, MeasuresTheWholeWindow) { EXPECT_EQ(windows.sizeOf(host.get()), (PixelSize{800, 600})); }

TEST_F(WindowSystemTest, MeasuresAMinimizedWindowAsItWillBe) {
    ::ShowWindow(host.get(), SW_SHOWMINNOACTIVE);
    ASSERT_TRUE(::IsIconic(host.get()));
    EXPECT_EQ(windows.sizeOf(host.get()), (PixelSize{800, 600}));
}

TEST_F(WindowSystemTest, TurnsAWindowIntoAChild) {
    const UniqueWindow window(makeWindow(WS_POPUP | WS_CAPTION, 300, 200));
    EXPECT_TRUE(windows.setParent(window.get(), host.get()));
    EXPECT_EQ(::GetParent(window.get()), host.get());
    EXPECT_EQ(styleOf(window.get()) & (WS_CHILD | WS_POPUP | WS_CAPTION), static_cast<DWORD>(WS_CHILD | WS_CAPTION));
    EXPECT_TRUE(::IsChild(host.get(), window.get()));
}

TEST_F(WindowSystemTest, LeavesAWindowWithAMenuItsMenu) {
    const HMENU menu = ::CreateMenu();
    ::AppendMenuW(menu, MF_STRING, 1, L"x");
    const UniqueWindow window(makeWindow(WS_OVERLAPPEDWINDOW, 300, 200));
    ASSERT_TRUE(::SetMenu(window.get(), menu));
    EXPECT_TRUE(windows.setParent(window.get(), host.get()));
    EXPECT_EQ(::GetAncestor(window.get(), GA_PARENT), host.get());
    EXPECT_EQ(::GetMenu(window.get()), menu);
}

TEST_F(WindowSystemTest, ChangesNothingWhenTheParentIsGone) {
    const UniqueWindow window(makeWindow(WS_POPUP | WS_CAPTION, 300, 200));
    const DWORD before = styleOf(window.get());
    EXPECT_FALSE(windows.setParent(window.get(), reinterpret_cast<HWND>(LONG_PTR{0x7FFF1234})));
    EXPECT_EQ(styleOf(window.get()), before);
    EXPECT_EQ(::GetParent(window.get()), nullptr);
}

TEST_F(WindowSystemTest, MovesInsideTheParent) {
    const UniqueWindow window(makeWindow(WS_POPUP, 300, 200));
    ASSERT_TRUE(windows.setParent(window.get(), host.get()));
    windows.move(window.get(), {160, 120}, {480, 360});
    RECT place{};
    ::GetWindowRect(window.get(), &place);
    ::MapWindowPoints(nullptr, host.get(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, 160);
    EXPECT_EQ(place.top, 120);
    EXPECT_EQ(windows.sizeOf(window.get()), (PixelSize{480, 360}));
}

TEST(MousePointerTest, ShowsTheHourglassAndTakesItBack) {
    WindowsMousePointer pointer;
    pointer.show(PointerShape::Hourglass);
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
    pointer.show(PointerShape::Default);
    EXPECT_NE(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
}

bool dispatched = false;

LRESULT CALLBACK notice(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) dispatched = true;
    return ::DefWindowProcW(window, message, wParam, lParam);
}

TEST(MessagePumpTest, DispatchesWhatWaits) {
    const UniqueWindow window(makeWindow(WS_POPUP, 10, 10));
    ::SetWindowLongPtrW(window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&notice));
    dispatched = false;
    ::PostMessageW(window.get(), WM_APP, 0, 0);
    WindowsMessagePump pump;
    EXPECT_FALSE(dispatched);
    pump.processPending();
    EXPECT_TRUE(dispatched);
}

TEST(MessagePumpTest, LeavesTheEndOfTheProgramToItsOwner) {
    WindowsMessagePump pump;
    ::PostQuitMessage(5);
    pump.processPending();
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5U);
}

}  // namespace
}  // namespace tovar
