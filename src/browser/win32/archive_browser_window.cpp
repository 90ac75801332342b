#include "browser/win32/archive_browser_window.h"

#include <windowsx.h>
// windows.h first
#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "browser/win32/browser_controls.h"
#include "browser/win32/child_control.h"
#include "shell/paths.h"
#include "shell/win32/dpi.h"
#include "shell/win32/message_map.h"
#include "shell/win32/system_icons.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

constexpr wchar_t kClassName[] = L"fArcMain";
constexpr int kMargin = 4, kLeastWidth = 320, kLeastHeight = 200, kAddressRows = 12;  // at 96 dots per inch

// Since Windows 8.1 and 10; older headers do not have them.
constexpr UINT kDpiChanged = 0x02E0, kDpiChangedAfterParent = 0x02E3;

// Posted to itself: the keyboard has come to one of the controls, or left it.
constexpr UINT kFocusMoved = WM_APP;
// Posted to itself: a folder of the tree was closed.
constexpr UINT kFolderClosed = WM_APP + 1;

template <class Notification>
Notification& as(NMHDR& header) {
    return reinterpret_cast<Notification&>(header);
}

UniqueIcon iconOfFile(const std::wstring& path) {
    SHFILEINFOW info{};
    const UINT flags = SHGFI_ICON | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES;
    return UniqueIcon(ShellFileInfo(shortFileName(FileNamePart(path)), flags, info) != 0 ? info.hIcon : nullptr);
}

}  // namespace

fArcMain::fArcMain(const BrowserRequest& request, const BrowserWindowPorts& ports, std::function<void()> onUnloaded)
    : messages_(ports.messages),
      desktop_(ports.desktop),
      fontName_(request.fontName),
      icon_(iconOfFile(request.archiveFile)),
      presenter_(*this, {*request.driver, ports.desktop, ports.files, ports.regional}, request.archiveFile) {
    const VisualStyles styles;
    Description description;
    description.className = kClassName;
    description.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    description.extendedStyle = WS_EX_CONTROLPARENT;
    // What never came up is not unloaded either.
    if (create(description)) onUnloaded_ = std::move(onUnloaded);
}

fArcMain::~fArcMain() { destroy(); }

bool fArcMain::FillControl(std::wstring_view folderKey) {
    bool filled = false;
    try {
        filled = presenter_.fill(folderKey);
    } catch (...) {
        // Memory is short: the window stays, as far as it came.
    }
    if (closeWanted_ && !presenter_.isFilling()) destroy();
    return filled && hwnd() != nullptr;
}

