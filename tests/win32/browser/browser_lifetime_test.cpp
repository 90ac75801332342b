#include <gtest/gtest.h>

#include <stdexcept>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class BrowserLifetimeTest : public BrowserFixture {
protected:
    void expectGone() {
        EXPECT_EQ(browser_->hWnd(), nullptr);
        EXPECT_EQ(timesUnloaded_, 1);
        EXPECT_FALSE(browser_->FillControl(L"\\"));
        browser_->suspendPainting(true);
        browser_->suspendPainting(false);
        browser_->showModeless();
        browser_->unload();
        EXPECT_EQ(timesUnloaded_, 1);
        browser_.reset();
        EXPECT_EQ(timesUnloaded_, 1);
    }
};

TEST_F(BrowserLifetimeTest, IsUnloadedOnceWhenItsUserClosesIt) {
    open({L"a"});
    ::SendMessageW(window(), WM_CLOSE, 0, 0);
    expectGone();
}

TEST_F(BrowserLifetimeTest, IsUnloadedOnceWhenItIsTold) {
    open({L"a"});
    browser_->unload();
    expectGone();
}

TEST_F(BrowserLifetimeTest, IsUnloadedOnceWhenTheHostsWindowDiesFirst) {
    open({L"a"});
    ::DestroyWindow(host_);
    expectGone();
}

TEST_F(BrowserLifetimeTest, IsUnloadedOnceWhenItsObjectIsDeleted) {
    open({L"a"});
    const HWND gone = window();
    browser_.reset();
    EXPECT_EQ(timesUnloaded_, 1);
    EXPECT_FALSE(::IsWindow(gone));
}

TEST_F(BrowserLifetimeTest, GivesTheDriverItsFormerOwnerBack) {
    driver_.setHWnd(host_);
    open({L"a"});
    EXPECT_EQ(driver_.hWnd(), window());
    browser_->unload();
    EXPECT_EQ(driver_.hWnd(), host_);
}

TEST_F(BrowserLifetimeTest, WaitsWithClosingUntilTheArchiveIsListed) {
    create();
    placeInHost();
    bool thereWhileListing = false;
    driver_.whileListing = [&] {
        ::SendMessageW(window(), WM_CLOSE, 0, 0);
        thereWhileListing = ::IsWindow(window()) != FALSE;
    };
    EXPECT_FALSE(browser_->FillControl(L"\\"));
    EXPECT_TRUE(thereWhileListing);
    expectGone();
}

TEST_F(BrowserLifetimeTest, SurvivesAHostThatDiesWhileTheArchiveIsListed) {
    create();
    placeInHost();
    driver_.whileListing = [&] { ::DestroyWindow(host_); };
    EXPECT_FALSE(browser_->FillControl(L"\\"));
    expectGone();
}

TEST_F(BrowserLifetimeTest, TurnsASecondFillingAway) {
    driver_.members = FakeDriver({L"a"}).members;
    create();
    bool nested = true;
    driver_.whileListing = [&] { nested = browser_->FillControl(L"\\"); };
    EXPECT_TRUE(browser_->FillControl(L"\\"));
    EXPECT_FALSE(nested);
    EXPECT_EQ(names(), Texts{L"a"});
}

TEST_F(BrowserLifetimeTest, LetsNothingThrownLeaveItsOperations) {
    create();
    driver_.whileListing = [] { throw std::runtime_error("trouble"); };
    EXPECT_FALSE(browser_->FillControl(L"\\"));
    EXPECT_NE(browser_->hWnd(), nullptr);
    driver_.whileListing = nullptr;
    EXPECT_TRUE(browser_->FillControl(L"\\"));
}

TEST_F(BrowserLifetimeTest, LetsTwoWindowsStandSideBySide) {
    open({L"a"});
    FakeDriver other({L"b"});
    int otherUnloaded = 0;
    {
        fArcMain second({L"C:\\files\\b.zip", &other, L"", L""}, {files_, desktop_, messages_, {}},
                        [&] { ++otherUnloaded; });
        ASSERT_NE(second.hWnd(), nullptr);
        EXPECT_TRUE(second.FillControl(L"\\"));
    }
    EXPECT_EQ(otherUnloaded, 1);
    EXPECT_EQ(names(), Texts{L"a"});
}

TEST_F(BrowserLifetimeTest, LeavesNothingBehind) {
    open({L"a"});  // what the system keeps for itself is there after the first time
    browser_.reset();
    const DWORD windows = ::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS);
    const DWORD graphics = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 8; ++i) {
        open({L"a"});
        browser_.reset();
    }
    EXPECT_LE(::GetGuiResources(::GetCurrentProcess(), GR_USEROBJECTS), windows + 5);
    EXPECT_LE(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS), graphics + 5);
}

}  // namespace
}  // namespace tovar::test
