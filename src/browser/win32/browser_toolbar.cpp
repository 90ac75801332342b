#include "browser/win32/browser_toolbar.h"

#include <iterator>
#include <string>
#include <vector>

#include "browser/browser_commands.h"
#include "browser/toolbar_pictures.h"
#include "browser/win32/browser_controls.h"
#include "browser/win32/button_room.h"
#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"

namespace tovar {
namespace {

constexpr BrowserCommand kButtons[] = {Add, Extract, GoUp};
constexpr int kPictureSize = 16;  // at 96 dots per inch

using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, CloseWith<&::DeleteObject>>;

UniqueIcon iconOf(BrowserCommand command, int size) {
    const std::vector<std::uint32_t> pixels = drawToolbarPicture(command, size);
    const UniqueBitmap colours(::CreateBitmap(size, size, 1, 32, pixels.data()));
    // Where pictures have no opacity, the mask says what is seen of them: all but the pixels that are mostly empty.
    const std::size_t bytesOfRow = (static_cast<std::size_t>(size) + 15) / 16 * 2;
    std::vector<BYTE> hidden(bytesOfRow * static_cast<std::size_t>(size));
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const std::size_t row = i / static_cast<std::size_t>(size), column = i % static_cast<std::size_t>(size);
        if (pixels[i] >> 24 < 0x80) hidden[row * bytesOfRow + column / 8] |= static_cast<BYTE>(0x80 >> column % 8);
    }
    const UniqueBitmap mask(::CreateBitmap(size, size, 1, 1, hidden.data()));
    ICONINFO parts{TRUE, 0, 0, mask.get(), colours.get()};
    return UniqueIcon(::CreateIconIndirect(&parts));
}

}  // namespace

bool BrowserToolbar::create(HWND parent) {
    toolbar_ = createControl(
        parent, TOOLBARCLASSNAMEW, L"Archive commands",
        TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER, 0, kToolbar);
    if (toolbar_ == nullptr) return false;
    ::SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    setScale(dpiOf(parent));
    std::vector<TBBUTTON> buttons;
    for (const BrowserCommand command : kButtons) {
        TBBUTTON button{};
        button.iBitmap = static_cast<int>(buttons.size());
        button.idCommand = command;
        button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
        button.iString = reinterpret_cast<INT_PTR>(describe(command)->buttonText.data());
        buttons.push_back(button);
    }
    return ::SendMessageW(toolbar_, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())) != FALSE;
}

void BrowserToolbar::setScale(int dpi) {
    const int size = scaled(kPictureSize, dpi);
    if (size == pictureSize_) return;
    UniqueImageList pictures(::ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, std::size(kButtons), 0));
    if (pictures == nullptr) return;
    for (const BrowserCommand command : kButtons)
        ::ImageList_ReplaceIcon(pictures.get(), -1, iconOf(command, size).get());
    ::SendMessageW(toolbar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.get()));
    std::swap(pictures_, pictures);
    pictureSize_ = size;
}

void BrowserToolbar::fit(int dpi) { giveButtonsRoom(toolbar_, pictureSize_, dpi); }

void BrowserToolbar::enable(int button, bool enabled) {
    ::SendMessageW(toolbar_, TB_ENABLEBUTTON, static_cast<WPARAM>(button), MAKELPARAM(enabled ? TRUE : FALSE, 0));
}

SIZE BrowserToolbar::size() const {
    const auto count = ::SendMessageW(toolbar_, TB_BUTTONCOUNT, 0, 0);
    RECT last{};
    ::SendMessageW(toolbar_, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    return {last.right, last.bottom};
}

void BrowserToolbar::onHint(NMTTDISPINFOW& question) {
    const CommandDescription* const command = describe(static_cast<int>(question.hdr.idFrom));
    // Texts of descriptions are literals: they end with a NUL and stay.
    if (command != nullptr) question.lpszText = const_cast<wchar_t*>(command->hint.data());
}

}  // namespace tovar
