#include "shell/win32/pending_messages.h"

#include <gtest/gtest.h>

#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

TEST(PendingMessages, AreAllProcessed) {
    const TestWindow window = makeWindow(L"EDIT", WS_POPUP);
    for (int i = 0; i < 3; ++i) ::PostMessageW(window.get(), WM_CHAR, L'x', 0);
    runPendingMessages();
    EXPECT_EQ(::GetWindowTextLengthW(window.get()), 3);
}

TEST(PendingMessages, LeaveTheEndOfTheProgramToItsOwner) {
    ::PostQuitMessage(42);
    runPendingMessages();
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 42U);
}

}  // namespace
}  // namespace tovar::test
