#pragma once
#include <optional>

#include "archivers/commands/command_dialogs.h"
#include "archivers/commands/progress_meter.h"
#include "archivers/commands/win32/owner_window.h"
#include "archivers/commands/win32/progress_window.h"

namespace archiver {

class WindowsDialogs final : public CommandDialogs {
public:
    WindowsDialogs(const DialogSettings& settings, ProgressClock clock);
    ~WindowsDialogs() override;

    bool progress(const UnpackProgress& progress) override;
    ReplaceAnswer askReplace(const ReplaceQuestion& question) override;
    std::optional<std::string> askPassword(const std::filesystem::path& archive, const Member& member,
                                           unsigned attempt) override;
    [[nodiscard]] bool passwordDeclined() const override { return passwordDeclined_; }
    bool askDiskSpace(std::uint64_t needed, std::uint64_t available) override;

private:
    class Question;

    void runMessages() noexcept;
    void tell(const UnpackProgress& progress, ProgressTime now, bool appear);
    template <class Answer, class Ask>
    Answer ask(Answer otherwise, Ask ask);

    DialogSettings settings_;
    ProgressClock clock_;
    ProgressSchedule schedule_;
    ProgressMeter meter_;
    OwnerWindow owner_;
    ProgressWindow window_;
    bool cancelled_ = false;
    bool passwordDeclined_ = false;
};

}  // namespace archiver
