#include "browser/win32/archive_browser_window.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "browser/win32/browser_controls.h"
#include "browser/win32/browser_messages.h"

// The browser window's commands: how menus, keys and buttons reach the presenter.
namespace tovar {
namespace {

// Messages run while these work, and the window may go meanwhile: they are begun outside of every control's message.
constexpr BrowserCommand kLong[] = {kOpen,  mnuEditExtract, kCopy,    mnuEditAdd, kAddFolder,
                                    kPaste, mnuEditDelete,  kRefresh, mnuEditExit};
// The same, as long as there are very many rows.
constexpr BrowserCommand kLongForManyRows[] = {mnuEditSelectAll, mnuEditSelectInvert};

constexpr UINT kDropDelay = 20;  // milliseconds

// In a text field other keys are for the text.
constexpr BrowserCommand kInTextFields[] = {kRefresh,
                                            kFind,
                                            kFindNext,
                                            kFindPrevious,
                                            mnuEditExit,
                                            mnuViewStyleLargeIcons,
                                            mnuViewStyleSmallIcons,
                                            mnuViewStyleList,
                                            mnuViewStyleDetails,
                                            mnuViewStyleExactDetails};

template <std::size_t N>
bool isOneOf(const BrowserCommand (&commands)[N], BrowserCommand command) {
    return std::ranges::find(commands, command) != std::end(commands);
}

// A menu that the keyboard asks for has no place of its own.
bool isByKeyboard(LPARAM place) { return place == -1; }

}  // namespace

void fArcMain::runCommand(BrowserCommand command) {
    if (command == kFind) {
        find_.find();
    } else if (command == kFindNext) {
        find_.findNext();
    } else if (command == kFindPrevious) {
        find_.findPrevious();
    } else if (isOneOf(kLong, actionOf(command)) ||
               (isOneOf(kLongForManyRows, actionOf(command)) && presenter_.takesLongToSort())) {
        ::PostMessageW(hwnd(), kRunCommand, static_cast<WPARAM>(command), 0);
    } else {
        presenter_.onCommand(command);
    }
}

std::optional<LRESULT> fArcMain::onRunCommand(WPARAM command, LPARAM) {
    runToTheEnd([&] { presenter_.onCommand(static_cast<BrowserCommand>(command)); });
    return 0;
}

std::optional<LRESULT> fArcMain::onOpenRow(WPARAM, LPARAM) {
    if (const auto row = std::exchange(rowToOpen_, std::nullopt)) runToTheEnd([&] { presenter_.onRowOpened(*row); });
    return 0;
}

std::optional<LRESULT> fArcMain::onSortRows(WPARAM column, LPARAM) {
    runToTheEnd([&] { presenter_.onHeaderClicked(column); });
    return 0;
}

std::optional<LRESULT> fArcMain::onShowFolder(WPARAM folder, LPARAM) {
    // Another one may be selected since.
    if (tree_.selected() == static_cast<Folder>(folder)) {
        runToTheEnd([&] { presenter_.onFolderSelected(static_cast<Folder>(folder)); });
    }
    return 0;
}

std::optional<LRESULT> fArcMain::onDragRows(WPARAM button, LPARAM) {
    const auto with = static_cast<DragButton>(button);
    // Who has let the button go by now has dropped nothing anywhere.
    const bool isHeld = ::GetKeyState(with == DragButton::Left ? VK_LBUTTON : VK_RBUTTON) < 0;
    if (isHeld) runToTheEnd([&] { presenter_.onDragBegun(with); });
    return 0;
}

std::optional<LRESULT> fArcMain::onFinishDrop(WPARAM, LPARAM) {
    runToTheEnd([&] { presenter_.onFinishDrop(); });
    return 0;
}

void fArcMain::watchShell(bool watched) {
    if (!watched) {
        shellNotify_.stop();
    } else if (shellNotify_.hwnd() != nullptr || shellNotify_.create(hwnd(), WenShellNotify1)) {
        shellNotify_.start();
    }
}

void fArcMain::finishDropSoon() { ::PostMessageW(hwnd(), kFinishDrop, 0, 0); }

void fArcMain::onShellNotify(const std::wstring& first, const std::wstring& second) {
    presenter_.onShellNotify(first, second);
}

void fArcMain::runToTheEnd(const std::function<void()>& run) {
    try {
        run();
    } catch (...) {
        // Memory is short: the window stays, as far as it came.
    }
    if (closeWanted_ && !presenter_.isBusy()) destroy();
}

std::optional<LRESULT> fArcMain::onTimer(WPARAM wParam, LPARAM) {
    if (wParam == tmrOLE) {
        addDropped();
        return 0;
    }
    hostWatch_.onTimer(wParam);
    return std::nullopt;
}

std::optional<LRESULT> fArcMain::onDropFiles(WPARAM drop, LPARAM) {
    drops_.onDropFiles(drop);
    return 0;
}

void fArcMain::onFilesDropped(std::vector<std::wstring> paths) {
    dropped_.insert(dropped_.end(), std::move_iterator(paths.begin()), std::move_iterator(paths.end()));
    ::SetTimer(hwnd(), tmrOLE, kDropDelay, nullptr);
}

void fArcMain::addDropped() {
    // A command may have begun since: what was taken is not lost, and has its turn when that has ended.
    if (presenter_.isBusy() || isBehindDialog()) return;
    ::KillTimer(hwnd(), tmrOLE);
    // The question belongs to the window, not behind that of the program that the files come from.
    ::SetForegroundWindow(::GetAncestor(hwnd(), GA_ROOT));
    runToTheEnd([this] { presenter_.onFilesDropped(std::exchange(dropped_, {})); });
}

void fArcMain::setViewStyle(ViewStyle style) { list_.setStyle(style); }

std::uint32_t fArcMain::selectAll(Breather* breather) {
    list_.selectAll(breather);
    return list_.selectedCount();
}

std::uint32_t fArcMain::invertSelection(Breather* breather) {
    list_.invertSelection(breather);
    return list_.selectedCount();
}

std::vector<std::uint32_t> fArcMain::selectedRows() const { return list_.selectedRows(); }

std::optional<std::uint32_t> fArcMain::focusedRow() const {
    const int row = list_.focusedRow();
    return row < 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(row));
}

