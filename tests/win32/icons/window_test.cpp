#include "shell/win32/window.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "shell/win32/child_control.h"
#include "shell/win32/module_instance.h"
#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

constexpr wchar_t kClass[] = L"fTovarWindowTest";
constexpr UINT kQuestion = WM_APP, kTrouble = WM_APP + 1;

class OwnWindow final : public Window {
public:
    explicit OwnWindow(HWND parent = nullptr) {
        created_ = create({kClass, parent != nullptr ? DWORD{WS_CHILD} : DWORD{WS_POPUP}, 0, {60, 40}, parent});
    }
    ~OwnWindow() override { destroy(); }

    [[nodiscard]] bool created() const { return created_; }
    int timesGone = 0;

private:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message == kTrouble) throw std::runtime_error("trouble");
        if (message == WM_NCDESTROY) throw std::runtime_error("trouble at the end");
        return message == kQuestion ? std::optional<LRESULT>(static_cast<LRESULT>(wParam) + 1) : std::nullopt;
    }
    void onGone() override {
        EXPECT_EQ(hwnd(), nullptr);
        ++timesGone;
    }

    bool created_ = false;
};

bool classIsRegistered() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    return ::GetClassInfoExW(moduleInstance(), kClass, &description) != 0;
}

TEST(Window, AnswersItsMessagesAndLeavesTheOthersToTheSystem) {
    const OwnWindow window;
    ASSERT_TRUE(window.created());
    EXPECT_EQ(::SendMessageW(window.hwnd(), kQuestion, 41, 0), 42);
    ::SetWindowTextW(window.hwnd(), L"title");
    EXPECT_EQ(textOf(window.hwnd()), L"title");
}

TEST(Window, LetsNothingThrownLeaveItsProcedure) {
    const OwnWindow window;
    EXPECT_EQ(::SendMessageW(window.hwnd(), kTrouble, 0, 0), 0);
    EXPECT_TRUE(::IsWindow(window.hwnd()));
}

TEST(Window, HearsOnceThatItIsGone) {
    OwnWindow window;
    ::DestroyWindow(window.hwnd());
    EXPECT_EQ(window.hwnd(), nullptr);
    EXPECT_EQ(window.timesGone, 1);
}

TEST(Window, OutlivesItsParent) {
    TestWindow parent = makeWindow(L"STATIC", WS_POPUP);
    OwnWindow window(parent.get());
    parent.reset();
    EXPECT_EQ(window.hwnd(), nullptr);
    EXPECT_EQ(window.timesGone, 1);
}

TEST(Window, TakesItsClassBackWithTheLastWindow) {
    EXPECT_FALSE(classIsRegistered());
    {
        const OwnWindow first;
        {
            const OwnWindow second;
            EXPECT_TRUE(second.created());
        }
        EXPECT_TRUE(classIsRegistered());
        EXPECT_TRUE(::IsWindow(first.hwnd()));
    }
    EXPECT_FALSE(classIsRegistered());
}

TEST(ModuleInstance, IsTheModuleThatTheCodeIsIn) { EXPECT_EQ(moduleInstance(), ::GetModuleHandleW(nullptr)); }

bool isShown(const TestWindow& window) { return (::GetWindowLongPtrW(window.get(), GWL_STYLE) & WS_VISIBLE) != 0; }

// Scroll bars are painted for a window that counts as shown, also while its control does not paint itself.
TEST(RedrawPause, LeavesNothingToPaintUntilTheOuterOneEnds) {
    const TestWindow window = makeWindow(L"SysListView32", WS_POPUP | WS_VISIBLE);
    {
        const RedrawPause outer(window.get());
        EXPECT_FALSE(isShown(window));
        {
            const RedrawPause inner(window.get());
            EXPECT_FALSE(isShown(window));
        }
        EXPECT_FALSE(isShown(window));
        ::ValidateRect(window.get(), nullptr);
    }
    EXPECT_TRUE(isShown(window));
    EXPECT_NE(::GetUpdateRect(window.get(), nullptr, FALSE), FALSE);
}

TEST(RedrawPause, LeavesAHiddenWindowHidden) {
    const TestWindow window = makeWindow(L"SysListView32", WS_POPUP);
    { const RedrawPause pause(window.get()); }
    EXPECT_FALSE(isShown(window));
}

}  // namespace
}  // namespace tovar::test
