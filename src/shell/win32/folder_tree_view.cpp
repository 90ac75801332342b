#include "shell/win32/folder_tree_view.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "shell/win32/child_control.h"
#include "shell/win32/folder_icons.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/message_map.h"
#include "shell/win32/system_icons.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

constexpr int kTree = 1;
constexpr std::wstring_view kReading = L" (reading...)";
constexpr UINT_PTR kTimer = 1;
constexpr UINT kPause = 250;  // milliseconds between two looks at the disk

FolderNode nodeOf(const TVITEMW& item) { return static_cast<FolderNode>(item.lParam); }

}  // namespace

WenFolderTreeView::WenFolderTreeView(ShellFolderSource::Reader reader) : source_(std::move(reader)) {}

WenFolderTreeView::~WenFolderTreeView() { destroy(); }

bool WenFolderTreeView::create(HWND parent, const RECT& place, int id, SelectionChanged changed) {
    const VisualStyles styles;
    Description description;
    description.className = L"WenFolderTreeView";
    description.style = WS_CHILD | WS_CLIPCHILDREN;
    description.extendedStyle = WS_EX_CONTROLPARENT;
    description.parent = parent;
    if (!Window::create(description)) return false;
    ::SetWindowLongPtrW(hwnd(), GWLP_ID, id);
    tree_ = createControl(
        hwnd(), WC_TREEVIEWW, L"Folders",
        WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
        WS_EX_CLIENTEDGE, kTree);
    if (tree_ == nullptr) return false;
    ::SendMessageW(tree_, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(SystemImageList(SHGFI_SMALLICON)));
    icons_ = plainFolderIcons();
    ::SetWindowPos(hwnd(), HWND_BOTTOM, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_NOACTIVATE | SWP_SHOWWINDOW);
    presenter_.start();
    changed_ = std::move(changed);
    ::SetTimer(hwnd(), kTimer, kPause, nullptr);
    return true;
}

bool WenFolderTreeView::createInstead(HWND dialog, int id, SelectionChanged changed) {
    const ReplacedControl frame(dialog, id);
    if (!create(dialog, frame.place(), id, std::move(changed))) return false;
    frame.giveTo(hwnd());
    return true;
}

bool WenFolderTreeView::SelectFolder(std::wstring_view path) {
    return presenter_.selectFolder(plainPath(std::wstring(path)));
}

int WenFolderTreeView::widthOfTexts() const {
    const auto next = [this](UINT which, LPARAM item) { return ::SendMessageW(tree_, TVM_GETNEXTITEM, which, item); };
    LONG widest = 0;
    for (LPARAM item = next(TVGN_ROOT, 0); item != 0; item = next(TVGN_NEXTVISIBLE, item)) {
        RECT text{};
        // The call takes the item where it answers the rectangle.
        std::memcpy(&text, &item, sizeof item);
        if (::SendMessageW(tree_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&text)) != FALSE) {
            widest = std::max(widest, text.right);
        }
    }
    RECT inside{}, own{};
    ::GetClientRect(tree_, &inside);
    ::GetWindowRect(tree_, &own);
    return ::GetScrollPos(tree_, SB_HORZ) + widest + (own.right - own.left) - inside.right;
}

std::optional<LRESULT> WenFolderTreeView::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<WenFolderTreeView> routes[] = {
        {WM_SIZE, &WenFolderTreeView::onSize},    {WM_SETFOCUS, &WenFolderTreeView::onFocus},
        {WM_SETFONT, &WenFolderTreeView::onFont}, {WM_GETFONT, &WenFolderTreeView::onGetFont},
        {WM_TIMER, &WenFolderTreeView::onTimer},  {WM_NOTIFY, &WenFolderTreeView::onNotify},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

void WenFolderTreeView::onGone() {
    tree_ = nullptr;
    items_.clear();
}

std::optional<LRESULT> WenFolderTreeView::onSize(WPARAM, LPARAM lParam) {
    ::SetWindowPos(tree_, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
    return 0;
}

std::optional<LRESULT> WenFolderTreeView::onFocus(WPARAM, LPARAM) {
    ::SetFocus(tree_);
    return 0;
}

std::optional<LRESULT> WenFolderTreeView::onFont(WPARAM wParam, LPARAM lParam) {
    return ::SendMessageW(tree_, WM_SETFONT, wParam, lParam);
}

std::optional<LRESULT> WenFolderTreeView::onGetFont(WPARAM, LPARAM) { return ::SendMessageW(tree_, WM_GETFONT, 0, 0); }

std::optional<LRESULT> WenFolderTreeView::onTimer(WPARAM wParam, LPARAM) {
    if (wParam != kTimer) return std::nullopt;
    const ULONGLONG begin = ::GetTickCount64();
    presenter_.onTick();
    // Where looking takes long, as in a folder of very many that is being filled, most of the time remains the user's.
    const auto spent = static_cast<UINT>(std::min<ULONGLONG>(::GetTickCount64() - begin, 60000));
    if (hwnd() != nullptr) ::SetTimer(hwnd(), kTimer, std::max(kPause, 4 * spent), nullptr);
    return 0;
}

std::optional<LRESULT> WenFolderTreeView::onNotify(WPARAM, LPARAM lParam) {
    static constexpr NotifyRoute<WenFolderTreeView> routes[] = {
        {kTree, TVN_GETDISPINFOW, &WenFolderTreeView::onGetDisplayInfo},
        {kTree, TVN_ITEMEXPANDINGW, &WenFolderTreeView::onExpanding},
        {kTree, TVN_SELCHANGEDW, &WenFolderTreeView::onSelected},
        {kTree, TVN_DELETEITEMW, &WenFolderTreeView::onItemGone},
        {kTree, TVN_KEYDOWN, &WenFolderTreeView::onKey},
    };
    return dispatchNotify(*this, routes, lParam);
}

LRESULT WenFolderTreeView::onGetDisplayInfo(NMHDR& header) {
    TVITEMW& item = reinterpret_cast<NMTVDISPINFOW&>(header).item;
    const FolderNode node = nodeOf(item);
    if (!items_.contains(node)) return 0;
    if ((item.mask & TVIF_CHILDREN) != 0) item.cChildren = presenter_.mayHaveFolders(node) ? 1 : 0;
    if ((item.mask & (TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE)) == 0) return 0;
    const ShownFolder shown = shownFolder(presenter_.path(node), presenter_.name(node));
    if ((item.mask & TVIF_IMAGE) != 0) item.iImage = shown.icons.closed;
    if ((item.mask & TVIF_SELECTEDIMAGE) != 0) item.iSelectedImage = shown.icons.open;
    if ((item.mask & TVIF_TEXT) != 0) {
        shownText_ = shown.name;
        if (presenter_.isReading(node)) shownText_ += kReading;
        item.pszText = shownText_.data();
    }
    if ((item.mask & TVIF_CHILDREN) == 0) item.mask |= TVIF_DI_SETITEM;
    return 0;
}

LRESULT WenFolderTreeView::onExpanding(NMHDR& header) {
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
    const FolderNode node = nodeOf(change.itemNew);
    if ((change.action & TVE_TOGGLE) == TVE_COLLAPSE) {
        presenter_.onCollapsing(node);
        return FALSE;
    }
    const BusyCursor busy;
    return presenter_.onExpanding(node) ? FALSE : TRUE;
}

LRESULT WenFolderTreeView::onSelected(NMHDR& header) {
    presenter_.onSelected(nodeOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew));
    return 0;
}

LRESULT WenFolderTreeView::onItemGone(NMHDR& header) {
    items_.erase(nodeOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemOld));
    return 0;
}

