#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/config_presenter.h"
#include "shell/win32/dialog.h"

namespace tovar {

/// Lets the user switch the archiver libraries on and off, and shows which are there and where. Escape and the close
/// box are Cancel. Each box has a tool tip with the path of its library, and a list under a button has them all: so
/// they can be read without a mouse and by screen readers, and those of boxes that are disabled too.
class fConfig final : public Dialog, private ConfigView {
public:
    /// Both outlive the dialog.
    fConfig(SettingsStore& settings, ArchiverInventory& inventory) : presenter_(*this, settings, inventory) {}

    /// Shows the dialog and returns when it is closed.
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = the dialog's own
    void ask(HWND owner, std::wstring_view fontName);
    /// Closes the dialog as Cancel does.
    void cancel() noexcept;
    void bringToFront() noexcept;

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onOk() { presenter_.onOk(); }
    void onCancel() { presenter_.onCancel(); }
    void onDetails() { presenter_.onDetails(); }

    void showBox(std::size_t box, const std::wstring& caption, bool enabled, bool checked) override;
    [[nodiscard]] int boxValue(std::size_t box) const override;
    void showDetails(const std::vector<LibraryDetails>& libraries) override;
    void hideDetails() override;
    void close() override;

    [[nodiscard]] HWND box(std::size_t index) const noexcept;
    void addHints();
    void answerHint(NMTTDISPINFOW& question);
    void fold(bool folded);

    HWND owner_ = nullptr, hints_ = nullptr;
    LONG unfoldedHeight_ = 0, foldedHeight_ = 0;  ///< pixels, of the window
    std::wstring hint_;                           ///< the one that is shown
    ConfigPresenter presenter_;
};

}  // namespace tovar
