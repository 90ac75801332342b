#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <utility>

#include "browser/password_presenter.h"
#include "shell/win32/dialog.h"

namespace tovar {

/// The password dialog `fArcPassword`. Lives on its caller's stack; when it goes, no copy of what was entered stays in
/// memory. Escape and the close box are Cancel.
class fArcPassword final : private Dialog, private PasswordView {
public:
    /// @param archive  named in the dialog; may be empty
    explicit fArcPassword(std::wstring archive) : archive_(std::move(archive)) {}

    /// Shows the dialog and returns when it is closed. One that could not be shown counts as cancelled.
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = that of the template
    void ask(HWND owner, std::wstring_view fontName);

    /// The last confirmed entry; valid as long as the dialog object lives.
    [[nodiscard]] const std::wstring& Password() const noexcept { return presenter_.Password(); }
    [[nodiscard]] bool Cancelled() const noexcept { return presenter_.Cancelled(); }

private:
    // Dialog
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // PasswordView
    void enableOk(bool enabled) override;
    void showCharacters(bool shown) override;
    void focusText() override;
    void readText(std::wstring& text) override;
    void close() override;

    void onTextChanged();
    void onShowToggled();
    void onOk() { presenter_.onOk(); }
    void onCancel() { presenter_.onCancel(); }
    void wipeText() noexcept;

    std::wstring archive_;
    HWND owner_ = nullptr;
    WPARAM hidingCharacter_ = 0;
    PasswordPresenter presenter_{*this};
};

}  // namespace tovar
