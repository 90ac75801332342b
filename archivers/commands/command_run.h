#pragma once
#include <memory>
#include <optional>
#include <string>

#include "archivers/commands/command.h"
#include "archivers/commands/command_dialogs.h"
#include "archivers/commands/progress_notifier.h"
#include "archivers/convention/library_description.h"

namespace archiver {

/// One command over its open archive: what the unpacker tells goes to the texts, the windows and the progress owner.
class CommandRun final : private UnpackEvents {
public:
    /// @param command  with absolute paths
    CommandRun(const CommandContext& context, const Command& command, CommandTexts& texts, ArchiveReader& reader,
               CommandOutput& output);
    CommandRun(const CommandRun&) = delete;
    CommandRun& operator=(const CommandRun&) = delete;
    ~CommandRun() override;

    /// Does what the command says. At most once.
    UnpackSummary run();

private:
    bool begins(const Member& member, const std::filesystem::path& file) override;
    bool progress(const UnpackProgress& progress) override;
    void ends(const MemberReport& report) override;
    ReplaceAnswer askReplace(const ReplaceQuestion& question) override;
    std::optional<std::string> askPassword(const Member& member, unsigned attempt) override;
    bool askDiskSpace(std::uint64_t needed, std::uint64_t available) override;

    UnpackSummary act();
    UnpackSummary unpack();
    UnpackSummary list();
    UnpackSummary print();
    bool take(const char* bytes, std::size_t size);
    template <class Append>
    void say(Append append);
    template <class Result, class Call>
    Result guarded(Result error, Call call) noexcept;

    const CommandContext& context_;
    const Command& command_;
    CommandTexts& texts_;
    ArchiveReader& reader_;
    CommandOutput& output_;
    ProgressNotifier notifier_;
    std::unique_ptr<CommandDialogs> dialogs_;
    std::string text_;  ///< kept for its memory
    std::string password_;
    bool memberTaken_ = false;  ///< the one member that goes to memory
    bool enough_ = false;       ///< printing ended because nothing more is kept
    bool failed_ = false;       ///< out of memory in one of the calls above, which must not throw
};

}  // namespace archiver
