#include "archivers/unzip32/unzip_texts.h"

#include "archivers/commands/command_messages.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/text_columns.h"
#include "archivers/unzip32/unzip_language.h"

namespace archiver {

namespace {

/// Sums of a listing; claims, so they go no further than the type holds.
struct Totals {
    std::uint64_t members = 0;
    std::uint64_t original = 0;
    std::uint64_t packed = 0;
};

void addUpTo(std::uint64_t& total, std::uint64_t size) {
    total = size > UINT64_MAX - total ? UINT64_MAX : total + size;
}

/// The part that packing saved, per mille and rounded to the next one; 0 when it saved nothing.
std::uint32_t savedPerMille(std::uint64_t packed, std::uint64_t original) {
    if (packed >= original) return 0;
    std::uint64_t saved = original - packed;
    while (saved > UINT64_MAX / 2000) {  // claims of exabytes: the lowest bits do not show
        saved >>= 1;
        original >>= 1;
    }
    return static_cast<std::uint32_t>((saved * 2000 / original + 1) / 2);
}

/// "37.6%"
std::string savedText(std::uint64_t packed, std::uint64_t original) {
    const std::uint32_t saved = savedPerMille(packed, original);
    return std::to_string(saved / 10) + '.' + std::to_string(saved % 10) + '%';
}

/// "38%"
std::string roundSavedText(std::uint64_t packed, std::uint64_t original) {
    return std::to_string((savedPerMille(packed, original) + 5) / 10) + '%';
}

std::string fileCount(std::uint64_t count) { return std::to_string(count) + (count == 1 ? " file" : " files"); }

/// "2001-05-17 17:30"
std::string longDate(const Member& member) {
    const std::uint32_t year = 1980U + (member.dosDate >> 9);
    return std::to_string(year) + dosDateText(member.dosDate).substr(2) + ' ' +
           dosTimeText(member.dosTime).substr(0, 5);
}

/// One form of listing.
struct Form {
    std::string_view head;
    std::string (*row)(const Member& member);
    std::string (*foot)(const Totals& totals);
};

std::string tableRow(const Member& member) {
    return padRight(listedName(member.name), 14) + "  " + padLeft(member.originalSize, 8) + "  " +
           padLeft(member.packedSize, 8) + ' ' + padLeft(savedText(member.packedSize, member.originalSize), 6) + ' ' +
           dosDateText(member.dosDate) + "  " + dosTimeText(member.dosTime) + ' ' +
           attributeText(member.attributes, AttributeStyle::kFolderFirst) + ' ' + padRight(member.method, 8) +
           hexadecimal(member.crc, 8) + '\n';
}

std::string tableFoot(const Totals& totals) {
    return "--------------  --------  -------- ------ --------\n" + padLeft(totals.members, 6) + " files  " +
           padLeft(totals.original, 10) + "  " + padLeft(totals.packed, 8) + "  " +
           padLeft(savedText(totals.packed, totals.original), 6) + '\n';
}

std::string shortRow(const Member& member) {
    return padLeft(member.originalSize, 9) + "  " + longDate(member) + "   " + listedName(member.name) + '\n';
}

std::string shortFoot(const Totals& totals) {
    return "---------                     -------\n" + padLeft(totals.original, 9) + "                     " +
           fileCount(totals.members) + '\n';
}

std::string verboseRow(const Member& member) {
    return padLeft(member.originalSize, 8) + "  " + padRight(member.method, 7) + ' ' + padLeft(member.packedSize, 8) +
           ' ' + padLeft(roundSavedText(member.packedSize, member.originalSize), 4) + ' ' + longDate(member) + ' ' +
           hexadecimal(member.crc, 8) + "  " + listedName(member.name) + '\n';
}

std::string verboseFoot(const Totals& totals) {
    return "--------          -------- ----                            -------\n" + padLeft(totals.original, 8) +
           "          " + padLeft(totals.packed, 8) + ' ' + padLeft(roundSavedText(totals.packed, totals.original), 4) +
           "                            " + fileCount(totals.members) + '\n';
}

constexpr Form kForms[] = {
    {"  Name          Original    Packed  Ratio   Date     Time   Attr Method   CRC-32\n"
     "--------------  --------  -------- ------ -------- -------- ---- -------- --------\n",
     &tableRow, &tableFoot},
    {"  Length      Date    Time    Name\n"
     "---------  ---------- -----   ----\n",
     &shortRow, &shortFoot},
    {" Length   Method      Size Cmpr    Date    Time   CRC-32   Name\n"
     "--------  ------- -------- ---- ---------- ----- --------  ----\n",
     &verboseRow, &verboseFoot},
};

class UnZipTexts final : public CommandTexts {
public:
    void begin(const Command& command, std::string& out) override;
    void member(const MemberReport& report, std::string& out) override;
    void row(const Member& member, std::string& out) override;
    void printed(const Member& member, std::string& out) override;
    void end(const Command& command, const UnpackSummary& summary, std::string& out) override;

private:
    std::filesystem::path target_;
    const Form* form_ = nullptr;
    Totals totals_;
    bool prints_ = false;
    bool showNames_ = true;
    bool failed_ = false;  ///< a member's line told it
};

void UnZipTexts::begin(const Command& command, std::string& out) {
    using Action = Command::Action;
    target_ = command.options.target;
    prints_ = command.action == Action::kPrint;
    showNames_ = command.showNames && (!prints_ || command.printNames);
    if (command.action == Action::kList || command.action == Action::kListVerbose) form_ = &kForms[command.form];
    // Programs that read the table drop its first two lines, no more.
    const bool table = form_ == &kForms[static_cast<int>(UnZipForm::kTable)];
    if (showNames_ && !table) out += "Archive:  " + utf8Of(command.archive) + '\n';
    if (form_ != nullptr) out += form_->head;
}

void UnZipTexts::row(const Member& member, std::string& out) {
    ++totals_.members;
    addUpTo(totals_.original, member.originalSize);
    addUpTo(totals_.packed, member.packedSize);
    out += form_->row(member);
}

void UnZipTexts::printed(const Member& member, std::string& out) {
    if (showNames_) out += "  inflating: " + listedName(member.name) + '\n';
}

void UnZipTexts::member(const MemberReport& report, std::string& out) {
    const std::string name = listedName(report.member.name);
    const std::string because = "  " + std::string(messageOf(report.code)) + '\n';
    switch (report.outcome) {
        case MemberOutcome::kFailed:
        case MemberOutcome::kRefused:
            failed_ = true;
            out += "error:  " + name + because;
            return;
        case MemberOutcome::kSkipped:
            if (showNames_) out += "   skipping: " + name + because;
            return;
        case MemberOutcome::kTested:
            if (showNames_ && !prints_) out += "    testing: " + name + "   OK\n";
            return;
        case MemberOutcome::kFolderMade:
            if (showNames_) out += "   creating: " + listedName(madeFolder(report, target_)) + '\n';
            return;
        case MemberOutcome::kLinkMade:
            if (showNames_) out += "    linking: ";
            break;
        case MemberOutcome::kUnpacked:
            if (prints_) return;
            if (showNames_) out += report.member.method == "Stored" ? " extracting: " : "  inflating: ";
            break;
    }
    if (!showNames_) return;
    out += name;
    if (report.renamed) out += " -> " + listedName(utf8Of(report.file));
    out += '\n';
}

void UnZipTexts::end(const Command& command, const UnpackSummary& summary, std::string& out) {
    if (form_ != nullptr) out += form_->foot(totals_);
    if (command.action == Command::Action::kComment) out += '\n';
    if (summary.code != kOk && !failed_) out += "error:  " + std::string(messageOf(summary.code)) + '\n';
    if (command.action != Command::Action::kTest || !command.showNames) return;
    const std::string archive = utf8Of(command.archive);
    out += summary.code == kOk ? "No errors detected in compressed data of " + archive + ".\n"
                               : "At least one error was detected in " + archive + ".\n";
}

}  // namespace

std::unique_ptr<CommandTexts> unZipTexts() { return std::make_unique<UnZipTexts>(); }

}  // namespace archiver
