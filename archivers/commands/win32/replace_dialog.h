#pragma once
#include <vector>

#include "archivers/commands/question_texts.h"
#include "archivers/commands/win32/dialog_window.h"

namespace archiver {

/// What is to become of a file that is there. Esc and the close box are Cancel.
class ReplaceDialog final : public DialogWindow {
public:
    /// Identifiers of the buttons beside IDYES, IDNO and IDCANCEL.
    enum : WORD { kYesToAll = 100, kNoToAll, kRename };

    ReplaceDialog(std::string_view title, ReplaceFacts facts) : DialogWindow(title), facts_(std::move(facts)) {}
    ReplaceAnswer ask(HWND owner) noexcept;

private:
    void build() override;
    SIZE arrange(const DialogUnits& units, int widest) override;
    bool onCommand(WORD control, WORD notification) override;

    ReplaceFacts facts_;
    HWND icon_ = nullptr, heading_ = nullptr, path_ = nullptr, hint_ = nullptr;
    HWND existingLabel_ = nullptr, existing_ = nullptr, archivedLabel_ = nullptr, archived_ = nullptr;
    std::vector<HWND> buttons_;
};

}  // namespace archiver
