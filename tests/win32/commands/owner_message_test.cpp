#include "archivers/commands/owner_message.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <future>
#include <thread>

#include "win32/commands/host_window.h"

namespace archiver {
namespace {

using testing::HostWindow;

TEST(OwnerMessage, IsTheRegisteredOne) {
    EXPECT_EQ(ownerMessage(), ::RegisterWindowMessageA("wm_arcextract"));
    EXPECT_GE(ownerMessage(), 0xC000U);
}

/// What a window was told last.
struct Told {
    WPARAM state = 99;
    LPARAM info = 0;
    std::uint32_t fileSize = 0;
    LRESULT answer = 0;
};

LRESULT CALLBACK listener(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const told = reinterpret_cast<Told*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (told == nullptr || message != ownerMessage()) return ::DefWindowProcW(window, message, wParam, lParam);
    told->state = wParam;
    told->info = lParam;
    if (lParam != 0) told->fileSize = reinterpret_cast<const ExtractingInfo*>(lParam)->fileSize;
    return told->answer;
}

HWND makeListener(Told& told) {
    const HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&told));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&listener));
    return window;
}

TEST(OwnerMessage, TellsAWindowOfTheSameThread) {
    Told told;
    const HWND window = makeListener(told);
    ExtractingInfo info{};
    info.fileSize = 1234;
    EXPECT_FALSE(sendOwnerMessage(window, OwnerState::kInProcess, &info));
    EXPECT_EQ(told.state, 1U);
    EXPECT_EQ(told.info, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(told.fileSize, 1234U);
    EXPECT_FALSE(sendOwnerMessage(window, OwnerState::kEnd, nullptr));
    EXPECT_EQ(told.state, 2U);
    EXPECT_EQ(told.info, 0);
    ::DestroyWindow(window);
}

TEST(OwnerMessage, NumbersTheStates) {
    Told told;
    const HWND window = makeListener(told);
    sendOwnerMessage(window, OwnerState::kBegin, nullptr);
    EXPECT_EQ(told.state, 0U);
    sendOwnerMessage(window, OwnerState::kOpen, nullptr);
    EXPECT_EQ(told.state, 3U);
    sendOwnerMessage(window, OwnerState::kCopy, nullptr);
    EXPECT_EQ(told.state, 4U);
    ::DestroyWindow(window);
}

TEST(OwnerMessage, IsCancelledByAnyAnswerButZero) {
    Told told;
    const HWND window = makeListener(told);
    ExtractingInfo info{};
    told.answer = 1;
    EXPECT_TRUE(sendOwnerMessage(window, OwnerState::kBegin, &info));
    told.answer = -1;
    EXPECT_TRUE(sendOwnerMessage(window, OwnerState::kBegin, &info));
    ::DestroyWindow(window);
}

TEST(OwnerMessage, ReachesNobodyWhenThereIsNoWindow) {
    EXPECT_FALSE(sendOwnerMessage(nullptr, OwnerState::kEnd, nullptr));
    Told told;
    told.answer = 1;
    const HWND window = makeListener(told);
    ::DestroyWindow(window);
    EXPECT_FALSE(sendOwnerMessage(window, OwnerState::kEnd, nullptr));
}

TEST(OwnerMessage, TellsAWindowOfAnotherThread) {
    Told told;
    told.answer = 1;
    std::promise<HWND> made;
    std::thread other([&] {
        made.set_value(makeListener(told));
        MSG message;
        while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    });
    const HWND window = made.get_future().get();
    ExtractingInfo info{};
    info.fileSize = 77;
    EXPECT_TRUE(sendOwnerMessage(window, OwnerState::kBegin, &info));
    EXPECT_EQ(told.fileSize, 77U);
    told.answer = 0;
    EXPECT_FALSE(sendOwnerMessage(window, OwnerState::kBegin, &info));
    ::PostThreadMessageW(::GetWindowThreadProcessId(window, nullptr), WM_QUIT, 0, 0);
    other.join();
}

}  // namespace
}  // namespace archiver