void fArcMain::enable(BrowserCommand command, bool enabled) {
    if (command == mnuEdit) {
        menuBand_.enable(command, enabled);
    } else {
        toolbar_.enable(command, enabled);
        if (command == Add) drops_.announce(enabled);
    }
}

void fArcMain::close() { ::PostMessageW(hwnd(), WM_CLOSE, 0, 0); }

UniqueMenu fArcMain::makeBandMenu(BrowserMenu menu) {
    return makePopupMenu(
        menu, [this](BrowserCommand command) { return presenter_.isEnabled(command); }, presenter_.viewStyle());
}

void fArcMain::onBandCommand(BrowserCommand command) { runCommand(command); }

LRESULT fArcMain::onBandDropDown(NMHDR& header) {
    // A menu is not opened inside the band's message: the window may go while it is open.
    const int menu = reinterpret_cast<const NMTOOLBARW&>(header).iItem;
    ::PostMessageW(hwnd(), kOpenBandMenu, 0, MAKELPARAM(menu, MenuBand::By::Mouse));
    return TBDDRET_DEFAULT;
}

std::optional<LRESULT> fArcMain::onOpenBandMenu(WPARAM letter, LPARAM menu) {
    if (letter != 0) {
        menuBand_.openByLetter(static_cast<wchar_t>(letter));
    } else {
        menuBand_.open(LOWORD(menu), static_cast<MenuBand::By>(HIWORD(menu)));
    }
    return 0;
}

LRESULT fArcMain::onHint(NMHDR& header) {
    BrowserToolbar::onHint(reinterpret_cast<NMTTDISPINFOW&>(header));
    return 0;
}

bool fArcMain::onPaneKey(HWND pane, const KeyStroke& key) {
    const bool isPlain = !key.control && !key.alt;
    if (key.key == static_cast<Key>(VK_F10) && isPlain && !key.shift) {
        menuBand_.enter();
        return true;
    }
    if (key.key == Key::F6 && isPlain) {
        moveFocus(key.shift, FocusStops::Panes);
        return true;
    }
    // While the mouse selects rows, Escape is the list's.
    const bool isRowsOrFolders = pane == list_.hwnd() || pane == tree_.hwnd();
    if (key.key == static_cast<Key>(VK_ESCAPE) && isPlain && !key.shift && isRowsOrFolders && find_.isShown() &&
        ::GetCapture() != pane) {
        find_.close();
        return true;
    }
    const BrowserCommand command = commandOfKey(key);
    // The list opens rows itself, and a folder of the tree is open when it is selected.
    if (command == kNoCommand || command == kOpen) return false;
    if ((pane == address_.edit() || find_.contains(pane)) && !isOneOf(kInTextFields, command)) return false;
    // Somebody in the tree does not think of the rows that are selected in the list.
    if (pane == tree_.hwnd() && (command == mnuEditDelete || command == kCopy)) return false;
    runCommand(command);
    return true;
}

