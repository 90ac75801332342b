#pragma once
#include <optional>
#include <string>
#include <vector>

#include "archivers/commands/win32/dialog_window.h"

namespace archiver {

/// Asks for the password of an encrypted member. Esc and the close box are Cancel.
class PasswordDialog final : public DialogWindow {
public:
    /// Identifiers of the controls beside IDOK and IDCANCEL.
    enum : WORD { kEdit = 100, kShow };

    /// @param wrong  tells that the last password was
    PasswordDialog(std::string_view title, std::string archive, std::string member, bool wrong)
        : DialogWindow(title), archive_(std::move(archive)), member_(std::move(member)), wrong_(wrong) {}
    /// @return not empty, at most 255 characters; no copy of it stays behind here
    std::optional<std::string> ask(HWND owner) noexcept;

private:
    void build() override;
    SIZE arrange(const DialogUnits& units, int widest) override;
    bool onCommand(WORD control, WORD notification) override;
    void onDestroy() override { wipeEdit(); }
    void takePassword();
    void wipeEdit() noexcept;

    std::string archive_, member_;
    bool wrong_;
    std::string password_;
    WPARAM hidingCharacter_ = L'*';
    HWND heading_ = nullptr, archiveLabel_ = nullptr, archiveName_ = nullptr, fileLabel_ = nullptr, fileName_ = nullptr,
         wrongLabel_ = nullptr, passwordLabel_ = nullptr, edit_ = nullptr, show_ = nullptr;
    std::vector<HWND> buttons_;
};

}  // namespace archiver
