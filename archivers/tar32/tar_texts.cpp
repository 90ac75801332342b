#include "archivers/tar32/tar_texts.h"

#include <string>

#include "archivers/commands/command_messages.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/text_columns.h"

namespace archiver {

namespace {

constexpr std::string_view kUsage =
    "usage: [-]{x|t|p}[f][o][z|B|J|Z|G] [archive] [folder\\] [name ...] [@list]\r\n"
    "  x  extract    t, l  list    p  print to the output\r\n"
    "  f  the archive follows      o  the target folder follows\r\n"
    "  --use-directory=0|1  --confirm-overwrite=0|1  --check-all-path=0|1\r\n"
    "  --display-dialog=0|1  --message-loop=0|1  --inverse-procresult\r\n";

std::string errorText(std::int32_t code) {
    return "TAR32 Error(0x" + hexadecimal(static_cast<std::uint32_t>(code), 4) + "): " + std::string(messageOf(code));
}

class TarTexts final : public CommandTexts {
public:
    void begin(const Command& command, std::string& out) override {
        prints_ = command.action == Command::Action::kPrint;
        if (command.action == Command::Action::kList) out += "filename\tfilesize\r\n";
    }

    void row(const Member& member, std::string& out) override {
        out += listedName(member.name) + '\t' + std::to_string(member.originalSize) + "\r\n";
    }

    void printed(const Member&, std::string&) override {}

    void member(const MemberReport& report, std::string& out) override {
        const bool bad = report.outcome == MemberOutcome::kFailed || report.outcome == MemberOutcome::kRefused;
        const bool skipped = report.outcome == MemberOutcome::kSkipped;
        failed_ = failed_ || bad;
        if (prints_ && !bad) return;
        // A folder that is no member itself: its members are named.
        if (report.outcome == MemberOutcome::kFolderMade && report.member.kind != MemberKind::kFolder) return;
        out += listedName(report.member.name);
        if (report.renamed && !bad && !skipped) out += " -> " + listedName(utf8Of(report.file));
        if (bad || skipped) out += " : " + (bad ? errorText(report.code) : std::string(messageOf(report.code)));
        out += "\r\n";
    }

    void end(const Command& command, const UnpackSummary& summary, std::string& out) override {
        if (command.action == Command::Action::kComment) return;
        if (summary.code != kOk && !failed_) out += errorText(summary.code) + "\r\n";
    }

    void refused(const Command* command, ReturnCode code, std::string& out) override {
        out += errorText(code);
        if (command != nullptr) out += " : " + utf8Of(command->archive);
        out += "\r\n";
        if (command == nullptr) out += kUsage;
    }

private:
    bool prints_ = false;
    bool failed_ = false;  ///< a member's line told it
};

}  // namespace

std::unique_ptr<CommandTexts> tarTexts() { return std::make_unique<TarTexts>(); }

}  // namespace archiver
