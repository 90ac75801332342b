#include "win32/host/host_fixture.h"
#include "win32/system/support/process_marks.h"

namespace tovar::test {
namespace {

/// How the host's window and the browser in it go and change.
class SampleHostWindow : public HostFixture {
protected:
    static bool quitPosted() {
        MSG message;
        return ::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
    }
    static RECT placeOf(HWND which) {
        RECT place{};
        ::GetWindowRect(which, &place);
        return place;
    }
};

TEST_F(SampleHostWindow, ClosesWithTheBrowserOpen) {
    doubleClick(L"small.zip");
    const HWND shown = browser().window();
    ::SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(::IsWindow(shown));
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(::GetModuleHandleW(L"TovarEx.dll"), nullptr) << "the component goes with its host";
    EXPECT_TRUE(quitPosted());
}

TEST_F(SampleHostWindow, ClosesWithoutOne) {
    ::SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_TRUE(quitPosted());
}

TEST_F(SampleHostWindow, OpensAgainAfterItsUserClosedTheBrowser) {
    for (const wchar_t* const name : {L"small.zip", L"small.tar.gz", L"small.zip"}) {
        doubleClick(name);
        ASSERT_TRUE(browser().isVisible());
        EXPECT_EQ(browser().title(), name);
        ::PostMessageW(browser().window(), WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_TRUE(waitUntil([this] { return !browser().isThere(); }));
        EXPECT_TRUE(::IsWindowEnabled(window));
    }
}

TEST_F(SampleHostWindow, CanBeDestroyedWithTheBrowserOpen) {
    doubleClick(L"small.zip");
    const HWND shown = browser().window();
    ::DestroyWindow(window);
    EXPECT_FALSE(::IsWindow(shown));
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_TRUE(quitPosted());
    EXPECT_NE(::GetModuleHandleW(L"TovarEx.dll"), nullptr) << "the object is still held";
    host.reset();
    EXPECT_EQ(::GetModuleHandleW(L"TovarEx.dll"), nullptr);
}

TEST_F(SampleHostWindow, CanGoWithItsObjectWhileTheBrowserIsOpen) {
    doubleClick(L"small.zip");
    const HWND shown = browser().window();
    host.reset();
    EXPECT_FALSE(::IsWindow(shown));
}

TEST_F(SampleHostWindow, CanBeClosedWhileAMessageIsShown) {
    writeFile(folder, L"broken.zip", "no archive at all");
    refresh();
    boxes.whileUp = [this] { ::SendMessageW(window, WM_CLOSE, 0, 0); };
    doubleClick(L"broken.zip");
    EXPECT_EQ(boxes.seen.size(), 1U);
    EXPECT_TRUE(waitUntil([this] { return !::IsWindow(window); }));
}

TEST_F(SampleHostWindow, CanBeDestroyedWhileAMessageIsShown) {
    writeFile(folder, L"broken.zip", "no archive at all");
    refresh();
    boxes.whileUp = [this] { ::DestroyWindow(window); };
    doubleClick(L"broken.zip");
    EXPECT_EQ(boxes.seen.size(), 1U);
    EXPECT_FALSE(::IsWindow(window));
}

TEST_F(SampleHostWindow, LaysItselfOutWhenItIsResized) {
    doubleClick(L"small.zip");
    const RECT before = placeOf(browser().window());
    for (const SIZE size : {SIZE{1300, 900}, SIZE{700, 500}, SIZE{300, 150}, SIZE{1000, 700}}) {
        ::SetWindowPos(window, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOMOVE);
        RECT client{};
        ::GetClientRect(window, &client);
        RECT listPlace = placeOf(list());
        ::MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&listPlace), 2);
        EXPECT_EQ(listPlace.left, 0);
        EXPECT_EQ(listPlace.right, client.right);
        EXPECT_LE(listPlace.bottom, client.bottom);
        EXPECT_TRUE(browser().isVisible());
    }
    const RECT after = placeOf(browser().window());
    EXPECT_TRUE(::EqualRect(&after, &before)) << "the browser keeps the place that its user gave it";
    EXPECT_EQ(browser().rowCount(), 2);
}

TEST_F(SampleHostWindow, LetsTheBrowserBeMovedAndSized) {
    doubleClick(L"small.zip");
    const HWND shown = browser().window();
    ::SetWindowPos(shown, nullptr, 10, 20, 500, 330, SWP_NOZORDER);
    RECT client{};
    ::GetClientRect(shown, &client);
    for (const HWND pane : {browser().list(), browser().tree()}) {
        RECT place = placeOf(pane);
        ::MapWindowPoints(nullptr, shown, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_GE(place.left, 0);
        EXPECT_LE(place.right, client.right);
        EXPECT_LE(place.bottom, client.bottom);
        EXPECT_GT(place.right, place.left);
    }
    EXPECT_EQ(::GetParent(shown), window);
}

TEST_F(SampleHostWindow, OpensWhileItIsMinimized) {
    ::ShowWindow(window, SW_MINIMIZE);
    ASSERT_TRUE(::IsIconic(window));
    ASSERT_TRUE(host->open(zip));
    ::ShowWindow(window, SW_RESTORE);
    const RECT outer = placeOf(window), inner = placeOf(browser().window());
    EXPECT_EQ(inner.right - inner.left, (outer.right - outer.left) * 6 / 10);
    EXPECT_TRUE(browser().isVisible());
}

TEST_F(SampleHostWindow, GivesBackWhatItUsed) {
    stop();
    const auto once = [this](UINT message) {
        start();
        doubleClick(L"small.zip");
        ASSERT_TRUE(browser().isVisible());
        if (message == WM_CLOSE) ::SendMessageW(window, message, 0, 0);
        if (message == WM_DESTROY) ::DestroyWindow(window);
        stop();
    };
    const UINT ways[] = {WM_CLOSE, WM_DESTROY, WM_NULL};
    for (const UINT way : ways) ASSERT_NO_FATAL_FAILURE(once(way));
    const ResourceMarks before = resourceMarks();
    for (int time = 0; time < 4; ++time) {
        for (const UINT way : ways) ASSERT_NO_FATAL_FAILURE(once(way));
    }
    const ResourceMarks after = resourceMarks();
    EXPECT_LE(after.gdiHandles, before.gdiHandles + 3);
    EXPECT_LE(after.kernelHandles, before.kernelHandles + 3);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.menus, before.menus);
    EXPECT_EQ(after.icons, before.icons);
}

TEST_F(SampleHostWindow, TakesNoSecondCommandWhileAMessageIsShown) {
    writeFile(folder, L"broken.zip", "no archive at all");
    refresh();
    boxes.whileUp = [this] {
        doubleClick(L"small.zip");
        click(L"&Up");
    };
    doubleClick(L"broken.zip");
    EXPECT_EQ(boxes.seen.size(), 1U);
    EXPECT_FALSE(browser().isThere());
    EXPECT_EQ(path(), folder.path());
}

}  // namespace
}  // namespace tovar::test
