#include "browser/win32/archive_browser_window.h"

#include <commctrl.h>

#include <utility>

#include "browser/win32/browser_controls.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"
#include "shell/win32/child_control.h"
#include "shell/win32/system_icons.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

constexpr wchar_t kClassName[] = L"fArcMain";

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
      presenter_(*this, {*request.driver, ports.desktop, ports.files, ports.regional, ports.actions, ports.breather},
                 request.archiveFile),
      find_(*this, *this, presenter_, request.driver->entries()) {
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
    if (closeWanted_ && !presenter_.isBusy()) destroy();
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
    hostWatch_.start(hwnd(), ::GetAncestor(hwnd(), GA_PARENT), *this);
    ::ShowWindow(hwnd(), SW_SHOW);
    ::BringWindowToTop(hwnd());
    ::SetFocus(list_.hwnd());
    ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void fArcMain::unload() { destroy(); }

std::optional<LRESULT> fArcMain::onCreate(WPARAM, LPARAM) {
    if (!createControls()) return -1;
    ::SendMessageW(hwnd(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon_.get()));
    followScale();
    desktopWatch_.start();  // without it the window keeps the looks that it came up with
    drops_.start(hwnd());
    presenter_.onLoad();
    return 0;
}

bool fArcMain::createControls() {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    if (!menuBand_.create(hwnd(), *this) || !toolbar_.create(hwnd()) || !address_.create(hwnd(), *this, messages_) ||
        !tree_.create(hwnd()) || !splitter_.create(hwnd(), kSplitter, L"Width of the folder tree") ||
        !list_.create(hwnd(), *this, messages_)) {
        return false;
    }
    status_ = createControl(hwnd(), STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, 0, sBar1);
    if (status_ == nullptr || !find_.create(hwnd())) return false;
    if (!watchKeys(tree_.hwnd(), *this) || !watchKeys(address_.edit(), *this, PaneKind::TextField)) return false;
    tree_.setIcons(desktop_.ofFolder().icon, desktop_.openFolderIcon());
    lastFocus_ = list_.hwnd();
    return true;
}

std::optional<LRESULT> fArcMain::onDestroy(WPARAM, LPARAM) {
    hostWatch_.stop();
    desktopWatch_.stop();
    drops_.stop();
    menuBand_.release();
    address_.release();
    list_.release();
    find_.onListingGone();
    presenter_.onUnload();
    return 0;
}

void fArcMain::onGone() {
    if (onUnloaded_) std::exchange(onUnloaded_, nullptr)();
}

std::optional<LRESULT> fArcMain::onClose(WPARAM, LPARAM) {
    closeWanted_ = true;
    presenter_.cancelWork();
    // A library that unpacks ends when the window goes that it works for; one that lists does not.
    if (!presenter_.isFilling()) destroy();
    return 0;
}

void fArcMain::setTitle(std::wstring_view title) { ::SetWindowTextW(hwnd(), std::wstring(title).c_str()); }

void fArcMain::clear() {
    {
        const ScopedFlag selecting(selecting_);
        tree_.clear();
    }
    rowToOpen_.reset();
    find_.onListingGone();
    list_.clear();
}

void fArcMain::showFolders() {
    const ScopedFlag selecting(selecting_);
    tree_.show(presenter_.folders());
}

void fArcMain::selectFolder(Folder folder, bool expand) {
    const ScopedFlag selecting(selecting_);
    tree_.select(folder, expand);
}

void fArcMain::showContents() {
    rowToOpen_.reset();
    list_.show(presenter_.contents());
}

void fArcMain::moveRows(std::span<const std::uint32_t> newRows) {
    rowToOpen_.reset();
    list_.moveRows(newRows);
}

void fArcMain::showRow(std::uint32_t row) { list_.showRow(static_cast<int>(row)); }

void fArcMain::addAddress(std::wstring_view address) { address_.add(address); }

void fArcMain::chooseAddress(std::size_t index) { address_.choose(index); }

void fArcMain::moveAddressCaretToEnd() { address_.moveCaretToEnd(); }

void fArcMain::setStatus(std::wstring_view text) {
    ::SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
}

}  // namespace tovar