void fArcMain::suspendPainting(bool suspended) {
    // WM_SETREDRAW would show a hidden window when painting goes on.
    if (suspended == paintingSuspended_ || (suspended && !::IsWindowVisible(hwnd()))) return;
    paintingSuspended_ = suspended;
    ::SendMessageW(hwnd(), WM_SETREDRAW, suspended ? FALSE : TRUE, 0);
    if (!suspended) ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void fArcMain::showModeless() {
    if (hwnd() == nullptr) return;
    ::ShowWindow(hwnd(), SW_SHOW);
    ::BringWindowToTop(hwnd());
    ::SetFocus(list_.hwnd());
    ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void fArcMain::unload() { destroy(); }

std::optional<LRESULT> fArcMain::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<fArcMain> routes[] = {
        {WM_CREATE, &fArcMain::onCreate},
        {WM_DESTROY, &fArcMain::onDestroy},
        {WM_CLOSE, &fArcMain::onClose},
        {WM_SIZE, &fArcMain::onSize},
        {WM_GETMINMAXINFO, &fArcMain::onMinimumSize},
        {WM_SETFOCUS, &fArcMain::onFocus},
        {kFocusMoved, &fArcMain::onFocusMoved},
        {kFolderClosed, &fArcMain::onFolderClosed},
        {WM_MOUSEACTIVATE, &fArcMain::onMouseActivate},
        {WM_SETCURSOR, &fArcMain::onSetCursor},
        {WM_LBUTTONDOWN, &fArcMain::onButtonDown},
        {WM_MOUSEMOVE, &fArcMain::onMouseMove},
        {WM_LBUTTONUP, &fArcMain::onButtonUp},
        {WM_CAPTURECHANGED, &fArcMain::onCaptureLost},
        {WM_COMMAND, &fArcMain::onCommand},
        {WM_NOTIFY, &fArcMain::onNotify},
        {kDpiChanged, &fArcMain::onScaleChanged},
        {kDpiChangedAfterParent, &fArcMain::onScaleChanged},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

std::optional<LRESULT> fArcMain::onCreate(WPARAM, LPARAM) {
    if (!createControls()) return -1;
    ::SendMessageW(hwnd(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon_.get()));
    applyFonts();
    presenter_.onLoad();
    return 0;
}

bool fArcMain::createControls() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    if (!toolbar_.create(hwnd()) || !address_.create(hwnd(), *this, messages_) || !tree_.create(hwnd()) ||
        !list_.create(hwnd(), messages_)) {
        return false;
    }
    status_ = createControl(hwnd(), STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, 0, sBar1);
    if (status_ == nullptr) return false;
    tree_.setIcons(desktop_.ofFolder().icon, desktop_.openFolderIcon());
    lastFocus_ = list_.hwnd();
    return true;
}

std::optional<LRESULT> fArcMain::onDestroy(WPARAM, LPARAM) {
    address_.release();
    list_.release();
    presenter_.onUnload();
    return 0;
}

void fArcMain::onGone() {
    if (onUnloaded_) std::exchange(onUnloaded_, nullptr)();
}

std::optional<LRESULT> fArcMain::onClose(WPARAM, LPARAM) {
    closeWanted_ = true;
    if (!presenter_.isFilling()) destroy();
    return 0;
}

void fArcMain::applyFonts() {
    UniqueFont font(createMessageFont(hwnd()));
    if (font != nullptr) {
        for (const HWND control :
             {toolbar_.hwnd(), address_.label(), address_.hwnd(), tree_.hwnd(), list_.hwnd(), status_}) {
            ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
        }
        std::swap(systemFont_, font);
    }
    FormFonts fonts;
    ApplyFont(hwnd(), fontName_, fonts);
    std::swap(hostFonts_, fonts);
}

std::optional<LRESULT> fArcMain::onScaleChanged(WPARAM, LPARAM) {
    applyFonts();
    layOut();
    return std::nullopt;
}

std::optional<LRESULT> fArcMain::onSize(WPARAM, LPARAM) {
    layOut();
    return 0;
}

void fArcMain::layOut() {
    RECT client;
    if (status_ == nullptr || !::GetClientRect(hwnd(), &client)) return;
    const int dpi = dpiOf(hwnd());
    const int margin = scaled(kMargin, dpi);
    ::SendMessageW(status_, WM_SIZE, 0, 0);
    RECT status, box;
    ::GetWindowRect(status_, &status);
    ::GetWindowRect(address_.hwnd(), &box);
    const SIZE buttons = toolbar_.size();
    const int boxHeight = box.bottom - box.top;
    const int rowHeight = std::max<int>(buttons.cy, boxHeight);
    const int labelLeft = margin + buttons.cx + 2 * margin, labelWidth = address_.labelWidth();
    const int boxLeft = labelLeft + labelWidth + 2 * margin;
    const RECT panes{0, margin + rowHeight + margin, client.right,
                     std::max<LONG>(client.bottom - (status.bottom - status.top), margin + rowHeight + margin)};
    splitter_.layOut(panes, dpi);
    const RECT& bar = splitter_.bar();
    const int paneHeight = panes.bottom - panes.top;
    struct Place {
        HWND control;
        int x, y, width, height;
    };
    const Place places[] = {
        {toolbar_.hwnd(), margin, margin + (rowHeight - static_cast<int>(buttons.cy)) / 2, buttons.cx, buttons.cy},
        {address_.label(), labelLeft, margin + (rowHeight - boxHeight) / 2, labelWidth, boxHeight},
        {address_.hwnd(), boxLeft, margin + (rowHeight - boxHeight) / 2,
         std::max<int>(client.right - boxLeft - margin, 0), boxHeight * kAddressRows},
        {tree_.hwnd(), 0, panes.top, bar.left, paneHeight},
        {list_.hwnd(), bar.right, panes.top, std::max<int>(client.right - bar.right, 0), paneHeight},
    };
    HDWP positions = ::BeginDeferWindowPos(static_cast<int>(std::size(places)));
    for (const Place& place : places) {
        if (positions == nullptr) return;
        positions = ::DeferWindowPos(positions, place.control, nullptr, place.x, place.y, place.width, place.height,
                                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (positions != nullptr) ::EndDeferWindowPos(positions);
}

std::optional<LRESULT> fArcMain::onMinimumSize(WPARAM, LPARAM lParam) {
    const int dpi = dpiOf(hwnd());
    reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {scaled(kLeastWidth, dpi), scaled(kLeastHeight, dpi)};
    return 0;
}

std::optional<LRESULT> fArcMain::onFocus(WPARAM, LPARAM) {
    ::SetFocus(lastFocus_);
    return 0;
}

// A child's caption is not painted as active by itself.
std::optional<LRESULT> fArcMain::onFocusMoved(WPARAM, LPARAM) {
    const HWND focus = ::GetFocus();
    const bool within = focus == hwnd() || ::IsChild(hwnd(), focus);
    for (const HWND control : {address_.hwnd(), tree_.hwnd(), list_.hwnd()}) {
        if (control == focus || ::IsChild(control, focus)) lastFocus_ = control;
    }
    const bool isChild = (::GetWindowLongPtrW(hwnd(), GWL_STYLE) & WS_CHILD) != 0;
    if (isChild && within != captionActive_) ::SendMessageW(hwnd(), WM_NCACTIVATE, within ? TRUE : FALSE, 0);
    captionActive_ = within;
    return 0;
}

// Not every tree view asks before it closes a folder, nor tells that the selection went to the closed one.
std::optional<LRESULT> fArcMain::onFolderClosed(WPARAM, LPARAM) {
    const auto current = presenter_.currentFolder();
    if (!current) return 0;
    if (!tree_.isExpanded(FolderModel::kRoot)) {
        selectFolder(*current, *current == FolderModel::kRoot);
    } else if (const auto selected = tree_.selected()) {
        presenter_.onFolderSelected(*selected);
    }
    return 0;
}

std::optional<LRESULT> fArcMain::onMouseActivate(WPARAM, LPARAM) {
    // As a child of the host's window it may lie below other children.
    ::SetWindowPos(hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return std::nullopt;
}

std::optional<LRESULT> fArcMain::onSetCursor(WPARAM wParam, LPARAM lParam) {
    POINT point;
    if (reinterpret_cast<HWND>(wParam) != hwnd() || LOWORD(lParam) != HTCLIENT || !::GetCursorPos(&point) ||
        !::ScreenToClient(hwnd(), &point) || !splitter_.contains(point)) {
        return std::nullopt;
    }
    ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEWE));
    return TRUE;
}

std::optional<LRESULT> fArcMain::onButtonDown(WPARAM, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (!splitter_.contains(point)) return std::nullopt;
    splitter_.beginDrag(point.x);
    ::SetCapture(hwnd());
    return 0;
}

std::optional<LRESULT> fArcMain::onMouseMove(WPARAM, LPARAM lParam) {
    if (!splitter_.drag(GET_X_LPARAM(lParam))) return std::nullopt;
    layOut();
    return 0;
}

std::optional<LRESULT> fArcMain::onButtonUp(WPARAM, LPARAM) {
    if (!splitter_.dragging()) return std::nullopt;
    ::ReleaseCapture();
    return 0;
}

std::optional<LRESULT> fArcMain::onCaptureLost(WPARAM, LPARAM) {
    splitter_.endDrag();
    return 0;
}

std::optional<LRESULT> fArcMain::onCommand(WPARAM wParam, LPARAM) {
    static constexpr CommandRoute<fArcMain> routes[] = {
        {GoUp, BN_CLICKED, &fArcMain::onGoUp},
        {cmbURL, CBN_SELENDOK, &fArcMain::onAddressChosen},
        {cmbURL, CBN_SETFOCUS, &fArcMain::onControlFocus},
        {cmbURL, CBN_KILLFOCUS, &fArcMain::onControlFocus},
    };
    return dispatchCommand(*this, routes, wParam) ? std::optional<LRESULT>(0) : std::nullopt;
}

std::optional<LRESULT> fArcMain::onNotify(WPARAM, LPARAM lParam) {
    static constexpr NotifyRoute<fArcMain> routes[] = {
        {TV1, NM_SETFOCUS, &fArcMain::onPaneFocus},
        {TV1, NM_KILLFOCUS, &fArcMain::onPaneFocus},
        {LV1, NM_SETFOCUS, &fArcMain::onPaneFocus},
        {LV1, NM_KILLFOCUS, &fArcMain::onPaneFocus},
        {TV1, TVN_ITEMEXPANDINGW, &fArcMain::onTreeExpanding},
        {TV1, TVN_ITEMEXPANDEDW, &fArcMain::onTreeExpanded},
        {TV1, TVN_SELCHANGEDW, &fArcMain::onTreeSelected},
        {TV1, TVN_KEYDOWN, &fArcMain::onTreeKey},
        {LV1, LVN_GETDISPINFOW, &fArcMain::onListText},
        {LV1, LVN_ODFINDITEMW, &fArcMain::onListFind},
        {LV1, LVN_ITEMCHANGED, &fArcMain::onListSelection},
        {LV1, LVN_ODSTATECHANGED, &fArcMain::onListSelection},
        {LV1, NM_CLICK, &fArcMain::onListSelection},
        {LV1, NM_DBLCLK, &fArcMain::onListDoubleClick},
        {LV1, NM_RETURN, &fArcMain::onListEnter},
        {LV1, LVN_KEYDOWN, &fArcMain::onListKey},
        {LV1, LVN_COLUMNCLICK, &fArcMain::onListHeader},
    };
    return dispatchNotify(*this, routes, lParam);
}

void fArcMain::onGoUp() { presenter_.onGoUp(); }

void fArcMain::onAddressChosen() { presenter_.onAddressEntered(address_.chosenText()); }

void fArcMain::onControlFocus() { ::PostMessageW(hwnd(), kFocusMoved, 0, 0); }

void fArcMain::onAddressEnter() { presenter_.onAddressEntered(address_.text()); }

void fArcMain::onAddressEscape() { presenter_.onAddressAbandoned(); }

void fArcMain::onAddressTab(bool backwards) { moveFocus(backwards); }

LRESULT fArcMain::onPaneFocus(NMHDR&) {
    onControlFocus();
    return 0;
}

LRESULT fArcMain::onTreeExpanding(NMHDR& header) {
    const auto& change = as<NMTREEVIEWW>(header);
    const Folder folder = FolderTree::folderOf(change.itemNew);
    if ((change.action & TVE_TOGGLE) == TVE_COLLAPSE) return presenter_.mayCollapse(folder) ? FALSE : TRUE;
    tree_.insertChildren(folder);
    return FALSE;
}

LRESULT fArcMain::onTreeExpanded(NMHDR& header) {
    const bool closed = (as<NMTREEVIEWW>(header).action & TVE_TOGGLE) == TVE_COLLAPSE;
    if (closed) ::PostMessageW(hwnd(), kFolderClosed, 0, 0);
    return 0;
}

LRESULT fArcMain::onTreeSelected(NMHDR& header) {
    const auto& change = as<NMTREEVIEWW>(header);
    if (!selecting_ && change.itemNew.hItem != nullptr)
        presenter_.onFolderSelected(FolderTree::folderOf(change.itemNew));
    return 0;
}

LRESULT fArcMain::onTreeKey(NMHDR& header) { return onNavigationKey(as<NMTVKEYDOWN>(header).wVKey) ? TRUE : FALSE; }

LRESULT fArcMain::onListText(NMHDR& header) {
    list_.onGetDisplayInfo(as<NMLVDISPINFOW>(header).item);
    return 0;
}

LRESULT fArcMain::onListFind(NMHDR& header) { return list_.onFindItem(as<NMLVFINDITEMW>(header)); }

LRESULT fArcMain::onListSelection(NMHDR& header) {
    if (header.code == LVN_ITEMCHANGED) {
        const auto& change = as<NMLISTVIEW>(header);
        if ((change.uChanged & LVIF_STATE) == 0 || ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) == 0)
            return 0;
    }
    if (!list_.isChanging()) presenter_.onRowsSelected(list_.selectedCount());
    return 0;
}

LRESULT fArcMain::onListDoubleClick(NMHDR& header) {
    openRow(as<NMITEMACTIVATE>(header).iItem);
    return 0;
}

LRESULT fArcMain::onListEnter(NMHDR&) {
    openRow(list_.focusedRow());
    return 0;
}

void fArcMain::openRow(int row) {
    if (row >= 0) presenter_.onRowOpened(static_cast<std::uint32_t>(row));
}

LRESULT fArcMain::onListKey(NMHDR& header) {
    onNavigationKey(as<NMLVKEYDOWN>(header).wVKey);
    return 0;
}

LRESULT fArcMain::onListHeader(NMHDR& header) {
    presenter_.onHeaderClicked(static_cast<std::size_t>(as<NMLISTVIEW>(header).iSubItem));
    return 0;
}

bool fArcMain::onNavigationKey(WORD key) {
    switch (key) {
        case VK_BACK:
            presenter_.onGoUp();
            return true;
        case VK_TAB:
            moveFocus(::GetKeyState(VK_SHIFT) < 0);
            return true;
        default:
            return false;
    }
}

// The host's message loop knows nothing of the window's controls, so the window goes from one to the next itself.
void fArcMain::moveFocus(bool backwards) {
    const HWND order[] = {address_.hwnd(), tree_.hwnd(), list_.hwnd()};
    const HWND focus = ::GetFocus();
    const auto current = std::find_if(std::begin(order), std::end(order),
                                      [&](HWND control) { return control == focus || ::IsChild(control, focus); });
    const auto count = std::size(order);
    const auto place = static_cast<std::size_t>(current - std::begin(order)) % count;
    ::SetFocus(order[(place + (backwards ? count - 1 : 1)) % count]);
}

void fArcMain::setTitle(std::wstring_view title) { ::SetWindowTextW(hwnd(), std::wstring(title).c_str()); }

void fArcMain::clear() {
    selecting_ = true;
    tree_.clear();
    selecting_ = false;
    list_.clear();
}

void fArcMain::showFolders() {
    selecting_ = true;
    tree_.show(presenter_.folders());
    selecting_ = false;
}

void fArcMain::selectFolder(Folder folder, bool expand) {
    selecting_ = true;
    tree_.select(folder, expand);
    selecting_ = false;
}

void fArcMain::showContents() { list_.show(presenter_.contents()); }

void fArcMain::moveRows(std::span<const std::uint32_t> newRows) { list_.moveRows(newRows); }

void fArcMain::addAddress(std::wstring_view address) { address_.add(address); }

void fArcMain::chooseAddress(std::size_t index) { address_.choose(index); }

void fArcMain::moveAddressCaretToEnd() { address_.moveCaretToEnd(); }

void fArcMain::enableGoUp(bool enabled) { toolbar_.enable(GoUp, enabled); }

void fArcMain::setStatus(std::wstring_view text) {
    ::SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
}

}  // namespace tovar
