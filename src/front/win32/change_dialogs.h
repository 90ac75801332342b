#pragma once
#include <functional>
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
        return WindowsConfirmations(fontName_()).ask(owner, confirmation, work);
    }

private:
    std::function<std::wstring()> fontName_;
};

/// Asks by the system's dialog for files.
class DialogFileQuestions final : public FileQuestions {
public:
    [[nodiscard]] std::vector<std::wstring> ask(WindowHandle owner, const std::wstring& folder) override {
        return askForFiles(static_cast<HWND>(owner), folder);
    }
};

}  // namespace tovar
