#include "shell/win32/form_placement.h"

#include <gtest/gtest.h>

#include "win32/icons/test_windows.h"

namespace tovar::test {
namespace {

TEST(CentredOffset, IsHalfOfWhatIsLeft) {
    EXPECT_EQ(centredOffset(800, 400), 200);
    EXPECT_EQ(centredOffset(801, 400), 200);  // 200.5
    EXPECT_EQ(centredOffset(803, 400), 202);  // 201.5
    EXPECT_EQ(centredOffset(400, 400), 0);
    EXPECT_EQ(centredOffset(400, 401), 0);   // -0.5
    EXPECT_EQ(centredOffset(400, 403), -2);  // -1.5
    EXPECT_EQ(centredOffset(400, 800), -200);
}

TEST(CenterDialog, UsesTheScreenWithoutAnOwner) {
    const TestWindow dialog = makeWindow(L"STATIC", WS_POPUP, nullptr, 300, 200);
    CenterDialog(dialog.get(), nullptr);
    const RECT place = placeOf(dialog.get());
    EXPECT_EQ(place.left, (::GetSystemMetrics(SM_CXSCREEN) - 300) / 2);
    EXPECT_EQ(place.top, (::GetSystemMetrics(SM_CYSCREEN) - 200) / 2);
    EXPECT_EQ(place.right - place.left, 300);
}

TEST(CenterDialog, UsesItsOwnersPlace) {
    const TestWindow owner = makeWindow(L"STATIC", WS_POPUP, nullptr, 500, 400);
    ::SetWindowPos(owner.get(), nullptr, 100, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const TestWindow dialog = makeWindow(L"STATIC", WS_POPUP, nullptr, 300, 200);
    CenterDialog(dialog.get(), owner.get());
    EXPECT_EQ(placeOf(dialog.get()).left, 200);
    EXPECT_EQ(placeOf(dialog.get()).top, 150);
}

TEST(CenterDialog, MayReachBeyondASmallOwner) {
    const TestWindow owner = makeWindow(L"STATIC", WS_POPUP, nullptr, 100, 100);
    ::SetWindowPos(owner.get(), nullptr, 300, 300, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const TestWindow dialog = makeWindow(L"STATIC", WS_POPUP, nullptr, 300, 200);
    CenterDialog(dialog.get(), owner.get());
    EXPECT_EQ(placeOf(dialog.get()).left, 200);
    EXPECT_EQ(placeOf(dialog.get()).top, 250);
}

TEST(EmbedForm, MakesAFormAChild) {
    const TestWindow container = makeWindow(L"STATIC", WS_POPUP, nullptr, 400, 300);
    const TestWindow form = makeWindow(L"STATIC", WS_POPUP, nullptr, 120, 80);
    EmbedForm(form.get(), container.get(), false);
    EXPECT_EQ(::GetParent(form.get()), container.get());
    EXPECT_TRUE(::IsChild(container.get(), form.get()));
    const RECT place = placeOf(form.get());
    EXPECT_EQ(place.right - place.left, 120);
    EXPECT_EQ(place.bottom - place.top, 80);
}

TEST(EmbedForm, FillsTheContainer) {
    const TestWindow container = makeWindow(L"STATIC", WS_POPUP, nullptr, 400, 300);
    const TestWindow form = makeWindow(L"STATIC", WS_POPUP, nullptr, 120, 80);
    EmbedForm(form.get(), container.get(), true);
    const RECT inner = placeOf(form.get()), outer = placeOf(container.get());
    EXPECT_EQ(inner.left, outer.left);
    EXPECT_EQ(inner.top, outer.top);
    EXPECT_EQ(inner.right - inner.left, 400);
    EXPECT_EQ(inner.bottom - inner.top, 300);
}

TEST(EmbedForm, LeavesAFormAloneWhenThereIsNoContainer) {
    const TestWindow form = makeWindow(L"STATIC", WS_POPUP, nullptr, 120, 80);
    TestWindow container = makeWindow(L"STATIC", WS_POPUP);
    const HWND gone = container.get();
    container.reset();
    EmbedForm(form.get(), gone, true);
    EXPECT_EQ(::GetParent(form.get()), nullptr);
    EXPECT_EQ(::GetWindowLongPtrW(form.get(), GWL_STYLE) & WS_CHILD, 0);
}

}  // namespace
}  // namespace tovar::test
