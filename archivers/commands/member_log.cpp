#include "archivers/commands/member_log.h"

#include <algorithm>
#include <cctype>

#include "archivers/commands/command_messages.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/shown_names.h"
#include "archivers/commands/text_columns.h"

namespace archiver {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kNameWidth = 14;
constexpr std::string_view kTitles = "  Name         Original   Packed  Ratio   Date     Time   Attr Method";
constexpr std::string_view kDashes = "-------------- -------- -------- ------ -------- -------- ---- -------";

std::string upperHexadecimal(std::uint32_t value) {
    std::string digits = hexadecimal(value, 8);
    std::transform(digits.begin(), digits.end(), digits.begin(),
                   [](char digit) { return static_cast<char>(std::toupper(static_cast<unsigned char>(digit))); });
    return digits;
}

std::string_view verbOf(const MemberReport& report, bool testing) {
    switch (report.outcome) {
        case MemberOutcome::kFolderMade:
            return "Creating ";
        case MemberOutcome::kTested:
            return "Testing ";
        case MemberOutcome::kSkipped:
        case MemberOutcome::kRefused:
            return "Skipping ";
        default:
            return testing ? "Testing " : "Extracting ";
    }
}

std::string resultOf(const MemberReport& report) {
    if (report.outcome == MemberOutcome::kRefused) return "its name or link would leave the target folder";
    if (report.code == kFileCrc || report.code == kHuffmanCode) return "CRC error!";
    if (report.code != kOk) return std::string(messageOf(report.code));
    if (report.renamed) return "OK, as " + shownName(utf8Of(report.file.filename()));
    return "OK";
}

bool wentWell(MemberOutcome outcome) { return outcome != MemberOutcome::kRefused && outcome != MemberOutcome::kFailed; }

}  // namespace

std::string backslashedName(std::string_view utf8Name) {
    std::string name = shownName(utf8Name);
    std::replace(name.begin(), name.end(), '/', '\\');
    return name;
}

void appendRunError(const UnpackSummary& summary, std::string& out) {
    // Members have their own lines; kNotExist tells that there was none.
    const bool toldByMembers = summary.failed + summary.refused > 0 && summary.code != kUserCancel;
    if (summary.code == kOk || toldByMembers) return;
    out += "Error(0x" + hexadecimal(static_cast<std::uint32_t>(summary.code), 4) +
           "): " + std::string(messageOf(summary.code)) + std::string(kLineEnd);
}

void MemberLog::begin(const Command& command, std::string& out) {
    lists_ = command.action == Command::Action::kList || command.action == Command::Action::kListVerbose;
    namesAbove_ = command.action == Command::Action::kListVerbose;
    testing_ = command.action == Command::Action::kTest;
    const bool packing = command.action == Command::Action::kPack;
    told_ = command.showNames && (testing_ || packing || command.action == Command::Action::kUnpack);
    if (lists_) {
        ((out += kTitles) += style_.checksums ? "  CRC" : "") += kLineEnd;
        ((out += kDashes) += style_.checksums ? " --------" : "") += kLineEnd;
    } else if (told_) {
        out += packing ? style_.packing : testing_ ? style_.testing : style_.unpacking;
        (out += shownName(utf8Of(command.archive))) += kLineEnd;
    }
}

void MemberLog::member(const MemberReport& report, std::string& out) {
    if (!told_ && wentWell(report.outcome)) return;
    const bool folder = report.outcome == MemberOutcome::kFolderMade;
    out += verbOf(report, testing_);
    out += folder ? shownName(utf8Of(report.file)) : backslashedName(report.member.name);
    ((out += "   ") += resultOf(report)) += kLineEnd;
}

void MemberLog::row(const Member& member, std::string& out) {
    ++rows_;
    const std::string name = backslashedName(member.name);
    if (namesAbove_) (out += name) += kLineEnd;
    const std::uint32_t ratio = perMille(member.packedSize, member.originalSize);
    out += padRight(namesAbove_ ? std::string_view() : std::string_view(name), kNameWidth);
    (out += ' ') += padLeft(member.originalSize, 8);
    (out += ' ') += padLeft(member.packedSize, 8);
    (out += ' ') += padLeft(ratio / 10, 3) + '.' + std::to_string(ratio % 10) + '%';
    (out += ' ') += dosDateText(member.dosDate);
    (out += ' ') += dosTimeText(member.dosTime);
    (out += ' ') += attributeText(member.attributes, AttributeStyle::kFolderFirst);
    (out += ' ') += style_.checksums ? padRight(member.method, 7) : member.method;
    if (style_.checksums) (out += ' ') += upperHexadecimal(member.crc);
    out += kLineEnd;
}

void MemberLog::printed(const Member& member, std::string& out) {
    static_cast<void>(member);
    static_cast<void>(out);
}

void MemberLog::packed(const PackedMember& member, std::string& out) {
    if (told_) ((out += "Adding ") += backslashedName(member.name) + "   OK") += kLineEnd;
}

void MemberLog::warned(PackWarning warning, std::string_view name, std::string& out) {
    // One that became shorter is packed nevertheless.
    if (warning != PackWarning::kChanged) ++leftOut_;
    out += warning == PackWarning::kChanged ? "Warning: " : "Skipping ";
    ((out += backslashedName(name) + "   ") += messageOf(warning)) += kLineEnd;
}

void MemberLog::end(const Command& command, const UnpackSummary& summary, std::string& out) {
    static_cast<void>(command);
    if (lists_) {
        ((out += kDashes) += style_.checksums ? " --------" : "") += kLineEnd;
        (out += std::to_string(rows_) + " Files") += kLineEnd;
    } else if (summary.failed + summary.refused > 0) {
        (out += "Errors: " + std::to_string(summary.failed + summary.refused)) += kLineEnd;
    } else if (leftOut_ > 0 && summary.code != kUserCancel) {
        (out += "Errors: " + std::to_string(leftOut_)) += kLineEnd;
    } else if (told_ && summary.code == kOk) {
        (out += "All OK") += kLineEnd;
    }
    // Sources that are left out have their own lines, too.
    const bool toldBySources =
        leftOut_ > 0 && (summary.code == kNotExist || summary.code == kFileOpen || summary.code == kCannotRead);
    if (!toldBySources) appendRunError(summary, out);
}

}  // namespace archiver
