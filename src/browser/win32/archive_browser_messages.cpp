#include "browser/win32/archive_browser_window.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "browser/win32/browser_controls.h"
#include "browser/win32/browser_messages.h"
#include "shell/win32/message_map.h"

// What the browser window answers to messages.
namespace tovar {
namespace {

// Since Windows 8.1 and 10; older headers do not have them.
constexpr UINT kDpiChanged = 0x02E0, kDpiChangedAfterParent = 0x02E3;

template <class Notification>
Notification& as(NMHDR& header) {
    return reinterpret_cast<Notification&>(header);
}

}  // namespace

std::optional<LRESULT> fArcMain::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<fArcMain> routes[] = {
        {WM_CREATE, &fArcMain::onCreate},
        {WM_DESTROY, &fArcMain::onDestroy},
        {WM_CLOSE, &fArcMain::onClose},
        {WM_TIMER, &fArcMain::onTimer},
        {WM_DROPFILES, &fArcMain::onDropFiles},
        {WM_SIZE, &fArcMain::onSize},
        {WM_WINDOWPOSCHANGING, &fArcMain::onMoving},
        {WM_WINDOWPOSCHANGED, &fArcMain::onMoved},
        {WM_THEMECHANGED, &fArcMain::onStyleChanged},
        {WM_GETMINMAXINFO, &fArcMain::onMinimumSize},
        {WM_SETFOCUS, &fArcMain::onFocus},
        {kFocusMoved, &fArcMain::onFocusMoved},
        {kFolderClosed, &fArcMain::onFolderClosed},
        {kOpenBandMenu, &fArcMain::onOpenBandMenu},
        {kShowContextMenu, &fArcMain::onShowContextMenu},
        {kRunCommand, &fArcMain::onRunCommand},
        {kOpenRow, &fArcMain::onOpenRow},
        {kSortRows, &fArcMain::onSortRows},
        {kDragRows, &fArcMain::onDragRows},
        {kFinishDrop, &fArcMain::onFinishDrop},
        {kShowFolder, &fArcMain::onShowFolder},
        {WM_CONTEXTMENU, &fArcMain::onContextMenu},
        {WM_MOUSEACTIVATE, &fArcMain::onMouseActivate},
        {WM_COMMAND, &fArcMain::onCommand},
        {WM_NOTIFY, &fArcMain::onNotify},
        {kDpiChanged, &fArcMain::onScaleChanged},
        {kDpiChangedAfterParent, &fArcMain::onScaleOfHostChanged},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

std::optional<LRESULT> fArcMain::onFocus(WPARAM, LPARAM) {
    ::SetFocus(lastFocus_);
    return 0;
}

// A child's caption is not painted as active by itself.
std::optional<LRESULT> fArcMain::onFocusMoved(WPARAM, LPARAM) {
    const HWND focus = ::GetFocus();
    const bool within = focus == hwnd() || ::IsChild(hwnd(), focus);
    for (const HWND control : {address_.hwnd(), tree_.hwnd(), list_.hwnd(), find_.hwnd()}) {
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

std::optional<LRESULT> fArcMain::onCommand(WPARAM wParam, LPARAM) {
    static constexpr CommandRoute<fArcMain> routes[] = {
        {cmbURL, CBN_SELENDOK, &fArcMain::onAddressChosen},
        {cmbURL, CBN_SETFOCUS, &fArcMain::onControlFocus},
        {cmbURL, CBN_KILLFOCUS, &fArcMain::onControlFocus},
    };
    if (dispatchCommand(*this, routes, wParam)) return 0;
    // Of a menu, a button or an accelerator key of the host.
    const CommandDescription* const command = HIWORD(wParam) <= 1 ? describe(LOWORD(wParam)) : nullptr;
    if (command == nullptr) return std::nullopt;
    runCommand(command->command);
    return 0;
}

std::optional<LRESULT> fArcMain::onNotify(WPARAM, LPARAM lParam) {
    // A list of very many rows may tell of each, and a tree does so of every folder that it forgets.
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code == LVN_ITEMCHANGED && header.idFrom == LV1 && list_.isChanging()) return 0;
    if (header.code == TVN_DELETEITEMW) return 0;
    static constexpr NotifyRoute<fArcMain> routes[] = {
        {kMenuBand, TBN_DROPDOWN, &fArcMain::onBandDropDown},
        {Add, TTN_GETDISPINFOW, &fArcMain::onHint},
        {Extract, TTN_GETDISPINFOW, &fArcMain::onHint},
        {GoUp, TTN_GETDISPINFOW, &fArcMain::onHint},
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
        {LV1, NM_RCLICK, &fArcMain::onListRightClick},
        {LV1, NM_RETURN, &fArcMain::onListEnter},
        {LV1, LVN_KEYDOWN, &fArcMain::onListKey},
        {LV1, LVN_COLUMNCLICK, &fArcMain::onListHeader},
        {LV1, LVN_BEGINDRAG, &fArcMain::onListDrag},
        {LV1, LVN_BEGINRDRAG, &fArcMain::onListDrag},
    };
    return dispatchNotify(*this, routes, lParam);
}

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
    if (selecting_ || change.itemNew.hItem == nullptr) return 0;
    const Folder folder = FolderTree::folderOf(change.itemNew);
    // As for a row that is opened: messages run while many rows are put in order.
    if (presenter_.takesLongToShow(folder)) {
        ::PostMessageW(hwnd(), kShowFolder, folder, 0);
    } else {
        presenter_.onFolderSelected(folder);
    }
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

// When the list asks for its menu it says where the mouse pointer is by then: the user may have gone on, and a click
// that a program sends is not where the pointer is at all.
LRESULT fArcMain::onListRightClick(NMHDR& header) {
    POINT place = as<NMITEMACTIVATE>(header).ptAction;
    ::ClientToScreen(list_.hwnd(), &place);
    rightClick_ = place;
    return 0;
}

LRESULT fArcMain::onListEnter(NMHDR&) {
    openRow(list_.focusedRow());
    return 0;
}

void fArcMain::openRow(int row) {
    if (row < 0 || static_cast<std::uint32_t>(row) >= presenter_.contents().rowCount()) return;
    rowToOpen_ = static_cast<std::uint32_t>(row);
    // Messages run while a file is opened, and the list may go with its window: not inside the list's own message.
    const auto folder = presenter_.contents().folderAt(*rowToOpen_);
    if (folder && !presenter_.takesLongToShow(*folder)) {
        onOpenRow(0, 0);
    } else {
        ::PostMessageW(hwnd(), kOpenRow, 0, 0);
    }
}

LRESULT fArcMain::onListKey(NMHDR& header) {
    onNavigationKey(as<NMLVKEYDOWN>(header).wVKey);
    return 0;
}

LRESULT fArcMain::onListHeader(NMHDR& header) {
    const auto column = static_cast<std::size_t>(as<NMLISTVIEW>(header).iSubItem);
    if (presenter_.takesLongToSort()) {
        ::PostMessageW(hwnd(), kSortRows, column, 0);
    } else {
        presenter_.onHeaderClicked(column);
    }
    return 0;
}

// Messages run until the button is let go: not inside the list's own message.
LRESULT fArcMain::onListDrag(NMHDR& header) {
    const DragButton button = header.code == LVN_BEGINDRAG ? DragButton::Left : DragButton::Right;
    ::PostMessageW(hwnd(), kDragRows, static_cast<WPARAM>(button), 0);
    return 0;
}

bool fArcMain::onNavigationKey(WORD key) {
    switch (key) {
        case VK_TAB:
            moveFocus(::GetKeyState(VK_SHIFT) < 0);
            return true;
        default:
            return false;
    }
}

// The host's message loop knows nothing of the window's controls, so the window goes from one to the next itself. Tab
// goes to where the work is done; F6 goes from pane to pane, to the splitter too, and the find bar is one of them.
void fArcMain::moveFocus(bool backwards, FocusStops stops) {
    std::vector<HWND> order{address_.hwnd(), tree_.hwnd(), splitter_.hwnd(), list_.hwnd()};
    const HWND focus = ::GetFocus();
    if (stops == FocusStops::Panes) {
        if (find_.isShown()) order.push_back(find_.hwnd());
    } else {
        const std::vector<HWND> inBar = find_.tabStops();
        order.insert(order.end(), inBar.begin(), inBar.end());
        // The arrow keys of the panes are their own.
        if (focus != splitter_.hwnd()) std::erase(order, splitter_.hwnd());
    }
    const auto current = std::find_if(std::begin(order), std::end(order),
                                      [&](HWND control) { return control == focus || ::IsChild(control, focus); });
    const auto count = std::size(order);
    const auto place = static_cast<std::size_t>(current - std::begin(order)) % count;
    ::SetFocus(order[(place + (backwards ? count - 1 : 1)) % count]);
}

}  // namespace tovar
