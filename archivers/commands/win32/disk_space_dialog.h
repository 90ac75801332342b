#pragma once
#include <string>
#include <vector>

#include "archivers/commands/win32/dialog_window.h"

namespace archiver {

/// Whether to go on though the disk is too small. Esc and the close box are Cancel.
class DiskSpaceDialog final : public DialogWindow {
public:
    DiskSpaceDialog(std::string_view title, std::string needed, std::string available)
        : DialogWindow(title), neededText_(std::move(needed)), availableText_(std::move(available)) {}
    /// @return true to go on
    bool ask(HWND owner) noexcept { return runModal(owner) == IDOK; }

private:
    void build() override;
    SIZE arrange(const DialogUnits& units, int widest) override;
    bool onCommand(WORD control, WORD notification) override;

    std::string neededText_, availableText_;
    HWND icon_ = nullptr, heading_ = nullptr, neededLabel_ = nullptr, needed_ = nullptr, availableLabel_ = nullptr,
         available_ = nullptr, question_ = nullptr;
    std::vector<HWND> buttons_;
};

}  // namespace archiver
