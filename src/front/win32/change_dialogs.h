#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "browser/archive_changes.h"
#include "create/win32/file_dialogs.h"
#include "shell/win32/confirmation_dialog.h"

namespace tovar {

/// Confirmation dialogs in the font that the host wants at the time.
class HostedConfirmations final : public Confirmations {
public:
    /// @param fontName  gives the face name; empty = none
    explicit HostedConfirmations(std::function<std::wstring()> fontName) : fontName_(std::move(fontName)) {}

    bool ask(WindowHandle owner, const Confirmation& confirmation, const Work& work) override {
        dialogs_.setFontName(fontName_());
        return dialogs_.ask(owner, confirmation, work);
    }
    void decline(WindowHandle owner) noexcept override { dialogs_.decline(owner); }

private:
    std::function<std::wstring()> fontName_;
    WindowsConfirmations dialogs_{L""};
};

/// Asks by the system's dialog for files, and by the component's own for folders and what is in them.
class DialogFileQuestions final : public FileQuestions {
public:
    /// @param paths     outlives the object
    /// @param fontName  gives the face name; empty = none
    DialogFileQuestions(PathOperations& paths, std::function<std::wstring()> fontName)
        : paths_(paths), fontName_(std::move(fontName)) {}

    [[nodiscard]] std::vector<std::wstring> ask(WindowHandle owner, const std::wstring& folder, Pick pick) override;
    void close(WindowHandle owner) noexcept override;

private:
    PathOperations& paths_;
    std::function<std::wstring()> fontName_;
    WindowHandle asking_ = nullptr;
    std::optional<NewDialogs> open_;  ///< while it asks
};

}  // namespace tovar
