#include "browser/win32/folder_tree.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "browser/win32/browser_controls.h"
#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"
#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

constexpr int kIconSize = 16, kIndent = 19;  // at 96 dots per inch

}  // namespace

bool FolderTree::create(HWND parent) {
    tree_ = createControl(
        parent, WC_TREEVIEWW, L"Folders",
        WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
        WS_EX_CLIENTEDGE, TV1);
    if (tree_ == nullptr) return false;
    ownProcedure_ = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(tree_, GWLP_WNDPROC));
    return true;
}

void FolderTree::setIcons(int closed, int open) {
    closedIcon_ = closed;
    openIcon_ = open;
}

void FolderTree::setScale(int dpi) {
    const HIMAGELIST images = SystemImageListOfSize(scaled(kIconSize, dpi));
    ::SendMessageW(tree_, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images));
    ::SendMessageW(tree_, TVM_SETINDENT, static_cast<WPARAM>(scaled(kIndent, dpi)), 0);
}

void FolderTree::clear() {
    const RedrawPause pause(tree_);
    folders_ = nullptr;
    items_.clear();
    ::SendMessageW(tree_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
}

void FolderTree::show(const FolderModel& folders) {
    clear();
    folders_ = &folders;
    items_.assign(folders.size(), nullptr);
    const RedrawPause pause(tree_);
    insert(FolderModel::kRoot, TVI_ROOT);
    expand(FolderModel::kRoot);
}

void FolderTree::insert(Folder folder, HTREEITEM parent) {
    std::wstring text(folders_->text(folder));
    TVINSERTSTRUCTW place{};
    place.hParent = parent;
    place.hInsertAfter = TVI_LAST;
    place.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_CHILDREN;
    place.item.pszText = text.data();
    place.item.iImage = closedIcon_;
    place.item.iSelectedImage = openIcon_;
    place.item.lParam = static_cast<LPARAM>(folder);
    place.item.cChildren = folders_->children(folder).empty() ? 0 : 1;
    items_[folder] = reinterpret_cast<HTREEITEM>(ask(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&place)));
}

LRESULT FolderTree::ask(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::CallWindowProcW(ownProcedure_, tree_, message, wParam, lParam);
}

void FolderTree::insertChildren(Folder folder) {
    if (folders_ == nullptr || folder >= items_.size() || items_[folder] == nullptr) return;
    const auto children = folders_->children(folder);
    if (children.empty() || items_[children.front()] != nullptr) return;
    const RedrawPause pause(tree_);
    for (const Folder child : children) insert(child, items_[folder]);
}

// Some tree views measure the text of every folder that comes into being by this, 50,000 of them in 140 ms, whether
// they were there before or are inserted afterwards; they do so in one go.
void FolderTree::expand(Folder folder) {
    insertChildren(folder);
    if (isExpanded(folder)) return;  // some tree views lay everything below out again
    ::SendMessageW(tree_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(items_[folder]));
}

std::optional<Folder> FolderTree::selected() const {
    TVITEMW item{};
    item.mask = TVIF_PARAM;
    item.hItem = reinterpret_cast<HTREEITEM>(::SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_CARET, 0));
    if (item.hItem == nullptr || !::SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) {
        return std::nullopt;
    }
    return folderOf(item);
}

int FolderTree::widthOfTexts() const {
    RECT window{}, client{};
    ::GetWindowRect(tree_, &window);
    ::GetClientRect(tree_, &client);
    SCROLLINFO scrolled{sizeof scrolled, SIF_POS, 0, 0, 0, 0, 0};
    ::GetScrollInfo(tree_, SB_HORZ, &scrolled);
    LONG width = 0;
    auto count = ::SendMessageW(tree_, TVM_GETVISIBLECOUNT, 0, 0) + 1;
    for (LPARAM item = ::SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0); item != 0 && count > 0; --count) {
        // The message takes the item where it leaves the rectangle.
        RECT text{};
        std::memcpy(&text, &item, sizeof item);
        if (::SendMessageW(tree_, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&text)) != FALSE) {
            width = std::max(width, text.right + scrolled.nPos);
        }
        item = ::SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item);
    }
    const LONG frame = (window.right - window.left) - client.right;  // with the scroll bar, when there is one
    return static_cast<int>(width + frame);
}

bool FolderTree::isExpanded(Folder folder) const {
    if (folders_ == nullptr || folder >= items_.size() || folders_->children(folder).empty()) return true;
    const auto item = reinterpret_cast<WPARAM>(items_[folder]);
    return (::SendMessageW(tree_, TVM_GETITEMSTATE, item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

void FolderTree::select(Folder folder, bool alsoExpand) {
    if (folders_ == nullptr || folder >= items_.size()) return;
    std::vector<Folder> above;
    for (auto each = folders_->parent(folder); each; each = folders_->parent(*each)) above.push_back(*each);
    {
        const RedrawPause pause(tree_);
        for (auto each = above.rbegin(); each != above.rend(); ++each) insertChildren(*each);
        // From the inside out: nothing below a closed folder has to be laid out yet, however deep it lies.
        if (alsoExpand) expand(folder);
        for (const Folder each : above) expand(each);
    }
    const auto item = reinterpret_cast<LPARAM>(items_[folder]);
    ::SendMessageW(tree_, TVM_SELECTITEM, TVGN_CARET, item);
    ::SendMessageW(tree_, TVM_ENSUREVISIBLE, 0, item);
}

}  // namespace tovar
