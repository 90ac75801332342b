#include "front/win32/message_watch.h"

#include <gtest/gtest.h>

#include <functional>

#include "shell/win32/handles.h"

namespace tovar {
namespace {

std::function<void()> onMessage;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if ((message == WM_APP || message == WM_DESTROY) && onMessage) onMessage();
    return ::DefWindowProcW(window, message, wParam, lParam);
}

class MessageWatchTest : public testing::Test {
protected:
    MessageWatchTest()
        : window(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr)) {
        ::SetWindowLongPtrW(window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
        watch = MessageWatch::of(window.get());
    }
    ~MessageWatchTest() override { onMessage = nullptr; }

    UniqueWindow window;
    std::unique_ptr<MessageWatch> watch;
    int done = 0;
};

TEST_F(MessageWatchTest, RunsAnActionAtOnceWhenNothingGoesOn) {
    watch->whenIdle([&] { ++done; });
    EXPECT_EQ(done, 1);
}

TEST_F(MessageWatchTest, WaitsForTheMessageToEnd) {
    int doneMeanwhile = -1;
    onMessage = [&] {
        watch->whenIdle([&] { ++done; });
        doneMeanwhile = done;
    };
    ::SendMessageW(window.get(), WM_APP, 0, 0);
    EXPECT_EQ(doneMeanwhile, 0);
    EXPECT_EQ(done, 1);
    onMessage = nullptr;
    ::SendMessageW(window.get(), WM_APP, 0, 0);
    EXPECT_EQ(done, 1) << "once";
}

TEST_F(MessageWatchTest, WaitsForTheOutermostMessage) {
    int level = 0, doneAfterInner = -1;
    onMessage = [&] {
        if (++level == 2) {
            watch->whenIdle([&] { ++done; });
        } else {
            ::SendMessageW(window.get(), WM_APP, 0, 0);
            doneAfterInner = done;
        }
    };
    ::SendMessageW(window.get(), WM_APP, 0, 0);
    EXPECT_EQ(doneAfterInner, 0);
    EXPECT_EQ(done, 1);
}

TEST_F(MessageWatchTest, WaitsForTheLastMessageOfAWindowThatGoes) {
    onMessage = [&] { watch->whenIdle([&] { ++done; }); };
    window.reset();
    EXPECT_EQ(done, 1);
    onMessage = nullptr;
    watch->whenIdle([&] { ++done; });
    EXPECT_EQ(done, 2) << "the window is gone: nothing can go on";
}

TEST_F(MessageWatchTest, SurvivesAWindowDestroyedInItsOwnMessage) {
    onMessage = [&] {
        onMessage = nullptr;
        window.reset();
        watch->whenIdle([&] {
            watch.reset();
            ++done;
        });
        EXPECT_EQ(done, 0);
    };
    ::SendMessageW(window.get(), WM_APP, 0, 0);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(watch, nullptr);
}

TEST_F(MessageWatchTest, LeavesAWindowThatOutlivesItAlone) {
    watch.reset();
    int handled = 0;
    onMessage = [&] { ++handled; };
    ::SendMessageW(window.get(), WM_APP, 0, 0);
    EXPECT_EQ(handled, 1);
}

TEST(MessageWatch, CannotWatchWhatIsNoWindow) { EXPECT_EQ(MessageWatch::of(nullptr), nullptr); }

}  // namespace
}  // namespace tovar
