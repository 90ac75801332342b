#include "browser/win32/menu_band.h"

// windows.h first
#include <commctrl.h>

#include <array>
#include <vector>

#include "browser/win32/browser_controls.h"
#include "browser/win32/browser_messages.h"
#include "browser/win32/button_room.h"
#include "shell/scoped_flag.h"
#include "shell/win32/child_control.h"

namespace tovar {
namespace {

struct BandMenu {
    BrowserCommand command;
    BrowserMenu menu;
};
constexpr std::array kMenus = {BandMenu{mnuEdit, BrowserMenu::Edit}, BandMenu{mnuView, BrowserMenu::View}};

// The band whose menu is open on this thread. A message filter has no other way to its object.
thread_local MenuBand* trackedBand = nullptr;

using UniqueHook = std::unique_ptr<std::remove_pointer_t<HHOOK>, CloseWith<&::UnhookWindowsHookEx>>;

/// An entry of a menu that is open.
struct SelectedEntry {
    int place = -1;          ///< -1 = none
    HMENU inside = nullptr;  ///< the menu that the entry opens
};

SelectedEntry selectedEntry(HMENU menu) noexcept {
    const int count = menu == nullptr ? 0 : ::GetMenuItemCount(menu);
    for (int place = 0; place < count; ++place) {
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STATE | MIIM_SUBMENU;
        if (::GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &item) != FALSE &&
            (item.fState & MFS_HILITE) != 0) {
            const bool canOpen = (item.fState & (MFS_DISABLED | MFS_GRAYED)) == 0;
            return {place, canOpen ? item.hSubMenu : nullptr};
        }
    }
    return {};
}

/// @return whether the right arrow key opens a menu inside, of this entry or of the one selected in its own menu
bool opensMenu(SelectedEntry entry) noexcept {
    if (entry.inside == nullptr) return false;
    const SelectedEntry deeper = selectedEntry(entry.inside);
    return deeper.place < 0 || opensMenu(deeper);
}

wchar_t upperCase(wchar_t letter) noexcept {
    return static_cast<wchar_t>(reinterpret_cast<ULONG_PTR>(
        ::CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(letter))))));
}

}  // namespace

bool MenuBand::create(HWND parent, MenuBandOwner& owner) {
    parent_ = parent;
    owner_ = &owner;
    band_ = createControl(parent, TOOLBARCLASSNAMEW, L"Menu",
                          TBSTYLE_FLAT | TBSTYLE_LIST | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER, 0, kMenuBand);
    if (band_ == nullptr) return false;
    ::SendMessageW(band_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    ::SendMessageW(band_, TB_SETBITMAPSIZE, 0, 0);
    std::vector<TBBUTTON> buttons;
    for (const BandMenu& each : kMenus) {
        TBBUTTON button{};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = each.command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_DROPDOWN | BTNS_AUTOSIZE;
        button.iString = reinterpret_cast<INT_PTR>(describe(each.command)->menuText.data());
        buttons.push_back(button);
    }
    return ::SendMessageW(band_, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())) != FALSE &&
           ::SetWindowSubclass(band_, &keyProcedure, 0, reinterpret_cast<DWORD_PTR>(this)) != FALSE;
}

void MenuBand::release() noexcept {
    if (showing_) ::EndMenu();
    wanted_.reset();
    band_ = nullptr;
}

void MenuBand::fit(int dpi) { giveButtonsRoom(band_, 0, dpi); }

void MenuBand::enable(BrowserCommand menu, bool enabled) {
    ::SendMessageW(band_, TB_ENABLEBUTTON, static_cast<WPARAM>(menu), MAKELPARAM(enabled ? TRUE : FALSE, 0));
}

SIZE MenuBand::size() const {
    RECT last{};
    ::SendMessageW(band_, TB_GETITEMRECT, kMenus.size() - 1, reinterpret_cast<LPARAM>(&last));
    return {last.right, last.bottom};
}

bool MenuBand::isEnabled(std::size_t place) const {
    return ::SendMessageW(band_, TB_ISBUTTONENABLED, static_cast<WPARAM>(kMenus[place].command), 0) != FALSE;
}

std::size_t MenuBand::neighbour(std::size_t place, bool backwards) const {
    for (std::size_t step = 1; step < kMenus.size(); ++step) {
        const std::size_t next = (place + (backwards ? kMenus.size() - step : step)) % kMenus.size();
        if (isEnabled(next)) return next;
    }
    return place;
}

std::optional<std::size_t> MenuBand::placeOfLetter(wchar_t letter) const {
    for (std::size_t place = 0; place < kMenus.size(); ++place) {
        const auto text = describe(kMenus[place].command)->menuText;
        const auto mark = text.find(L'&');
        if (mark + 1 < text.size() && upperCase(text[mark + 1]) == upperCase(letter) && isEnabled(place)) return place;
    }
    return std::nullopt;
}

bool MenuBand::hasLetter(wchar_t letter) const { return placeOfLetter(letter).has_value(); }

std::optional<std::size_t> MenuBand::placeAt(POINT screenPoint) const {
    RECT area{};
    ::GetClientRect(band_, &area);
    ::ScreenToClient(band_, &screenPoint);
    if (!::PtInRect(&area, screenPoint)) return std::nullopt;
    const auto place = ::SendMessageW(band_, TB_HITTEST, 0, reinterpret_cast<LPARAM>(&screenPoint));
    if (place < 0 || static_cast<std::size_t>(place) >= kMenus.size()) return std::nullopt;
    return static_cast<std::size_t>(place);
}

