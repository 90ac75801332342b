#include "host/console/packing.h"

#include <filesystem>
#include <system_error>

#include "host/console/extract_report.h"
#include "host/console/json_text.h"
#include "host/console/progress_line.h"
#include "host/console/zip_progress.h"

namespace tovar::host {
namespace {

namespace fs = std::filesystem;
using Command = Arguments::Command;

ArchiveChange::Action actionOf(Command command) {
    switch (command) {
        case Command::Add:
            return ArchiveChange::Action::Add;
        case Command::Delete:
            return ArchiveChange::Action::Delete;
        default:
            return ArchiveChange::Action::Create;
    }
}

ArchiveChange::Sources sourcesOf(Arguments::Sources sources) {
    switch (sources) {
        case Arguments::Sources::Newer:
            return ArchiveChange::Sources::Newer;
        case Arguments::Sources::NewerAndThere:
            return ArchiveChange::Sources::NewerAndThere;
        case Arguments::Sources::All:
            break;
    }
    return ArchiveChange::Sources::All;
}

ArchiveChange changeOf(const Arguments& arguments) {
    return {.action = actionOf(arguments.command),
            .names = arguments.members,
            .level = arguments.level,
            .sources = sourcesOf(arguments.sources),
            .move = arguments.move,
            .recurse = arguments.recurse,
            .hidden = arguments.hidden,
            .encrypt = arguments.password};
}

/// Which command would do what this one cannot.
std::wstring adviceFor(const JobResult& result, const Arguments& arguments, const std::wstring& archive) {
    const KindRow* const row = kindByName(archive);
    const bool cab = row != nullptr && row->bit == kind::kCab;
    if (result.end == JobEnd::Exists && !cab) return L"; tovar add changes it";
    const bool wantsChange = result.end == JobEnd::Unsupported && arguments.command != Command::Create;
    return wantsChange && cab ? L"; tovar create makes new ones" : L"";
}

}  // namespace

ExitCode Packing::refuse(const std::wstring& text, ExitCode code) {
    std::string line = "tovar: ";
    appendPrintable(line, text);
    output_.writeError(line + '\n');
    return code;
}

ExitCode Packing::run(const Arguments& arguments) {
    const std::wstring& name = arguments.archives.front();
    std::error_code error;
    const fs::path base = fs::current_path(error);
    if (error) return refuse(L"there is no current folder", kBadArchive);
    const std::wstring archive = (base / fs::path(name)).lexically_normal().wstring();
    JobResult result;
    {
        ProgressLine line(output_);
        ZipProgress zipProgress(output_);
        ExtractProgressSink sink;
        if (output_.errorsAreSeen()) {
            sink = [&line](const ExtractProgress& progress) {
                line.show(progress);
                return true;
            };
        }
        result = ArchiveJobs(system_.jobs(zipProgress, std::move(sink)))
                     .change(
                         archive, base.wstring(), changeOf(arguments),
                         [&] { return system_.passwords().askNew(archive); }, system_.questionOwner());
    }
    if (result.reached) return tell(arguments, archive, base.wstring(), result);
    return refuse(
        (result.about.empty() ? name : result.about) + L": " + result.problem + adviceFor(result, arguments, archive),
        exitCodeOf(result.end));
}

ExitCode Packing::tell(const Arguments& arguments, const std::wstring& archive, const std::wstring& base,
                       const JobResult& result) {
    const std::wstring& name = arguments.archives.front();
    std::string out;
    appendChange(out, archive, arguments.command == Command::Delete ? std::wstring() : base, result.library,
                 arguments.json);
    output_.write(out);
    if (result.end == JobEnd::NoMember) return refuse(name + L": " + result.problem, kNoMember);
    if (!result.done() && !result.library.message.empty()) {
        return refuse(name + L": " + result.library.message, exitCodeOf(result.end));
    }
    return exitCodeOf(result.end);
}

}  // namespace tovar::host
