#include "shell/win32/folder_browser.h"

#include <algorithm>
#include <utility>

#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"
#include "shell/win32/message_map.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

constexpr int kTree = 1, kList = 2, kBar = 3;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kPause = 250;  // milliseconds between two looks at the disk
constexpr UINT kSelectionNoted = WM_APP + 1;

}  // namespace

WenFolderBrowser::~WenFolderBrowser() { destroy(); }

bool WenFolderBrowser::createInstead(HWND dialog, int id, Events events) {
    const ReplacedControl frame(dialog, id);
    events_ = std::move(events);
    if (!create(dialog, frame.place(), id)) return false;
    frame.giveTo(hwnd());
    return true;
}

bool WenFolderBrowser::create(HWND parent, const RECT& place, int id) {
    const VisualStyles styles;
    Description description;
    description.className = L"WenFolderBrowser";
    description.style = WS_CHILD | WS_CLIPCHILDREN;
    description.extendedStyle = WS_EX_CONTROLPARENT;
    description.parent = parent;
    if (!Window::create(description)) return false;
    ::SetWindowLongPtrW(hwnd(), GWLP_ID, id);
    if (!tree_.create(hwnd(), {}, kTree, [this] { onFolderChanged(); })) return false;
    FolderListView::Events events;
    events.namesSelected = [this](const std::wstring& names) { events_.namesSelected(names); };
    events.folderOpened = [this](const std::wstring& path) { tree_.SelectFolder(path); };
    if (!list_.create(hwnd(), kList, kSelectionNoted, std::move(events))) return false;
    if (!splitter_.create(hwnd(), kBar, L"Width of the folder tree")) return false;
    // Behind the tree in the order of the Tab key.
    ::SetWindowPos(list_.hwnd(), tree_.hwnd(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ::SetWindowPos(hwnd(), HWND_BOTTOM, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_NOACTIVATE | SWP_SHOWWINDOW);
    ::SetTimer(hwnd(), kTimer, kPause, nullptr);
    return true;
}

std::optional<LRESULT> WenFolderBrowser::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<WenFolderBrowser> routes[] = {
        {WM_SIZE, &WenFolderBrowser::onSize},     {WM_SETFOCUS, &WenFolderBrowser::onFocus},
        {WM_SETFONT, &WenFolderBrowser::onFont},  {WM_TIMER, &WenFolderBrowser::onTimer},
        {WM_NOTIFY, &WenFolderBrowser::onNotify}, {kSelectionNoted, &WenFolderBrowser::onSelectionNoted},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

std::optional<LRESULT> WenFolderBrowser::onSize(WPARAM, LPARAM) {
    layOut();
    return 0;
}

void WenFolderBrowser::layOut() {
    RECT inside{};
    ::GetClientRect(hwnd(), &inside);
    splitter_.layOut(inside.right, dpiOf(hwnd()));
    const int left = splitter_.left(), right = splitter_.right();
    constexpr UINT kHow = SWP_NOZORDER | SWP_NOACTIVATE;
    ::SetWindowPos(tree_.hwnd(), nullptr, 0, 0, left, inside.bottom, kHow);
    ::SetWindowPos(splitter_.hwnd(), nullptr, left, 0, right - left, inside.bottom, kHow);
    list_.place(right, 0, std::max<int>(inside.right - right, 0), inside.bottom);
}

std::optional<LRESULT> WenFolderBrowser::onFocus(WPARAM, LPARAM) {
    ::SetFocus(tree_.tree());
    return 0;
}

std::optional<LRESULT> WenFolderBrowser::onFont(WPARAM wParam, LPARAM lParam) {
    ::SendMessageW(tree_.hwnd(), WM_SETFONT, wParam, lParam);
    return ::SendMessageW(list_.hwnd(), WM_SETFONT, wParam, lParam);
}

std::optional<LRESULT> WenFolderBrowser::onTimer(WPARAM wParam, LPARAM) {
    if (wParam != kTimer) return std::nullopt;
    const ULONGLONG begin = ::GetTickCount64();
    list_.onTick();
    // As in the tree: most of the time remains the user's.
    const auto spent = static_cast<UINT>(std::min<ULONGLONG>(::GetTickCount64() - begin, 60000));
    if (hwnd() != nullptr) ::SetTimer(hwnd(), kTimer, std::max(kPause, 4 * spent), nullptr);
    return 0;
}

std::optional<LRESULT> WenFolderBrowser::onNotify(WPARAM, LPARAM lParam) {
    auto& header = *reinterpret_cast<NMHDR*>(lParam);
    return header.idFrom == kList ? list_.onNotify(header) : std::nullopt;
}

std::optional<LRESULT> WenFolderBrowser::onSelectionNoted(WPARAM, LPARAM) {
    list_.reportSelection();
    return 0;
}

void WenFolderBrowser::onFolderChanged() {
    const BusyCursor busy;
    const std::optional<std::wstring> folder = tree_.SelectedFolder();
    const FolderState state = tree_.State();
    const std::optional<std::wstring> shown = state == FolderState::Missing ? std::nullopt : folder;
    // It is told again when its state has changed: the list is reading already, or done.
    if (shown.value_or(std::wstring()) != list_.folder()) list_.showFolder(shown);
    events_.folderChanged(folder, state);
}

}  // namespace tovar
