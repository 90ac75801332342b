#include "browser/win32/progress_dialog.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "browser/win32/windows_progress_dialogs.h"
#include "win32/dialogs/work_dialogs.h"

namespace tovar::test {
namespace {

class ProgressDialogTest : public testing::Test {
protected:
    void show(HWND owner, const std::wstring& font = {}) {
        ASSERT_TRUE(dialog->load(owner, font));
        dialog->SetCaption(L"Extracting");
        dialog->show();
    }
    void show() { show(host->child()); }

    [[nodiscard]] HWND window() const { return dialog->hWnd(); }
    [[nodiscard]] HWND control(int id) const { return item(window(), id); }
    [[nodiscard]] std::wstring text(int id) const { return itemText(window(), id); }
    [[nodiscard]] LRESULT bar() const { return ::SendMessageW(control(IDC_PBAR1), PBM_GETPOS, 0, 0); }

    /// The dialog is closed, and the host is as it was before.
    void expectOver(bool canceled) const {
        EXPECT_EQ(dialog->hWnd(), nullptr);
        EXPECT_EQ(dialog->Canceled(), canceled);
        EXPECT_TRUE(::IsWindowEnabled(host->window()));
        EXPECT_EQ(::GetActiveWindow(), host->window());
        EXPECT_EQ(::GetFocus(), host->edit());
    }

