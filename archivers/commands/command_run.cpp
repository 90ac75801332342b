#include "archivers/commands/command_run.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "archivers/commands/run_dialogs.h"
#include "archivers/convention/system.h"

namespace archiver {

namespace {

constexpr unsigned kMostAttempts = 3;
/// Members between two looks at the clock while listing.
constexpr std::uint64_t kListedAtOnce = 256;

ArchiveStamp stampOf(const std::filesystem::path& archive, const ArchiveReader& reader) {
    return {archive, reader.facts().fileSize, lastWriteTime(archive)};
}

/// The unpacker knows no filter that is empty.
MemberFilter filterOf(const MemberFilter& chosen) {
    return chosen ? chosen : [](const Member&) { return true; };
}

void add(UnpackSummary& sum, UnpackSummary part) {
    if (sum.code == kOk) sum.code = part.code;
    sum.chosen += part.chosen;
    sum.unpacked += part.unpacked;
    sum.skipped += part.skipped;
    sum.refused += part.refused;
    sum.failed += part.failed;
    sum.bytes += part.bytes;
    if (!part.password.empty()) sum.password = std::move(part.password);
}

/// An archive without members is unpacked by doing nothing, unless a certain one was wanted.
UnpackSummary judged(UnpackSummary summary, bool namesGiven) {
    if (summary.code == kNotExist && summary.chosen == 0 && !namesGiven) summary.code = kOk;
    return summary;
}

}  // namespace

CommandRun::CommandRun(const CommandContext& context, const Command& command, CommandTexts& texts,
                       ArchiveReader& reader, CommandOutput& output)
    : context_(context),
      command_(command),
      texts_(texts),
      reader_(reader),
      output_(output),
      notifier_(context.progress, context.library, context.codec, command.invertCallback),
      dialogs_(makeCommandDialogs(dialogSettingsOf(context, command))) {}

CommandRun::~CommandRun() { notifier_.ended(); }

UnpackSummary CommandRun::run() {
    const ArchiveStamp stamp = stampOf(command_.archive, reader_);
    password_ = command_.password;
    if (password_.empty()) password_ = context_.password;
    if (password_.empty()) password_ = context_.passwords.find(stamp);
    say([&](std::string& out) { texts_.begin(command_, out); });
    UnpackSummary summary;
    if (notifier_.opened(command_.archive, stamp.size)) {
        summary = act();
    } else {
        summary.code = kUserCancel;
    }
    // The user knows that the password is missing: what to tell is that the command ended as wanted, and callers have
    // a text for it.
    if (summary.code == kPasswordFile && dialogs_->passwordDeclined()) summary.code = kUserCancel;
    if (failed_) summary.code = kEnoughMemory;
    // One that was given for certain commands is not there for others.
    if (!summary.password.empty() && context_.password.empty()) context_.passwords.keep(stamp, summary.password);
    say([&](std::string& out) { texts_.end(command_, summary, out); });
    return summary;
}

UnpackSummary CommandRun::act() {
    switch (command_.action) {
        case Command::Action::kUnpack:
            return unpack();
        case Command::Action::kTest:
            return judged(testMembers(reader_, filterOf(command_.chosen), password_, *this), command_.namesGiven);
        case Command::Action::kPrint:
            return judged(print(), command_.namesGiven);
        case Command::Action::kList:
        case Command::Action::kListVerbose:
            return judged(list(), command_.namesGiven);
        case Command::Action::kComment:
            say([&](std::string& out) { out += reader_.facts().comment; });
            break;
        case Command::Action::kPack:
        case Command::Action::kDelete:
            break;  // by ChangeRun
    }
    return {};
}

UnpackSummary CommandRun::unpack() {
    UnpackSummary sum =
        judged(unpackMembers(reader_, filterOf(command_.chosen), command_.options, password_, systemTarget(), *this),
               command_.namesGiven);
    for (const Command::Part& part : command_.furtherParts) {
        if (sum.code == kUserCancel) break;
        const ReturnCode code = reader_.restart();
        if (code != kOk) {
            sum.code = code;
            break;
        }
        UnpackOptions options = command_.options;
        options.target = part.target;
        if (!sum.password.empty()) password_ = sum.password;
        add(sum, judged(unpackMembers(reader_, filterOf(part.chosen), options, password_, systemTarget(), *this),
                        part.namesGiven));
    }
    return sum;
}

UnpackSummary CommandRun::list() {
    UnpackSummary summary;
    const MemberFilter chosen = filterOf(command_.chosen);
    UnpackProgress walked;
    walked.archiveSize = reader_.facts().fileSize;
    Member member;
    ReturnCode code = reader_.next(member);
    for (; code == kOk; code = reader_.next(member)) {
        if (chosen(member)) {
            ++summary.chosen;
            say([&](std::string& out) { texts_.row(member, out); });
        }
        if (++walked.members % kListedAtOnce != 0) continue;
        walked.archiveBytes = reader_.consumed();
        if (!dialogs_->progress(walked)) {
            summary.code = kUserCancel;
            return summary;
        }
    }
    if (code != kNoMoreEntries) {
        summary.code = code;
    } else if (summary.chosen == 0) {
        summary.code = kNotExist;
    }
    return summary;
}

UnpackSummary CommandRun::print() {
    MemberFilter chosen = filterOf(command_.chosen);
    if (context_.memory != nullptr) {
        chosen = [named = std::move(chosen)](const Member& member) {
            return member.kind == MemberKind::kFile && named(member);
        };
    }
    UnpackSummary summary = printMembers(reader_, chosen, password_, *this,
                                         [this](const char* bytes, std::size_t size) { return take(bytes, size); });
    if (summary.code == kUserCancel && enough_) summary.code = kOk;
    return summary;
}

bool CommandRun::take(const char* bytes, std::size_t size) {
    if (context_.memory == nullptr) {
        output_.bytes(bytes, size);
        enough_ = output_.full();
        return !enough_;
    }
    MemoryTarget& memory = *context_.memory;
    const std::size_t kept = std::min(size, memory.buffer.size() - memory.written);
    if (kept > 0) std::memcpy(memory.buffer.data() + memory.written, bytes, kept);
    memory.written += kept;
    memory.whole = memory.whole && kept == size;
    enough_ = !memory.whole;
    return !enough_;
}

bool CommandRun::begins(const Member& member, const std::filesystem::path& file) {
    return guarded(false, [&] {
        if (context_.memory != nullptr) {
            enough_ = std::exchange(memberTaken_, true);
            if (enough_) return false;
            context_.memory->changed =
                member.written ? member.written : utcOfLocal({.date = member.dosDate, .time = member.dosTime});
            context_.memory->attributes = member.attributes;
        } else if (command_.action == Command::Action::kPrint && command_.printNames) {
            say([&](std::string& out) { texts_.printed(member, out); });
        }
        return notifier_.begins(member, file);
    });
}

bool CommandRun::progress(const UnpackProgress& progress) {
    return guarded(false, [&] { return !failed_ && notifier_.progress(progress) && dialogs_->progress(progress); });
}

void CommandRun::ends(const MemberReport& report) {
    guarded(false, [&] {
        // A member that was cut because the output is full has not failed.
        if (!enough_) say([&](std::string& out) { texts_.member(report, out); });
        return true;
    });
}

ReplaceAnswer CommandRun::askReplace(const ReplaceQuestion& question) {
    return guarded(ReplaceAnswer::kCancel, [&] { return dialogs_->askReplace(question); });
}

std::optional<std::string> CommandRun::askPassword(const Member& member, unsigned attempt) {
    if (!command_.askPassword || attempt > kMostAttempts) return std::nullopt;
    return guarded(std::optional<std::string>(),
                   [&] { return dialogs_->askPassword(command_.archive, member, attempt); });
}

bool CommandRun::askDiskSpace(std::uint64_t needed, std::uint64_t available) {
    return guarded(false, [&] { return dialogs_->askDiskSpace(needed, available); });
}

template <class Append>
void CommandRun::say(Append append) {
    // The texts are asked even when nothing more is kept: their totals count on it.
    text_.clear();
    append(text_);
    output_.text(text_);
}

template <class Result, class Call>
Result CommandRun::guarded(Result error, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        failed_ = true;
        return error;
    }
}

}  // namespace archiver
