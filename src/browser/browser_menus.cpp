#include "browser/browser_menus.h"

namespace tovar {
namespace {

constexpr BrowserCommand kLine = kNoCommand;

constexpr BrowserCommand kEdit[] = {kOpen, mnuEditExtract, kLine,         mnuEditAdd, kAddFolder,    mnuEditDelete,
                                    kLine, kCopy,          kPaste,        kLine,      mnuEditSelect, kLine,
                                    kFind, kFindNext,      kFindPrevious, kLine,      mnuEditExit};
constexpr BrowserCommand kView[] = {mnuViewStyle, kLine, GoUp, kRefresh};
constexpr BrowserCommand kRows[] = {
    kOpen, mnuEditExtract, kCopy, mnuEditDelete, kLine, mnuEditSelectAll, mnuEditSelectInvert};
constexpr BrowserCommand kEmptyArea[] = {mnuViewStyle,     kLine, mnuEditAdd, kAddFolder, kPaste,
                                         mnuEditSelectAll, kLine, kRefresh,   GoUp};
constexpr BrowserCommand kFolders[] = {kOpen, mnuEditExtract};

constexpr BrowserCommand kSelect[] = {mnuEditSelectAll, mnuEditSelectInvert};
constexpr BrowserCommand kStyle[] = {mnuViewStyleLargeIcons, mnuViewStyleSmallIcons, mnuViewStyleList,
                                     mnuViewStyleDetails, mnuViewStyleExactDetails};

}  // namespace

std::span<const BrowserCommand> entriesOf(BrowserMenu menu) noexcept {
    switch (menu) {
        case BrowserMenu::Edit:
            return kEdit;
        case BrowserMenu::View:
            return kView;
        case BrowserMenu::Rows:
            return kRows;
        case BrowserMenu::EmptyArea:
            return kEmptyArea;
        case BrowserMenu::Folders:
            return kFolders;
    }
    return {};
}

std::span<const BrowserCommand> entriesInside(BrowserCommand command) noexcept {
    if (command == mnuEditSelect) return kSelect;
    if (command == mnuViewStyle) return kStyle;
    return {};
}

BrowserCommand defaultEntryOf(BrowserMenu menu) noexcept {
    return menu == BrowserMenu::Rows || menu == BrowserMenu::Folders ? kOpen : kNoCommand;
}

}  // namespace tovar
