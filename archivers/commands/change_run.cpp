#include "archivers/commands/change_run.h"

#include <system_error>

#include "archivers/commands/command_paths.h"
#include "archivers/commands/run_dialogs.h"
#include "archivers/formats/moments.h"

namespace archiver {

namespace {

std::uint64_t sizeOf(const std::filesystem::path& file) noexcept {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

/// A source as the owner of the progress is told of it: what is packed is the file, what it becomes is the member.
Member memberOf(const SourceItem& item) {
    Member member;
    member.name = utf8Of(item.path);
    member.originalSize = item.facts.size;
    member.attributes = item.facts.attributes;
    member.kind = item.isFolder() ? MemberKind::kFolder : MemberKind::kFile;
    member.written = item.facts.written;
    if (member.written) {
        const DosStamp stamp = dosStampOf(*member.written);
        member.dosDate = stamp.date;
        member.dosTime = stamp.time;
    }
    return member;
}

}  // namespace

ChangeRun::ChangeRun(const CommandContext& context, const Command& command, CommandTexts& texts, CommandOutput& output)
    : context_(context),
      command_(command),
      texts_(texts),
      output_(output),
      notifier_(context.progress, context.library, context.codec, command.invertCallback),
      dialogs_(makeCommandDialogs(dialogSettingsOf(context, command))) {}

ChangeRun::~ChangeRun() { notifier_.ended(); }

ReturnCode ChangeRun::run(ChangeFunction change) {
    say([&](std::string& out) { texts_.begin(command_, out); });
    UnpackSummary summary;
    if (notifier_.opened(command_.archive, sizeOf(command_.archive))) {
        summary.code = change(command_, command_.options.threads, *this);
    } else {
        summary.code = kUserCancel;
    }
    if (failed_) summary.code = kEnoughMemory;
    say([&](std::string& out) { texts_.end(command_, summary, out); });
    return summary.code;
}

void ChangeRun::total(std::uint64_t members, std::uint64_t bytes) {
    static_cast<void>(members);
    progress_.totalBytes = bytes;
}

bool ChangeRun::beginMember(const SourceItem& item) {
    progress_.memberBytes = 0;
    progress_.file = pathOf(item.name);
    member_ = memberOf(item);
    progress_.member = &member_;
    return notifier_.begins(member_, progress_.file) && taken(0);
}

bool ChangeRun::taken(std::uint64_t bytes) {
    progress_.bytes += bytes;
    progress_.memberBytes += bytes;
    return !failed_ && notifier_.progress(progress_) && dialogs_->progress(progress_);
}

bool ChangeRun::endMember(const PackedMember& member) {
    ++progress_.members;
    return say([&](std::string& out) { texts_.packed(member, out); }) && taken(0);
}

void ChangeRun::warning(PackWarning kind, std::string_view name) {
    say([&](std::string& out) { texts_.warned(kind, name, out); });
}

void ChangeRun::deleted(const Member& member) {
    say([&](std::string& out) { texts_.deleted(member, out); });
}

bool ChangeRun::replacing() { return taken(0) && notifier_.replacing(command_.archive); }

/// @return false without memory for the text
template <class Append>
bool ChangeRun::say(Append append) noexcept {
    try {
        text_.clear();
        append(text_);
        output_.text(text_);
    } catch (...) {
        failed_ = true;
    }
    return !failed_;
}

}  // namespace archiver
