#include "browser/win32/browser_toolbar.h"

// windows.h first
#include <commctrl.h>

#include "browser/win32/browser_controls.h"
#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"

namespace tovar {
namespace {

constexpr int kLargeFromDpi = 144;
constexpr int kSmallImage = 16, kLargeImage = 24;  // pixels, as the common controls have them

}  // namespace

bool BrowserToolbar::create(HWND parent) {
    toolbar_ = createControl(
        parent, TOOLBARCLASSNAMEW, L"Archive commands",
        TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER, 0, kToolbar);
    if (toolbar_ == nullptr) return false;
    const bool large = dpiOf(parent) >= kLargeFromDpi;
    const int imageSize = large ? kLargeImage : kSmallImage;
    ::SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    ::SendMessageW(toolbar_, TB_SETBITMAPSIZE, 0, MAKELPARAM(imageSize, imageSize));
    const TBADDBITMAP images{HINST_COMMCTRL,
                             static_cast<UINT_PTR>(large ? IDB_VIEW_LARGE_COLOR : IDB_VIEW_SMALL_COLOR)};
    const LRESULT firstImage = ::SendMessageW(toolbar_, TB_ADDBITMAP, 0, reinterpret_cast<LPARAM>(&images));
    TBBUTTON goUp{};
    goUp.iBitmap = static_cast<int>(firstImage) + VIEW_PARENTFOLDER;
    goUp.idCommand = GoUp;
    goUp.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
    goUp.iString = reinterpret_cast<INT_PTR>(L"Go up");
    return ::SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&goUp)) != FALSE;
}

void BrowserToolbar::enable(int button, bool enabled) {
    ::SendMessageW(toolbar_, TB_ENABLEBUTTON, static_cast<WPARAM>(button), MAKELPARAM(enabled ? TRUE : FALSE, 0));
}

SIZE BrowserToolbar::size() const {
    const auto count = ::SendMessageW(toolbar_, TB_BUTTONCOUNT, 0, 0);
    RECT last{};
    ::SendMessageW(toolbar_, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    return {last.right, last.bottom};
}

}  // namespace tovar
