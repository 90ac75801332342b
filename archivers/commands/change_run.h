#pragma once
#include <filesystem>
#include <memory>
#include <string>

#include "archivers/commands/command.h"
#include "archivers/commands/command_dialogs.h"
#include "archivers/commands/progress_notifier.h"
#include "archivers/convention/library_description.h"

namespace archiver {

/// One command that makes or changes an archive: what happens goes to the texts, the windows and the progress owner.
class ChangeRun final : private ChangeEvents {
public:
    /// @param command  with absolute paths
    ChangeRun(const CommandContext& context, const Command& command, CommandTexts& texts, CommandOutput& output);
    ChangeRun(const ChangeRun&) = delete;
    ChangeRun& operator=(const ChangeRun&) = delete;
    ~ChangeRun() override;

    /// Does what the command says. At most once.
    ReturnCode run(ChangeFunction change);

private:
    void total(std::uint64_t members, std::uint64_t bytes) override;
    bool beginMember(const SourceItem& item) override;
    bool taken(std::uint64_t bytes) override;
    bool endMember(const PackedMember& member) override;
    void warning(PackWarning kind, std::string_view name) override;
    void deleted(const Member& member) override;
    bool replacing() override;

    template <class Append>
    bool say(Append append) noexcept;

    const CommandContext& context_;
    const Command& command_;
    CommandTexts& texts_;
    CommandOutput& output_;
    ProgressNotifier notifier_;
    std::unique_ptr<CommandDialogs> dialogs_;
    UnpackProgress progress_;
    Member member_;  ///< the source that is packed: named as it is on disk
    std::string text_;
    bool failed_ = false;  ///< out of memory in one of the calls above
};

}  // namespace archiver