    std::optional<HostWindow> host{std::in_place};
    std::unique_ptr<fArcProgress> dialog = std::make_unique<fArcProgress>(RegionalSettings{});
};

TEST_F(ProgressDialogTest, IsLoadedHiddenWithEmptyLabels) {
    ASSERT_TRUE(dialog->load(host->child(), L""));
    EXPECT_FALSE(::IsWindowVisible(window()));
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
    EXPECT_EQ(::GetFocus(), host->edit());
    for (const int label : {IDC_LBL_DIR, IDC_LBL_FILE, IDC_LBL_SIZE, IDC_LBL_SUMMARY}) EXPECT_EQ(text(label), L"");
    EXPECT_EQ(textOf(window()), L"");
    EXPECT_EQ(text(IDCANCEL), L"Cancel");
    EXPECT_FALSE(dialog->load(host->child(), L"")) << "once is enough";
}

TEST_F(ProgressDialogTest, HasCancelFirstInTheOrderOfTheTabulatorKey) {
    show();
    EXPECT_EQ(::GetNextDlgTabItem(window(), nullptr, FALSE), control(IDCANCEL));
    EXPECT_EQ(::GetWindow(window(), GW_CHILD), control(IDCANCEL));
    EXPECT_EQ(::GetFocus(), control(IDCANCEL));
}

TEST_F(ProgressDialogTest, TakesTheHostsFont) {
    show(host->child(), L"Courier New");
    for (const int id : {IDCANCEL, IDC_LBL_DIR, IDC_LBL_FILE, IDC_LBL_SIZE, IDC_LBL_SUMMARY}) {
        EXPECT_EQ(faceOf(control(id)), L"Courier New") << id;
    }
}

TEST_F(ProgressDialogTest, StandsInTheMiddleOfItsOwner) {
    show();
    const RECT own = placeOf(window()), around = placeOf(host->child());
    EXPECT_NEAR(own.left + own.right, around.left + around.right, 2);
    EXPECT_NEAR(own.top + own.bottom, around.top + around.bottom, 2);
}

TEST_F(ProgressDialogTest, ShowsHowFarTheWorkIs) {
    show();
    EXPECT_EQ(textOf(window()), L"Extracting");
    dialog->Summary(L"Extracting C:\\Big.ZIP");
    dialog->showFolder(L"C:\\Out & In\\Deep");
    dialog->showFile(L"Read Me.txt");
    dialog->SetPrg1(512 * 1024, 2048 * 1024);
    EXPECT_EQ(textOf(window()), L"25 % Extracting");
    EXPECT_EQ(text(IDC_LBL_SUMMARY), L"extracting c:\\big.zip");
    EXPECT_EQ(text(IDC_LBL_DIR), L"C:\\Out & In\\Deep");
    EXPECT_EQ(text(IDC_LBL_FILE), L"Read Me.txt");
    EXPECT_EQ(text(IDC_LBL_SIZE), L"512/2,048 KBytes processed");
    EXPECT_EQ(bar(), 25);
    dialog->SetPrg1(2048 * 1024, -1);
    EXPECT_EQ(textOf(window()), L"100 % Extracting");
    EXPECT_EQ(bar(), 100);
}

TEST_F(ProgressDialogTest, ShowsAmpersandsAndShortensLongTextsInTheMiddle) {
    show();
    for (const int label : {IDC_LBL_DIR, IDC_LBL_FILE}) {
        const LONG_PTR style = ::GetWindowLongPtrW(control(label), GWL_STYLE);
        EXPECT_EQ(style & SS_ELLIPSISMASK, SS_PATHELLIPSIS);
        EXPECT_NE(style & SS_NOPREFIX, 0);
    }
    const RECT before = placeOf(window());
    dialog->showFolder(L"C:\\" + std::wstring(32000, L'x') + L"\\end");
    EXPECT_EQ(text(IDC_LBL_DIR).size(), 32007U);
    const RECT after = placeOf(window());
    EXPECT_EQ(after.right - after.left, before.right - before.left);
}

TEST_F(ProgressDialogTest, ShowsTheLastOfManyNamesInTheEnd) {
    show();
    // A list that nobody can read is not painted name by name.
    for (int name = 0; name <= 2000; ++name) dialog->showFile(std::to_wstring(name));
    dialog->showFolder(L"first");
    dialog->showFolder(L"second");
    const ULONGLONG deadline = ::GetTickCount64() + 10000;
    const auto shown = [this] { return text(IDC_LBL_FILE) == L"2000" && text(IDC_LBL_DIR) == L"second"; };
    while (!shown() && ::GetTickCount64() < deadline) dialog->SetPrg1(1, 100);
    EXPECT_TRUE(shown());
}

TEST_F(ProgressDialogTest, KeepsTheHostFromInputMeanwhile) {
    show();
    EXPECT_TRUE(::IsWindowVisible(window()));
    EXPECT_FALSE(::IsWindowEnabled(host->window()));
    EXPECT_EQ(::GetActiveWindow(), window());
    EXPECT_EQ(::GetWindow(window(), GW_OWNER), host->window());
}

TEST_F(ProgressDialogTest, IsTakenAwayWithoutACancel) {
    show();
    dialog->unload();
    expectOver(false);
    dialog->unload();
    expectOver(false);
}

TEST_F(ProgressDialogTest, GoesWithItsObject) {
    show();
    const HWND shown = window();
    dialog.reset();
    EXPECT_FALSE(::IsWindow(shown));
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
    EXPECT_EQ(::GetFocus(), host->edit());
}

TEST_F(ProgressDialogTest, IsCancelledByItsButtonWithinACall) {
    show();
    ::PostMessageW(control(IDCANCEL), BM_CLICK, 0, 0);
    EXPECT_FALSE(dialog->Canceled());
    dialog->SetPrg1(1, 100);
    expectOver(true);
}

TEST_F(ProgressDialogTest, IsCancelledByEscape) {
    show();
    pressKey(VK_ESCAPE);
    dialog->SetPrg1(1, 100);
    expectOver(true);
}

TEST_F(ProgressDialogTest, IsCancelledByEscapeInALoopThatKnowsNothingOfIt) {
    show();
    pressKey(VK_ESCAPE);
    runMessages();
    expectOver(true);
}

TEST_F(ProgressDialogTest, IsCancelledByTheKeyOfItsButton) {
    show();
    pressKey(VK_SPACE);
    dialog->SetPrg1(1, 100);
    expectOver(true);
}

TEST_F(ProgressDialogTest, IsNotCancelledByEnter) {
    show();
    ::SendMessageW(window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control(IDCANCEL)), TRUE);
    pressKey(VK_RETURN);
    dialog->SetPrg1(1, 100);
    EXPECT_FALSE(dialog->Canceled());
    EXPECT_NE(dialog->hWnd(), nullptr);
}

TEST_F(ProgressDialogTest, IsCancelledByTheCloseBox) {
    show();
    ::PostMessageW(window(), WM_SYSCOMMAND, SC_CLOSE, 0);
    dialog->SetPrg1(1, 100);
    expectOver(true);
}

TEST_F(ProgressDialogTest, GoesOnQuietlyAfterACancel) {
    show();
    ::PostMessageW(window(), WM_CLOSE, 0, 0);
    dialog->SetPrg1(1, 100);
    dialog->SetPrg1(50, 100);
    dialog->SetCaption(L"late");
    dialog->Summary(L"late");
    dialog->showFolder(L"late");
    dialog->showFile(L"late");
    expectOver(true);
}

TEST_F(ProgressDialogTest, CanBeShownAgain) {
    show();
    ::PostMessageW(window(), WM_CLOSE, 0, 0);
    dialog->SetPrg1(1, 100);
    ASSERT_TRUE(dialog->Canceled());
    show();
    EXPECT_FALSE(dialog->Canceled());
    EXPECT_FALSE(::IsWindowEnabled(host->window()));
    EXPECT_EQ(textOf(window()), L"Extracting");
    dialog->unload();
    expectOver(false);
}

TEST_F(ProgressDialogTest, LeavesAHostDisabledThatWasSoBefore) {
    ::EnableWindow(host->window(), FALSE);
    show();
    dialog->unload();
    EXPECT_FALSE(::IsWindowEnabled(host->window()));
}

TEST_F(ProgressDialogTest, LeavesTheFocusToAnotherWindowThatIsActive) {
    const HostWindow other;
    show();
    ::SetActiveWindow(other.window());
    ::SetFocus(other.edit());
    dialog->unload();
    EXPECT_EQ(::GetFocus(), other.edit());
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
}

TEST_F(ProgressDialogTest, IsCancelledWhenItsHostGoes) {
    show();
    const HWND shown = window();
    host.reset();
    EXPECT_FALSE(::IsWindow(shown));
    EXPECT_EQ(dialog->hWnd(), nullptr);
    EXPECT_TRUE(dialog->Canceled());
    dialog->SetPrg1(1, 100);
    dialog->unload();
}

TEST_F(ProgressDialogTest, IsCancelledWhenTheWindowInTheHostGoes) {
    show();
    ::DestroyWindow(host->child());
    EXPECT_FALSE(dialog->Canceled());
    dialog->SetPrg1(1, 100);
    EXPECT_EQ(dialog->hWnd(), nullptr);
    EXPECT_TRUE(dialog->Canceled());
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
    EXPECT_EQ(::GetActiveWindow(), host->window());
}

TEST_F(ProgressDialogTest, IsCancelledWhenItIsDestroyedFromOutside) {
    show();
    ::DestroyWindow(window());
    expectOver(true);
}

TEST_F(ProgressDialogTest, NeedsNoOwner) {
    show(nullptr);
    EXPECT_TRUE(::IsWindowVisible(window()));
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
    ::PostMessageW(control(IDCANCEL), BM_CLICK, 0, 0);
    dialog->SetPrg1(1, 100);
    EXPECT_EQ(dialog->hWnd(), nullptr);
    EXPECT_TRUE(dialog->Canceled());
}

TEST_F(ProgressDialogTest, StandsInFrontOfAWindowThatItWasPutInto) {
    ASSERT_TRUE(dialog->load(nullptr, L""));
    const LONG_PTR style = ::GetWindowLongPtrW(window(), GWL_STYLE);
    ::SetWindowLongPtrW(window(), GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_POPUP)) | WS_CHILD);
    ::SetParent(window(), host->window());
    ::SetWindowPos(window(), nullptr, 70, 50, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
    const RECT before = placeOf(window());
    dialog->show();
    const RECT after = placeOf(window());
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(after.top, before.top);
    EXPECT_EQ(after.right, before.right);
    EXPECT_EQ(::GetAncestor(window(), GA_PARENT), ::GetDesktopWindow());
    EXPECT_EQ(::GetWindow(window(), GW_OWNER), host->window());
    EXPECT_TRUE(::IsWindowEnabled(window()));
    EXPECT_FALSE(::IsWindowEnabled(host->window()));
    pressKey(VK_ESCAPE);
    dialog->SetPrg1(1, 100);
    expectOver(true);
}

TEST_F(ProgressDialogTest, IsShownByItsFactory) {
    const RegionalSettings regional;
    WindowsProgressDialogs dialogs(regional, [] { return std::wstring(L"Courier New"); });
    std::unique_ptr<ArcProgress> progress = dialogs.show(host->child());
    progress->SetCaption(L"Compressing");
    progress->SetPrg1(1, 2);
    const HWND shown = ::FindWindowW(nullptr, L"50 % Compressing");
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(faceOf(item(shown, IDCANCEL)), L"Courier New");
    EXPECT_FALSE(::IsWindowEnabled(host->window()));
    ::PostMessageW(shown, WM_CLOSE, 0, 0);
    progress->SetPrg1(1, 2);
    EXPECT_TRUE(progress->Canceled());
    progress.reset();
    EXPECT_TRUE(::IsWindowEnabled(host->window()));
}

}  // namespace
}  // namespace tovar::test
