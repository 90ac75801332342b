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
    void resize(int width) const {
        ::SetWindowPos(host_.get(), nullptr, 0, 0, width, 100, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    void start() { watch_->start(host_.get(), *this); }

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

TEST_F(HostWatchTest, HearsNothingOfAMinimisedHost) {
    start();
    ::SendMessageW(host_.get(), WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(heard_, 0);
}

TEST_F(HostWatchTest, LetsTheHostGo) {
    const LONG_PTR before = ::GetWindowLongPtrW(host_.get(), GWLP_WNDPROC);
    start();
    watch_.reset();
    resize(300);
    EXPECT_EQ(heard_, 0);
    EXPECT_EQ(::GetWindowLongPtrW(host_.get(), GWLP_WNDPROC), before);
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