bool fArcMain::onPaneAltLetter(wchar_t letter) {
    if (!menuBand_.hasLetter(letter)) return false;
    ::PostMessageW(hwnd(), kOpenBandMenu, letter, 0);
    return true;
}

void fArcMain::onFindBarShown() {
    if (!find_.isShown() && lastFocus_ == find_.hwnd()) lastFocus_ = list_.hwnd();
    layOut();
}

void fArcMain::onFindBarFocus() { onControlFocus(); }

void fArcMain::onFindBarTab(bool backwards) { moveFocus(backwards); }

std::optional<LRESULT> fArcMain::onContextMenu(WPARAM pane, LPARAM place) {
    const auto window = reinterpret_cast<HWND>(pane);
    if (window != list_.hwnd() && window != tree_.hwnd()) return std::nullopt;
    const auto clicked = std::exchange(rightClick_, std::nullopt);
    if (clicked && window == list_.hwnd() && !isByKeyboard(place)) place = MAKELPARAM(clicked->x, clicked->y);
    ::PostMessageW(hwnd(), kShowContextMenu, pane, place);
    return 0;
}

std::optional<LRESULT> fArcMain::onShowContextMenu(WPARAM pane, LPARAM place) {
    if (reinterpret_cast<HWND>(pane) == tree_.hwnd()) {
        showTreeMenu(place);
    } else {
        showListMenu(place);
    }
    return 0;
}

void fArcMain::showListMenu(LPARAM place) {
    POINT point{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    bool onRow = false;
    RECT covered{};
    if (isByKeyboard(place)) {
        point = {};
        onRow = list_.selectedCount() != 0;
        if (onRow) {
            covered = list_.placeOfRow(list_.focusedRow());
            point = {covered.left, covered.bottom};
        }
        ::ClientToScreen(list_.hwnd(), &point);
        ::MapWindowPoints(list_.hwnd(), HWND_DESKTOP, reinterpret_cast<POINT*>(&covered), 2);
    } else {
        POINT inList = point;
        ::ScreenToClient(list_.hwnd(), &inList);
        onRow = list_.rowAt(inList) >= 0 && list_.selectedCount() != 0;
    }
    const UniqueMenu menu = makeBandMenu(onRow ? BrowserMenu::Rows : BrowserMenu::EmptyArea);
    const BrowserCommand chosen =
        trackPopupMenu(menu.get(), hwnd(), point, ::IsRectEmpty(&covered) ? nullptr : &covered);
    if (hwnd() != nullptr && chosen != kNoCommand) runCommand(chosen);
}

void fArcMain::showTreeMenu(LPARAM place) {
    const HWND tree = tree_.hwnd();
    POINT point{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    if (isByKeyboard(place)) {
        item.hItem = reinterpret_cast<HTREEITEM>(::SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
        RECT text{};
        if (!TreeView_GetItemRect(tree, item.hItem, &text, TRUE)) return;
        point = {text.left, text.bottom};
        ::ClientToScreen(tree, &point);
    } else {
        TVHITTESTINFO hit{};
        hit.pt = point;
        ::ScreenToClient(tree, &hit.pt);
        ::SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        if ((hit.flags & (TVHT_ONITEM | TVHT_ONITEMRIGHT | TVHT_ONITEMINDENT)) != 0) item.hItem = hit.hItem;
    }
    if (item.hItem == nullptr || !::SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) return;
    const Folder folder = FolderTree::folderOf(item);
    if (folder >= presenter_.folders().size()) return;
    const std::wstring key = presenter_.folders().key(folder);
    const UniqueMenu menu = makePopupMenu(
        BrowserMenu::Folders, [this](BrowserCommand command) { return presenter_.isFolderCommandEnabled(command); },
        presenter_.viewStyle());
    // The folder that the menu is for, whichever is selected.
    ::SendMessageW(tree, TVM_SELECTITEM, TVGN_DROPHILITE, reinterpret_cast<LPARAM>(item.hItem));
    const BrowserCommand chosen = trackPopupMenu(menu.get(), hwnd(), point, nullptr);
    if (hwnd() == nullptr) return;
    ::SendMessageW(tree, TVM_SELECTITEM, TVGN_DROPHILITE, 0);
    // The archive may have been listed again meanwhile.
    if (chosen == kNoCommand || presenter_.folders().find(key) != folder) return;
    runToTheEnd([&] { presenter_.onFolderCommand(chosen, folder); });
}

}  // namespace tovar
