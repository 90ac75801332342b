#include "shell/win32/list_view.h"

#include "shell/win32/subclass.h"
#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

void setImageList(HWND listView, WPARAM which, HIMAGELIST images) {
    ::SendMessageW(listView, LVM_SETIMAGELIST, which, reinterpret_cast<LPARAM>(images));
}

}  // namespace

void ShareImageLists(HWND listView) {
    const LONG_PTR style = ::GetWindowLongPtrW(listView, GWL_STYLE);
    if ((style & LVS_SHAREIMAGELISTS) == 0) {
        ::SetWindowLongPtrW(listView, GWL_STYLE, style | LVS_SHAREIMAGELISTS);
    }
}

void AttachSystemImageList(HWND listView, bool attach) {
    setImageList(listView, LVSIL_SMALL, attach ? SystemImageList(SHGFI_SMALLICON) : nullptr);
    setImageList(listView, LVSIL_NORMAL, attach ? SystemImageList(SHGFI_LARGEICON) : nullptr);
}

bool SetListItem(HWND listView, const LVITEMW& item) {
    return ::SendMessageW(listView, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item)) != FALSE;
}

UINT SelectedCount(HWND listView) { return static_cast<UINT>(::SendMessageW(listView, LVM_GETSELECTEDCOUNT, 0, 0)); }

LRESULT CALLBACK ListViewWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case LVM_SETIMAGELIST:
            return 0;
        case WM_DESTROY:
            callOldProcedure(window, message, wParam, lParam);
            Unsubclass(window);
            return 0;
        default:
            return callOldProcedure(window, message, wParam, lParam);
    }
}

}  // namespace tovar