LRESULT WenFolderTreeView::onKey(NMHDR& header) {
    if (reinterpret_cast<const NMTVKEYDOWN&>(header).wVKey != VK_F5) return 0;
    const BusyCursor busy;
    presenter_.refresh();
    return 1;
}

HTREEITEM WenFolderTreeView::itemOf(FolderNode node) const {
    const auto found = items_.find(node);
    return found == items_.end() ? nullptr : found->second;
}

void WenFolderTreeView::describe(FolderNode node, TVITEMW& item) {
    item.mask |= TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_STATE;
    item.stateMask = TVIS_CUT;
    item.state = presenter_.isHidden(node) ? TVIS_CUT : 0;
    item.cChildren = I_CHILDRENCALLBACK;
    shownText_ = presenter_.name(node);
    if (presenter_.isReading(node)) shownText_ += kReading;
    item.pszText = shownText_.data();
    item.iImage = icons_.closed;
    item.iSelectedImage = icons_.open;
    if (const auto icon = presenter_.placeIcon(node)) {
        item.iImage = item.iSelectedImage = *icon;
    } else if (presenter_.isCustomised(node)) {
        // Asked for when it is painted: the shell reads a file for each.
        item.pszText = LPSTR_TEXTCALLBACKW;
        item.iImage = item.iSelectedImage = I_IMAGECALLBACK;
    }
}

void WenFolderTreeView::insert(FolderNode node, FolderNode parent, FolderNode after) {
    TVINSERTSTRUCTW place{};
    place.hParent = parent == kNoFolder ? TVI_ROOT : itemOf(parent);
    place.hInsertAfter = after == kNoFolder ? TVI_FIRST : itemOf(after);
    place.item.mask = TVIF_PARAM;
    place.item.lParam = static_cast<LPARAM>(node);
    describe(node, place.item);
    // Already known when the tree asks for what it is to show.
    items_[node] = nullptr;
    items_[node] =
        reinterpret_cast<HTREEITEM>(::SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&place)));
}

void WenFolderTreeView::remove(FolderNode node) {
    const HTREEITEM item = itemOf(node);
    if (item == nullptr) return;
    ::SendMessageW(tree_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(item));
}

void WenFolderTreeView::update(FolderNode node) {
    TVITEMW item{};
    item.hItem = itemOf(node);
    if (item.hItem == nullptr) return;
    item.mask = TVIF_HANDLE;
    describe(node, item);
    ::SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void WenFolderTreeView::expand(FolderNode node) {
    ::SendMessageW(tree_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(itemOf(node)));
}

void WenFolderTreeView::select(FolderNode node) {
    const auto item = reinterpret_cast<LPARAM>(itemOf(node));
    ::SendMessageW(tree_, TVM_SELECTITEM, TVGN_CARET, item);
    ::SendMessageW(tree_, TVM_ENSUREVISIBLE, 0, item);
}

void WenFolderTreeView::beginChange() { ::SendMessageW(tree_, WM_SETREDRAW, FALSE, 0); }

void WenFolderTreeView::endChange() {
    ::SendMessageW(tree_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(tree_, nullptr, TRUE);
}

void WenFolderTreeView::selectionChanged() {
    if (changed_) changed_();
}

}  // namespace tovar