void MenuBand::enter() {
    const std::size_t first = isEnabled(0) ? 0 : neighbour(0, false);
    if (!isEnabled(first)) return;
    ::SetFocus(band_);
    ::SendMessageW(band_, TB_SETHOTITEM, first, 0);
}

// The window gives the keyboard to the pane that had it.
void MenuBand::leave() {
    if (::GetFocus() == band_) ::SetFocus(parent_);
}

void MenuBand::openByLetter(wchar_t letter) {
    if (const auto place = placeOfLetter(letter)) open(kMenus[*place].command, By::Keyboard);
}

void MenuBand::open(int menu, By by) {
    std::size_t place = 0;
    while (place < kMenus.size() && kMenus[place].command != menu) ++place;
    if (band_ == nullptr || showing_ || place == kMenus.size() || !isEnabled(place)) return;
    BrowserCommand chosen = kNoCommand;
    {
        const ScopedFlag showing(showing_);
        for (std::optional<std::size_t> next = place; next && band_ != nullptr; next = wanted_) {
            wanted_.reset();
            chosen = show(*next, by);
        }
    }
    if (band_ == nullptr || chosen == kNoCommand) return;
    leave();
    owner_->onBandCommand(chosen);
}

BrowserCommand MenuBand::show(std::size_t place, By by) {
    const UniqueMenu menu = owner_->makeBandMenu(kMenus[place].menu);
    RECT button{};
    ::SendMessageW(band_, TB_GETITEMRECT, place, reinterpret_cast<LPARAM>(&button));
    ::MapWindowPoints(band_, HWND_DESKTOP, reinterpret_cast<POINT*>(&button), 2);
    shown_ = place;
    menu_ = menu.get();
    const auto id = static_cast<WPARAM>(kMenus[place].command);
    ::SendMessageW(band_, TB_PRESSBUTTON, id, TRUE);
    if (::GetFocus() == band_) ::SendMessageW(band_, TB_SETHOTITEM, place, 0);
    // A menu opened by a key has its first entry selected.
    if (by == By::Keyboard) ::PostMessageW(parent_, WM_KEYDOWN, VK_DOWN, 0);
    trackedBand = this;
    BrowserCommand chosen = kNoCommand;
    {
        const UniqueHook hook(::SetWindowsHookExW(WH_MSGFILTER, &filterProcedure, nullptr, ::GetCurrentThreadId()));
        chosen = trackPopupMenu(menu.get(), parent_, {button.left, button.bottom}, &button);
    }
    trackedBand = nullptr;
    menu_ = nullptr;
    if (band_ != nullptr) ::SendMessageW(band_, TB_PRESSBUTTON, id, FALSE);
    return chosen;
}

LRESULT CALLBACK MenuBand::filterProcedure(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == MSGF_MENU && trackedBand != nullptr &&
        trackedBand->onMenuMessage(*reinterpret_cast<const MSG*>(lParam))) {
        return TRUE;
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

bool MenuBand::onMenuMessage(const MSG& message) {
    if (band_ == nullptr) return false;
    const auto under = placeAt(message.pt);
    switch (message.message) {
        case WM_KEYDOWN:
            if (message.wParam == VK_RIGHT && !opensMenu(selectedEntry(menu_))) {
                switchTo(neighbour(shown_, false));
            } else if (message.wParam == VK_LEFT && selectedEntry(selectedEntry(menu_).inside).place < 0) {
                switchTo(neighbour(shown_, true));
            } else {
                return false;
            }
            return true;
        case WM_MOUSEMOVE:
            if (under && *under != shown_ && isEnabled(*under)) switchTo(*under);
            return false;
        case WM_LBUTTONDOWN:
            // A second click closes the menu; the band would open it once more.
            if (under != shown_) return false;
            ::EndMenu();
            return true;
        default:
            return false;
    }
}

void MenuBand::switchTo(std::size_t place) {
    if (place == shown_) return;
    wanted_ = place;
    ::EndMenu();
}

LRESULT CALLBACK MenuBand::keyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                        DWORD_PTR data) noexcept {
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, &keyProcedure, id);
    try {
        const auto answer = reinterpret_cast<MenuBand*>(data)->onMessage(message, wParam);
        if (answer) return *answer;
    } catch (...) {
        return 0;
    }
    return ::DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> MenuBand::onMessage(UINT message, WPARAM wParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTALLKEYS;
        case WM_KILLFOCUS:
            if (!showing_) ::SendMessageW(band_, TB_SETHOTITEM, static_cast<WPARAM>(-1), 0);
            return std::nullopt;
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return onKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_CHAR:
        case WM_SYSCHAR:
            if (wParam > L' ') ::PostMessageW(parent_, kOpenBandMenu, wParam, 0);
            return 0;
        default:
            return std::nullopt;
    }
}

bool MenuBand::onKey(WPARAM key) {
    const auto hot = ::SendMessageW(band_, TB_GETHOTITEM, 0, 0);
    const std::size_t place = hot < 0 ? 0 : static_cast<std::size_t>(hot) % kMenus.size();
    switch (key) {
        case VK_LEFT:
        case VK_RIGHT:
            ::SendMessageW(band_, TB_SETHOTITEM, neighbour(place, key == VK_LEFT), 0);
            return true;
        case VK_UP:
        case VK_DOWN:
        case VK_RETURN:
        case VK_SPACE:
            ::PostMessageW(parent_, kOpenBandMenu, 0, MAKELPARAM(kMenus[place].command, By::Keyboard));
            return true;
        case VK_ESCAPE:
        case VK_TAB:
        case VK_F10:
        case VK_MENU:
            leave();
            return true;
        default:
            return false;
    }
}

}  // namespace tovar
