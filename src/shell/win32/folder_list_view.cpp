#include "shell/win32/folder_list_view.h"

#include <algorithm>
#include <utility>

#include "shell/paths.h"
#include "shell/scoped_flag.h"
#include "shell/win32/child_control.h"
#include "shell/win32/list_view.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

constexpr std::wstring_view kReading = L"Reading...";
constexpr WPARAM kEveryRow = static_cast<WPARAM>(-1);

void setState(HWND list, WPARAM row, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    ::SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
}

/// @return whether files of an extension have icons of their own
bool hasOwnIcon(const std::wstring& extension) {
    static constexpr std::wstring_view kOwn[] = {L"EXE", L"ICO", L"LNK", L"URL", L"CUR", L"ANI"};
    return std::find(std::begin(kOwn), std::end(kOwn), extension) != std::end(kOwn);
}

}  // namespace

bool FolderListView::create(HWND parent, int id, UINT selectionMessage, Events events) {
    events_ = std::move(events);
    selectionMessage_ = selectionMessage;
    list_ = createControl(
        parent, WC_LISTVIEWW, L"Files",
        WS_TABSTOP | LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
        WS_EX_CLIENTEDGE, id);
    if (list_ == nullptr) return false;
    constexpr DWORD kExtended = LVS_EX_LABELTIP | LVS_EX_DOUBLEBUFFER | LVS_EX_FULLROWSELECT;
    ::SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
    AttachSystemImageList(list_, true);
    folderIcon_ = plainFolderIcons().closed;
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    std::wstring name = L"Name";  // for screen readers: no header is shown
    column.pszText = name.data();
    ::SendMessageW(list_, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    return true;
}

void FolderListView::showFolder(std::optional<std::wstring> path) {
    icons_.clear();
    presenter_.showFolder(std::move(path));
}

void FolderListView::place(int left, int top, int width, int height) {
    ::SetWindowPos(list_, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT inside{};
    ::GetClientRect(list_, &inside);
    ::SendMessageW(list_, LVM_SETCOLUMNWIDTH, 0, inside.right);
}

void FolderListView::reportSelection() {
    noted_ = false;
    if (list_ != nullptr) presenter_.onSelectionChanged();
}

void FolderListView::noteSelection() {
    if (changing_ || std::exchange(noted_, true)) return;
    ::PostMessageW(::GetParent(list_), selectionMessage_, 0, 0);
}

std::optional<LRESULT> FolderListView::onNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            return onGetDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header).item);
        case LVN_ODFINDITEMW:
            return onFindItem(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED:
            noteSelection();
            return 0;
        case LVN_ITEMACTIVATE: {
            const int row = reinterpret_cast<const NMITEMACTIVATE&>(header).iItem;
            if (row >= 0) presenter_.onOpened(static_cast<std::uint32_t>(row));
            return 0;
        }
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_F5) presenter_.refresh();
            return 0;
        default:
            return std::nullopt;
    }
}

LRESULT FolderListView::onGetDisplayInfo(LVITEMW& item) {
    if (presenter_.isReading()) {
        if ((item.mask & LVIF_TEXT) != 0) {
            shownText_ = kReading;
            item.pszText = shownText_.data();
        }
        if ((item.mask & LVIF_IMAGE) != 0) item.iImage = I_IMAGENONE;
        return 0;
    }
    if (item.iItem < 0 || static_cast<std::size_t>(item.iItem) >= presenter_.files().size()) return 0;
    const FolderFile& file = presenter_.files()[static_cast<std::size_t>(item.iItem)];
    if ((item.mask & LVIF_TEXT) != 0) {
        shownText_ = file.name;
        item.pszText = shownText_.data();
    }
    if ((item.mask & LVIF_IMAGE) != 0) item.iImage = iconOf(file);
    if ((item.mask & LVIF_STATE) != 0 && file.hidden) item.state |= LVIS_CUT;
    return 0;
}

LRESULT FolderListView::onFindItem(const NMLVFINDITEMW& find) const {
    const bool byText = (find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0 && find.lvfi.psz != nullptr;
    if (!byText) return -1;
    const auto row = presenter_.findName(find.lvfi.psz, static_cast<std::uint32_t>(std::max(find.iStart, 0)));
    return row ? static_cast<LRESULT>(*row) : -1;
}

int FolderListView::iconOf(const FolderFile& file) {
    if (file.folder) return folderIcon_;
    const std::wstring extension = upperCase(ExtensionPart(file.name));
    const std::wstring path = AddTrailingSeparator(presenter_.folder()) + file.name;
    // The shell would read the file in this thread to tell.
    const bool own = hasOwnIcon(extension) && path.size() < MAX_PATH && !isSlowPlace(path);
    const auto [found, isNew] = icons_.try_emplace(own ? file.name : extension, 0);
    if (isNew) {
        found->second = own ? SystemIconIndex(path, SHGFI_SMALLICON)
                            : SystemIconIndex(shortFileName(file.name), SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES);
    }
    return found->second;
}

void FolderListView::showRows(std::uint32_t count) {
    const ScopedFlag changing(changing_);
    const RedrawPause pause(list_);
    setState(list_, kEveryRow, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ::SendMessageW(list_, LVM_SETITEMCOUNT, count, 0);
    if (count == 0) return;
    setState(list_, 0, LVIS_FOCUSED, LVIS_FOCUSED);
    RECT inside{};
    ::GetClientRect(list_, &inside);
    ::SendMessageW(list_, LVM_SETCOLUMNWIDTH, 0, inside.right);
}

void FolderListView::selectRows(const std::vector<std::uint32_t>& rows) {
    const ScopedFlag changing(changing_);
    const RedrawPause pause(list_);
    for (const std::uint32_t row : rows) setState(list_, row, LVIS_SELECTED, LVIS_SELECTED);
}

std::vector<std::uint32_t> FolderListView::selectedRows() const {
    std::vector<std::uint32_t> rows;
    for (LRESULT row = -1;
         (row = ::SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;) {
        rows.push_back(static_cast<std::uint32_t>(row));
    }
    return rows;
}

}  // namespace tovar
