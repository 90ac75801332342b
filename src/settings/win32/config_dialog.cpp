#include "settings/win32/config_dialog.h"

#include "settings/win32/config_dialog_controls.h"
#include "shell/win32/dpi.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/message_map.h"

namespace tovar {
namespace {

constexpr int kHintWidth = 400;             ///< at 96 dots per inch; longer lines are broken
constexpr DWORD kHintMilliseconds = 30000;  ///< a path takes longer to read than the usual five seconds
constexpr std::wstring_view kColumns[] = {L"Library", L"Version", L"Path"};

void setCell(HWND list, int row, int column, const std::wstring& text) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    ::SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void addColumns(HWND list) {
    for (int column = 0; column < static_cast<int>(std::size(kColumns)); ++column) {
        std::wstring title(kColumns[column]);
        LVCOLUMNW description{};
        description.mask = LVCF_TEXT | LVCF_SUBITEM;
        description.pszText = title.data();
        description.iSubItem = column;
        ::SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&description));
    }
}

/// Makes a column as wide as its texts and its title. The last one at least fills the list, but is not cut there: a
/// list can be scrolled.
void fitColumn(HWND list, WPARAM column) {
    ::SendMessageW(list, LVM_SETCOLUMNWIDTH, column, LVSCW_AUTOSIZE);
    const LRESULT width = ::SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0);
    ::SendMessageW(list, LVM_SETCOLUMNWIDTH, column, LVSCW_AUTOSIZE_USEHEADER);
    if (::SendMessageW(list, LVM_GETCOLUMNWIDTH, column, 0) >= width) return;
    ::SendMessageW(list, LVM_SETCOLUMNWIDTH, column, static_cast<LPARAM>(width));
}

RECT placeOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

}  // namespace

void fConfig::ask(HWND owner, std::wstring_view fontName) {
    owner_ = owner;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    showModal(owner, IDD_CONFIG, fontName);
}

void fConfig::cancel() noexcept {
    if (hwnd() != nullptr) ::EndDialog(hwnd(), IDCANCEL);
}

void fConfig::bringToFront() noexcept {
    if (hwnd() != nullptr) ::SetForegroundWindow(hwnd());
}

void fConfig::onLoad() {
    if (hwnd() == nullptr) return;  // its owner went while it got its font
    const RECT own = placeOf(hwnd());
    unfoldedHeight_ = own.bottom - own.top;
    // Without the list the dialog ends below its buttons.
    foldedHeight_ = unfoldedHeight_ - (placeOf(control(IDC_LST_LIBRARIES)).bottom - placeOf(control(IDOK)).bottom);
    ::SendMessageW(control(IDC_LST_LIBRARIES), LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                   LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER);
    addColumns(control(IDC_LST_LIBRARIES));
    fold(true);
    presenter_.onLoad();
    addHints();
    CenterDialog(hwnd(), owner_);
    keepOnScreen(hwnd());
}

bool fConfig::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fConfig> routes[] = {
        {IDOK, BN_CLICKED, &fConfig::onOk},
        {IDCANCEL, BN_CLICKED, &fConfig::onCancel},
        {IDC_CMD_DETAILS, BN_CLICKED, &fConfig::onDetails},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fConfig::onMessage(UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_DESTROY) presenter_.onGone();
    if (message != WM_NOTIFY) return std::nullopt;
    const NMHDR& header = *reinterpret_cast<NMHDR*>(lParam);
    if (header.code != TTN_GETDISPINFOW || header.hwndFrom != hints_) return std::nullopt;  // the list has tips too
    answerHint(*reinterpret_cast<NMTTDISPINFOW*>(lParam));
    return TRUE;
}

void fConfig::showBox(std::size_t index, const std::wstring& caption, bool enabled, bool checked) {
    ::SetWindowTextW(box(index), caption.c_str());
    ::EnableWindow(box(index), enabled ? TRUE : FALSE);
    ::SendMessageW(box(index), BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

int fConfig::boxValue(std::size_t index) const {
    return static_cast<int>(::SendMessageW(box(index), BM_GETCHECK, 0, 0));
}

void fConfig::showDetails(const std::vector<LibraryDetails>& libraries) {
    const HWND list = control(IDC_LST_LIBRARIES);
    ::SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (int row = 0; row < static_cast<int>(libraries.size()); ++row) {
        const LibraryDetails& each = libraries[static_cast<std::size_t>(row)];
        setCell(list, row, 0, each.library);
        setCell(list, row, 1, each.version);
        setCell(list, row, 2, each.path);
    }
    for (WPARAM column = 0; column < std::size(kColumns); ++column) fitColumn(list, column);
    LVITEMW first{};
    first.state = first.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
    ::SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&first));
    fold(false);
}

void fConfig::hideDetails() { fold(true); }

void fConfig::close() {
    if (hwnd() != nullptr) ::EndDialog(hwnd(), IDOK);
}

HWND fConfig::box(std::size_t index) const noexcept {
    const auto number = static_cast<int>(index);
    constexpr int kPackers = kPackerBoxes;
    return control(number < kPackers ? IDC_CHK_PACKER + number : IDC_CHK_UNPACKER + number - kPackers);
}

/// A disabled box gets no mouse messages: its hint belongs to the room that it takes up in the dialog.
void fConfig::addHints() {
    hints_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, hwnd(), nullptr, nullptr,
                               nullptr);
    if (hints_ == nullptr) return;
    ::SendMessageW(hints_, TTM_SETMAXTIPWIDTH, 0, scaled(kHintWidth, dpiOf(hwnd())));
    ::SendMessageW(hints_, TTM_SETDELAYTIME, TTDT_AUTOPOP, kHintMilliseconds);
    for (std::size_t index = 0; index < kArchiverBoxes.size(); ++index) {
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = hwnd();
        tool.uFlags = TTF_SUBCLASS;
        tool.lpszText = LPSTR_TEXTCALLBACKW;
        tool.lParam = static_cast<LPARAM>(index);
        if (::IsWindowEnabled(box(index))) {
            tool.uFlags |= TTF_IDISHWND;
            tool.uId = reinterpret_cast<UINT_PTR>(box(index));
        } else {
            tool.uId = index;
            tool.rect = placeOf(box(index));
            ::MapWindowPoints(HWND_DESKTOP, hwnd(), reinterpret_cast<POINT*>(&tool.rect), 2);
        }
        ::SendMessageW(hints_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void fConfig::answerHint(NMTTDISPINFOW& question) {
    const auto index = static_cast<std::size_t>(question.lParam);
    if (index >= kArchiverBoxes.size()) return;
    hint_ = presenter_.hintOf(index);
    question.lpszText = hint_.data();
}

/// What is folded away takes neither keys nor the focus.
void fConfig::fold(bool folded) {
    for (const int id : {IDC_LBL_LIBRARIES, IDC_LST_LIBRARIES}) {
        ::ShowWindow(control(id), folded ? SW_HIDE : SW_SHOW);
        ::EnableWindow(control(id), folded ? FALSE : TRUE);
    }
    ::SetWindowTextW(control(IDC_CMD_DETAILS), folded ? L"&Details >>" : L"&Details <<");
    const RECT own = placeOf(hwnd());
    ::SetWindowPos(hwnd(), nullptr, 0, 0, own.right - own.left, folded ? foldedHeight_ : unfoldedHeight_,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (!folded) keepOnScreen(hwnd());
}

}  // namespace tovar
