#pragma once
#include <optional>
#include <vector>

#include "archivers/commands/library_settings.h"
#include "archivers/commands/win32/dialog_window.h"

namespace archiver {

/// The settings of a library. Esc and the close box are Cancel.
class SettingsDialog final : public DialogWindow {
public:
    /// Identifiers of the controls beside IDOK and IDCANCEL.
    enum : WORD { kProgress = 100, kProcessors };

    /// @param processors  of the machine
    SettingsDialog(std::string_view title, const LibrarySettings& settings, unsigned processors)
        : DialogWindow(title), settings_(settings), processorsOfMachine_(processors) {}
    /// @return nullopt when cancelled
    std::optional<LibrarySettings> ask(HWND owner) noexcept;

private:
    void build() override;
    SIZE arrange(const DialogUnits& units, int widest) override;
    bool onCommand(WORD control, WORD notification) override;

    LibrarySettings settings_;
    unsigned processorsOfMachine_;
    std::vector<unsigned> choices_;
    HWND progress_ = nullptr, processorsLabel_ = nullptr, processors_ = nullptr;
    std::vector<HWND> buttons_;
};

}  // namespace archiver
