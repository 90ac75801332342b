#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>
#include <shellapi.h>

#include <iterator>

namespace tovar::bench {

/// A window with the controls of the archive browser and nothing behind them: what the system itself takes to bring
/// such a window up. As many columns as a ZIP archive has, one folder, one row; texts that never change.
class BareWindow {
public:
    explicit BareWindow(HWND host) {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
        ::InitCommonControlsEx(&classes);
        window_ = make(L"#32770", L"", WS_CHILD | WS_CAPTION | WS_THICKFRAME | WS_CLIPCHILDREN, host, 0, 0, 1000, 700);
        ::SetWindowLongPtrW(window_, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(&answer));
        constexpr DWORD kBar = TBSTYLE_FLAT | TBSTYLE_LIST | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER;
        addButtons(child(TOOLBARCLASSNAMEW, L"", kBar, 0, 0, 80, 22), 2);
        addButtons(child(TOOLBARCLASSNAMEW, L"", kBar, 4, 26, 220, 22), 3);
        child(WC_STATICW, L"Address", SS_CENTERIMAGE, 230, 26, 50, 21);
        const HWND box = child(WC_COMBOBOXW, L"", WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, 290, 26, 690, 250);
        ::SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"archive.zip\\"));
        ::SendMessageW(box, CB_SETCURSEL, 0, 0);
        fillTree(child(WC_TREEVIEWW, L"", TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT, 0, 52, 280, 600));
        list_ = child(WC_LISTVIEWW, L"", LVS_REPORT | LVS_OWNERDATA | LVS_SHAREIMAGELISTS, 284, 52, 708, 600);
        fillList();
        const HWND status = child(STATUSCLASSNAMEW, L"Archive has 1 files", SBARS_SIZEGRIP, 0, 0, 0, 0);
        LOGFONTW description{};
        ::SystemParametersInfoW(SPI_GETICONTITLELOGFONT, sizeof description, &description, 0);
        font_ = ::CreateFontIndirectW(&description);
        for (HWND each = ::GetWindow(window_, GW_CHILD); each != nullptr; each = ::GetWindow(each, GW_HWNDNEXT)) {
            ::SendMessageW(each, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
        }
        ::SendMessageW(status, WM_SIZE, 0, 0);
    }
    ~BareWindow() {
        ::DestroyWindow(window_);
        ::DeleteObject(font_);
    }
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;

    void show() const {
        ::ShowWindow(window_, SW_SHOW);
        ::SetFocus(list_);
        ::RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }

private:
    static HWND make(const wchar_t* className, const wchar_t* text, DWORD style, HWND parent, int x, int y, int width,
                     int height) {
        return ::CreateWindowExW(0, className, text, style, x, y, width, height, parent, nullptr,
                                 ::GetModuleHandleW(nullptr), nullptr);
    }
    HWND child(const wchar_t* className, const wchar_t* text, DWORD style, int x, int y, int width, int height) const {
        return make(className, text, WS_CHILD | WS_VISIBLE | style, window_, x, y, width, height);
    }
    static INT_PTR CALLBACK answer(HWND, UINT message, WPARAM, LPARAM lParam) noexcept {
        if (message != WM_NOTIFY || reinterpret_cast<const NMHDR*>(lParam)->code != LVN_GETDISPINFOW) return FALSE;
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(lParam)->item;
        static wchar_t text[] = L"Text";
        if ((item.mask & LVIF_TEXT) != 0) item.pszText = text;
        return TRUE;
    }
    static void addButtons(HWND bar, int count) {
        ::SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        for (int place = 0; place < count; ++place) {
            TBBUTTON button{};
            button.iBitmap = I_IMAGENONE;
            button.idCommand = place + 1;
            button.fsState = TBSTATE_ENABLED;
            button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
            button.iString = reinterpret_cast<INT_PTR>(L"Button");
            ::SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
        }
    }
    static LPARAM systemIcons(UINT size) {
        SHFILEINFOW info{};
        return static_cast<LPARAM>(::SHGetFileInfoW(L"C:\\", 0, &info, sizeof info, SHGFI_SYSICONINDEX | size));
    }
    static void fillTree(HWND tree) {
        ::SendMessageW(tree, TVM_SETIMAGELIST, TVSIL_NORMAL, systemIcons(SHGFI_SMALLICON));
        wchar_t text[] = L"archive.zip";
        TVINSERTSTRUCTW place{};
        place.hParent = TVI_ROOT;
        place.item.mask = TVIF_TEXT | TVIF_IMAGE;
        place.item.pszText = text;
        ::SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&place));
    }
    void fillList() const {
        constexpr DWORD kExtended = LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER;
        ::SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
        ::SendMessageW(list_, LVM_SETIMAGELIST, LVSIL_SMALL, systemIcons(SHGFI_SMALLICON));
        ::SendMessageW(list_, LVM_SETIMAGELIST, LVSIL_NORMAL, systemIcons(SHGFI_LARGEICON));
        constexpr int kWidths[] = {124, 113, 97, 59, 122, 129, 44, 100};
        for (int column = 0; column < static_cast<int>(std::size(kWidths)); ++column) {
            wchar_t text[] = L"Column";
            LVCOLUMNW description{};
            description.mask = LVCF_TEXT | LVCF_WIDTH;
            description.cx = kWidths[column];
            description.pszText = text;
            ::SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                           reinterpret_cast<LPARAM>(&description));
        }
        ::SendMessageW(list_, LVM_SETITEMCOUNT, 1, 0);
    }

    HWND window_ = nullptr, list_ = nullptr;
    HFONT font_ = nullptr;
};

}  // namespace tovar::bench
