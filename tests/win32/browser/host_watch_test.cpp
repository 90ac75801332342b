#include "browser/win32/host_watch.h"

#include <gtest/gtest.h>

#include <memory>

#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

class HostWatchTest : public testing::Test, private HostSizeListener {
protected:
    void onHostSized() override {
        ++heard_;
        if (closesWatch_) watch_.reset();
    }
    void resize(int width) {
        ::SetWindowPos(host_.get(), nullptr, 0, 0, width, 100, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        if (watch_) watch_->onTimer(HostWatch::kTimer);
    }
    void start() { watch_->start(window_.get(), host_.get(), *this); }

    TestWindow window_ = makeWindow(L"STATIC", WS_POPUP);
    TestWindow host_ = makeWindow(L"STATIC", WS_POPUP);
    std::unique_ptr<HostWatch> watch_ = std::make_unique<HostWatch>();
    int heard_ = 0;
    bool closesWatch_ = false;
};

TEST_F(HostWatchTest, HearsOfEachNewSize) {
    start();
    resize(300);
    resize(400);
    EXPECT_EQ(heard_, 2);
}

TEST_F(HostWatchTest, LooksByItself) {
    start();
    ::SetWindowPos(host_.get(), nullptr, 0, 0, 300, 100, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    MSG message;
    while (::GetMessageW(&message, window_.get(), WM_TIMER, WM_TIMER) > 0 && message.wParam != HostWatch::kTimer) {
    }
    watch_->onTimer(message.wParam);
    EXPECT_EQ(heard_, 1);
}

TEST_F(HostWatchTest, HearsNothingOfTheSameSizeNorByOtherTimers) {
    resize(300);
    start();
    resize(300);
    ::SetWindowPos(host_.get(), nullptr, 0, 0, 400, 100, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    watch_->onTimer(HostWatch::kTimer + 1);
    EXPECT_EQ(heard_, 0);
}

TEST_F(HostWatchTest, HearsNothingOfAMinimisedHost) {
    start();
    ::ShowWindow(host_.get(), SW_SHOWMINNOACTIVE);
    ASSERT_TRUE(::IsIconic(host_.get()));
    watch_->onTimer(HostWatch::kTimer);
    EXPECT_EQ(heard_, 0);
}

// A host may unload the component within its own procedure.
TEST_F(HostWatchTest, LeavesNothingInTheHost) {
    const LONG_PTR before = ::GetWindowLongPtrW(host_.get(), GWLP_WNDPROC);
    start();
    EXPECT_EQ(::GetWindowLongPtrW(host_.get(), GWLP_WNDPROC), before);
}

TEST_F(HostWatchTest, EndsWithItsObject) {
    start();
    watch_.reset();
    resize(300);
    EXPECT_EQ(heard_, 0);
}

TEST_F(HostWatchTest, StartsOnceOnly) {
    start();
    start();
    resize(300);
    EXPECT_EQ(heard_, 1);
}

TEST_F(HostWatchTest, OutlivesTheHost) {
    start();
    host_.reset();
    watch_.reset();
    EXPECT_EQ(heard_, 0);
}

TEST_F(HostWatchTest, MayEndWhileItHears) {
    closesWatch_ = true;
    start();
    resize(300);
    resize(400);
    EXPECT_EQ(heard_, 1);
}

}  // namespace
}  // namespace tovar::test
