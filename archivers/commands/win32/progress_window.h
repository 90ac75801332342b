#pragma once
#include "archivers/commands/progress_meter.h"
#include "archivers/commands/win32/dialog_window.h"

namespace archiver {

/// How far a command is, and Cancel. Modeless: its maker lets messages run.
class ProgressWindow final : public DialogWindow {
public:
    /// @param archive  UTF-8, as it is shown
    ProgressWindow(std::string_view title, std::string archive) : DialogWindow(title), archive_(std::move(archive)) {}

    /// Shows the window; it becomes the active one only when its owner's was.
    bool open(HWND owner) noexcept;
    void close() noexcept { destroy(); }
    /// @param member  UTF-8, as it is shown
    void show(const ProgressPicture& picture, const std::string& member);

    [[nodiscard]] bool cancelled() const noexcept { return cancelled_; }

private:
    void build() override;
    SIZE arrange(const DialogUnits& units, int widest) override;
    bool onCommand(WORD control, WORD notification) override;
    void onDestroy() override { cancelled_ = true; }  // it goes with its owner: nobody waits for the result any more

    std::string archive_;
    bool cancelled_ = false;
    HWND archiveLabel_ = nullptr, archiveName_ = nullptr, fileLabel_ = nullptr, fileName_ = nullptr;
    HWND bar_ = nullptr, amount_ = nullptr, rate_ = nullptr, remaining_ = nullptr, cancel_ = nullptr;
};

}  // namespace archiver
