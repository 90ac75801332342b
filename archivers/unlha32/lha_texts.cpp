#include "archivers/unlha32/lha_texts.h"

#include <algorithm>
#include <cctype>

#include "archivers/commands/command_messages.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/member_log.h"
#include "archivers/commands/shown_names.h"
#include "archivers/commands/text_columns.h"

namespace archiver {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kTitles = "  Name          Original    Packed  Ratio   Date     Time   Attr Type  CRC\r\n";
constexpr std::string_view kDashes = "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n";
/// Of what was done and the name; a result stands behind it.
constexpr std::size_t kDoneWidth = 25;

/// Copies what a function has appended to the log when the function ends.
class Logged {
public:
    Logged(std::ofstream& log, const std::string& out) : log_(log), out_(out), start_(out.size()) {}
    Logged(const Logged&) = delete;
    Logged& operator=(const Logged&) = delete;
    ~Logged() {
        if (log_.is_open()) log_.write(out_.data() + start_, static_cast<std::streamsize>(out_.size() - start_));
    }

private:
    std::ofstream& log_;
    const std::string& out_;
    std::size_t start_;
};

std::string_view titleOf(const Command& command) {
    switch (command.action) {
        case Command::Action::kPack:
            if (command.pack.mode == PackRequest::Mode::kFreshen) return "Freshening";
            return isFile(command.archive) ? "Updating" : "Creating";
        case Command::Action::kDelete:
            return "Deleting from";
        case Command::Action::kUnpack:
            return "Extracting from";
        case Command::Action::kTest:
            return "Testing";
        case Command::Action::kList:
        case Command::Action::kListVerbose:
            return "Listing of";
        default:
            return {};
    }
}

std::string ratioText(std::uint64_t packed, std::uint64_t original) {
    const std::uint32_t ratio = perMille(packed, original);
    return padLeft(ratio / 10, 3) + '.' + std::to_string(ratio % 10) + '%';
}

/// CRC-16, or stars for members that have no data to check.
std::string checksumText(const Member& member) {
    if (member.kind == MemberKind::kFolder || member.kind == MemberKind::kSymbolicLink) return "****";
    std::string digits = hexadecimal(member.crc & 0xFFFFU, 4);
    std::transform(digits.begin(), digits.end(), digits.begin(),
                   [](char digit) { return static_cast<char>(std::toupper(static_cast<unsigned char>(digit))); });
    return digits;
}

bool isInFolder(std::string_view name) {
    constexpr std::string_view separators = "/\\";
    return name.substr(0, name.find_last_not_of(separators) + 1).find_first_of(separators) != std::string_view::npos;
}

std::string_view reasonOf(const MemberReport& report) {
    if (report.outcome == MemberOutcome::kRefused) return "its name or link would leave the target folder";
    switch (report.code) {
        case kMoreFresh:
            return "newer file exists";
        case kAlreadyExist:
            return "file exists";
        case kNotExist:
            return "file does not exist";
        case kUserSkip:
            return "skipped by the user";
        default:
            return messageOf(report.code);
    }
}

}  // namespace

void LhaTexts::begin(const Command& command, std::string& out) {
    if (!command.log.empty()) log_.open(command.log, std::ios::binary | std::ios::app);
    const Logged logged(log_, out);
    action_ = command.action;
    told_ = command.showNames && action_ != Command::Action::kPrint;
    const std::string_view title = titleOf(command);
    if (title.empty()) return;
    out += kLineEnd;
    ((out += title) += " archive : ") += shownName(utf8Of(command.archive));
    (out += kLineEnd) += kLineEnd;
    if (action_ == Command::Action::kList || action_ == Command::Action::kListVerbose) (out += kTitles) += kDashes;
}

void LhaTexts::member(const MemberReport& report, std::string& out) {
    const Logged logged(log_, out);
    const std::string name = shownName(report.member.name);
    const bool testing = action_ == Command::Action::kTest;
    const bool damaged = report.code == kFileCrc || report.code == kHuffmanCode;
    if (report.outcome == MemberOutcome::kFailed && damaged) {
        out += padRight((testing ? "Tested   " : "Melted   ") + name, kDoneWidth) + "CRC error!";
    } else if (report.outcome == MemberOutcome::kRefused || report.outcome == MemberOutcome::kFailed) {
        ((out += "Skipped  " + name) += " : ") += reasonOf(report);
    } else if (!told_) {
        return;
    } else if (report.outcome == MemberOutcome::kSkipped) {
        ((out += "Skipped  " + name) += " : ") += reasonOf(report);
    } else if (report.outcome == MemberOutcome::kFolderMade) {
        out += "mkdir  " + shownName(utf8Of(report.file));
    } else if (testing) {
        out += "Tested   " + name;
    } else {
        out += padRight("Melted   " + name, kDoneWidth);
        if (report.renamed) out += " as " + shownName(utf8Of(report.file.filename()));
    }
    out += kLineEnd;
}

void LhaTexts::row(const Member& member, std::string& out) {
    const Logged logged(log_, out);
    ++rows_;
    originalSize_ += member.originalSize;
    packedSize_ += member.packedSize;
    if (action_ == Command::Action::kListVerbose) {
        (out += shownName(member.name)) += kLineEnd;
        out += std::string(14, ' ');
    } else {
        const std::string name = shownName(lastPart(member.name));
        (out += isInFolder(member.name) ? "+ " : "  ") += padRight(firstCharacters(name, 12), 12);
    }
    (out += padLeft(member.originalSize, 10)) += padLeft(member.packedSize, 10);
    (out += ' ') += ratioText(member.packedSize, member.originalSize);
    (out += ' ') += dosDateText(member.dosDate);
    (out += ' ') += dosTimeText(member.dosTime);
    (out += ' ') += attributeText(member.attributes, AttributeStyle::kFolderFirst);
    (out += ' ') += padRight(member.method, 5);
    (out += ' ') += checksumText(member);
    out += kLineEnd;
}

void LhaTexts::printed(const Member& member, std::string& out) {
    const Logged logged(log_, out);
    out += "::::::::\r\n" + shownName(member.name) + "\r\n::::::::\r\n";
}

void LhaTexts::packed(const PackedMember& member, std::string& out) {
    const Logged logged(log_, out);
    if (!told_) return;
    (out += "Frozen   ==> ") += padLeft(perMille(member.packedSize, member.originalSize) / 10, 3);
    ((out += "% ") += shownName(member.name)) += kLineEnd;
}

void LhaTexts::deleted(const Member& member, std::string& out) {
    const Logged logged(log_, out);
    if (told_) ((out += "Deleted  ") += shownName(member.name)) += kLineEnd;
}

void LhaTexts::warned(PackWarning warning, std::string_view name, std::string& out) {
    const Logged logged(log_, out);
    (((out += "Skipped  ") += shownName(name)) += " : ") += messageOf(warning);
    out += kLineEnd;
}

void LhaTexts::end(const Command& command, const UnpackSummary& summary, std::string& out) {
    static_cast<void>(command);
    const Logged logged(log_, out);
    if (action_ == Command::Action::kList || action_ == Command::Action::kListVerbose) {
        (out += kDashes) += "   " + padLeft(rows_, 3) + " files  ";
        (out += padLeft(originalSize_, 10)) += padLeft(packedSize_, 10);
        ((out += ' ') += ratioText(packedSize_, originalSize_)) += kLineEnd;
    }
    appendRunError(summary, out);
    if (action_ == Command::Action::kUnpack) out += kLineEnd;
}

}  // namespace archiver
