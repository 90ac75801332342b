#pragma once
#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "shell/confirmation_presenter.h"
#include "shell/win32/dialog.h"

namespace tovar {

/// The dialog that asks before work, and stays until it is done. The list scrolls; without one the dialog is as low as
/// its texts.
class ConfirmationDialog final : public Dialog, private ConfirmationView {
public:
    /// All outlive the dialog.
    ConfirmationDialog(const Confirmation& confirmation, const Confirmations::Work& work)
        : presenter_(*this, confirmation, work) {}

    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = the dialog's own
    /// @return whether the user has agreed; then the work is done. Throws what the work has thrown.
    bool ask(HWND owner, std::wstring_view fontName);
    /// Closes it as its button No does, unless the user has agreed.
    void decline() { presenter_.onNo(); }
    [[nodiscard]] HWND owner() const noexcept { return owner_; }

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    void onYes() { presenter_.onYes(); }
    void onNo() { presenter_.onNo(); }

    void setCaption(std::wstring_view text) override;
    void show(const Confirmation& confirmation) override;
    void showWorking() override;
    [[nodiscard]] WindowHandle window() const override { return hwnd(); }
    void close() override;

    void leaveOut(int id);

    HWND owner_ = nullptr;
    ConfirmationPresenter presenter_;
};

/// Shows the dialog.
class WindowsConfirmations final : public Confirmations {
public:
    /// @param fontName  face name that the host wants; empty = the dialog's own
    explicit WindowsConfirmations(std::wstring_view fontName) : fontName_(fontName) {}
    void setFontName(std::wstring_view fontName) { fontName_ = fontName; }

    bool ask(WindowHandle owner, const Confirmation& confirmation, const Work& work) override;
    void decline(WindowHandle owner) noexcept override;

private:
    class Shown;

    std::wstring fontName_;
    std::vector<ConfirmationDialog*> shown_;  ///< one over the other; mostly one
};

}  // namespace tovar
