#include "browser/win32/popup_menu.h"

#include <span>
#include <string>

namespace tovar {
namespace {

class MenuMaker {
public:
    MenuMaker(const std::function<bool(BrowserCommand)>& isEnabled, ViewStyle style, bool withKeys)
        : isEnabled_(isEnabled), style_(style), withKeys_(withKeys) {}

    [[nodiscard]] UniqueMenu make(std::span<const BrowserCommand> entries) const {
        UniqueMenu menu(::CreatePopupMenu());
        UINT place = 0;
        for (const BrowserCommand entry : entries) {
            if (menu == nullptr || !insert(menu.get(), place++, entry)) return nullptr;
        }
        return menu;
    }

private:
    bool insert(HMENU menu, UINT place, BrowserCommand entry) const {
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE;
        if (entry == kNoCommand) {
            item.fType = MFT_SEPARATOR;
            return ::InsertMenuItemW(menu, place, TRUE, &item) != FALSE;
        }
        const CommandDescription& command = *describe(entry);
        std::wstring text = withKeys_ ? menuLine(command) : std::wstring(command.menuText);
        item.fMask |= MIIM_ID | MIIM_STATE | MIIM_STRING;
        item.wID = static_cast<UINT>(entry);
        item.dwTypeData = text.data();
        item.fState = isEnabled_(entry) ? MFS_ENABLED : MFS_DISABLED;
        if (const auto style = viewStyleOf(entry)) {
            item.fType |= MFT_RADIOCHECK;
            if (*style == style_) item.fState |= MFS_CHECKED;
        }
        UniqueMenu inside;
        if (const auto entries = entriesInside(entry); !entries.empty()) {
            inside = make(entries);
            item.fMask |= MIIM_SUBMENU;
            item.hSubMenu = inside.get();
            if (inside == nullptr) return false;
        }
        if (!::InsertMenuItemW(menu, place, TRUE, &item)) return false;
        inside.release();  // NOLINT: the menu around it owns it now
        return true;
    }

    const std::function<bool(BrowserCommand)>& isEnabled_;
    ViewStyle style_;
    bool withKeys_;
};

}  // namespace

UniqueMenu makePopupMenu(BrowserMenu menu, const std::function<bool(BrowserCommand)>& isEnabled, ViewStyle style) {
    // The keys mean rows of the list, not the folder that was clicked.
    const bool withKeys = menu != BrowserMenu::Folders;
    UniqueMenu made = MenuMaker(isEnabled, style, withKeys).make(entriesOf(menu));
    const BrowserCommand bold = defaultEntryOf(menu);
    if (made != nullptr && bold != kNoCommand) ::SetMenuDefaultItem(made.get(), static_cast<UINT>(bold), FALSE);
    return made;
}

BrowserCommand trackPopupMenu(HMENU menu, HWND owner, POINT place, const RECT* exclude) {
    // Where menus of the system open: to the left for right-handed people with a pen.
    const UINT alignment = ::GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0 ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
    TPMPARAMS parameters{};
    parameters.cbSize = sizeof parameters;
    if (exclude != nullptr) parameters.rcExclude = *exclude;
    const BOOL chosen =
        ::TrackPopupMenuEx(menu, alignment | TPM_TOPALIGN | TPM_VERTICAL | TPM_RIGHTBUTTON | TPM_RETURNCMD, place.x,
                           place.y, owner, exclude != nullptr ? &parameters : nullptr);
    return static_cast<BrowserCommand>(chosen);
}

}  // namespace tovar
