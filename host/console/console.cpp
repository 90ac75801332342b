#include "host/console/console.h"

#include <algorithm>
#include <filesystem>

#include "host/console/extract_report.h"
#include "host/console/json_text.h"
#include "host/console/listing.h"
#include "host/console/packing.h"

namespace tovar::host {
namespace {

constexpr std::size_t kWriteSize = 1 << 16;  // bytes that are gathered before they are written

ExistingFiles existingFiles(Arguments::Existing existing) {
    switch (existing) {
        case Arguments::Existing::Overwrite:
            return ExistingFiles::Overwrite;
        case Arguments::Existing::Ask:
            return ExistingFiles::Ask;
        case Arguments::Existing::Skip:
            break;
    }
    return ExistingFiles::Skip;
}

}  // namespace

void ConsoleMessages::show(WindowHandle, std::wstring_view text, std::wstring_view title, MessageIcon) {
    std::string line;
    appendPrintable(line, title);
    line += ": ";
    appendPrintable(line, text);
    line += '\n';
    output_.writeError(line);
}

void Console::complain(const std::wstring& text) {
    std::string line = "tovar: ";
    appendPrintable(line, text);
    line += '\n';
    output_.writeError(line);
}

int Console::run(const Arguments& arguments) {
    switch (arguments.command) {
        case Arguments::Command::Help:
            output_.write(kHelpText);
            return kGood;
        case Arguments::Command::Version:
            output_.write("tovar " TOVAREX_VERSION "\n");
            return kGood;
        case Arguments::Command::List:
            return forEach(arguments, &Console::list);
        case Arguments::Command::Test:
            return forEach(arguments, &Console::test);
        case Arguments::Command::Extract:
            return forEach(arguments, &Console::extract);
        case Arguments::Command::Create:
        case Arguments::Command::Add:
        case Arguments::Command::Delete:
            return Packing(output_, system_).run(arguments);
        case Arguments::Command::Unknown:
            break;
    }
    complain(arguments.problem + L"; tovar --help tells what there is");
    return kBadLine;
}

ExitCode exitCodeOf(JobEnd end) {
    switch (end) {
        case JobEnd::Done:
            return kGood;
        case JobEnd::NoLibrary:
        case JobEnd::SwitchedOff:
            return kNoLibrary;
        case JobEnd::Unsupported:
        case JobEnd::BadName:
            return kBadLine;
        case JobEnd::NoSource:
        case JobEnd::NoMember:
            return kNoMember;
        default:
            return kBadArchive;
    }
}

ArchiveJobs Console::jobs(ProgressLine& line) {
    ExtractProgressSink sink;
    if (output_.errorsAreSeen()) {
        sink = [&line](const ExtractProgress& progress) {
            line.show(progress);
            return true;
        };
    }
    return ArchiveJobs(system_.jobs(zipProgress_, std::move(sink)));
}

int Console::forEach(const Arguments& arguments, Command command) {
    ExitCode result = kGood;
    const auto note = [&result](ExitCode code) {
        if (result == kGood) result = code;
    };
    for (const auto& name : arguments.archives) {
        std::error_code error;
        const auto path = std::filesystem::absolute(std::filesystem::path(name), error);
        const ArchiveJobs::Opened archive = ArchiveJobs(system_.jobs(zipProgress_)).open(error ? name : path.wstring());
        if (archive.result.done()) {
            note((this->*command)(archive, arguments));
        } else {
            complain(name + L": " + archive.result.problem);
            note(exitCodeOf(archive.result.end));
        }
    }
    return result;
}

ExitCode Console::list(const ArchiveJobs::Opened& archive, const Arguments& arguments) {
    const bool json = arguments.json;
    const JobResult listed = ArchiveJobs(system_.jobs(zipProgress_)).list(archive);
    const ArchiveDriver& driver = *archive.driver;
    const std::wstring& file = archive.file;
    const std::uint32_t count = driver.entries().size();
    std::string out;
    out.reserve(2 * kWriteSize);
    if (json) {
        out += "{\"archive\":";
        appendJson(out, file);
        out += ",\"entries\":[";
    } else {
        out += kListHeading;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        if (json) {
            if (i > 0) out += ",\n";
            appendJsonEntry(out, driver, i);
        } else {
            appendLine(out, driver, i);
        }
        if (out.size() >= kWriteSize) {
            output_.write(out);
            out.clear();
        }
    }
    const bool complete = listed.done();
    if (json) {
        out += complete ? "],\"complete\":true}\n" : "],\"complete\":false}\n";
    } else {
        out += std::to_string(count) + (count == 1 ? " member\n" : " members\n");
    }
    output_.write(out);
    if (complete) return kGood;
    complain(file + L": " + listed.problem);
    return kBadArchive;
}

ExitCode Console::test(const ArchiveJobs::Opened& archive, const Arguments& arguments) {
    const std::wstring& file = archive.file;
    const bool good = ArchiveJobs(system_.jobs(zipProgress_)).test(archive).done();
    std::string out;
    if (arguments.json) {
        out += "{\"archive\":";
        appendJson(out, file);
        out += good ? ",\"good\":true}\n" : ",\"good\":false}\n";
    } else {
        appendPrintable(out, file);
        out += good ? ": all members are good\n" : ": damaged\n";
    }
    output_.write(out);
    return good ? kGood : kBadArchive;
}

ExitCode Console::extract(const ArchiveJobs::Opened& archive, const Arguments& arguments) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::absolute(
        arguments.folder.empty() ? std::filesystem::current_path(error) : std::filesystem::path(arguments.folder),
        error);
    if (error) {
        complain(arguments.folder + L": there can be no such folder");
        return kBadLine;
    }
    JobResult result;
    {
        ProgressLine line(output_);
        result = jobs(line).extract(archive, {.folder = folder.wstring(),
                                              .members = arguments.members,
                                              .keepFolders = !arguments.flat,
                                              .existing = existingFiles(arguments.existing),
                                              .owner = arguments.ask ? system_.questionOwner() : nullptr});
    }
    if (!result.reached) {
        complain((result.about.empty() ? archive.file : result.about) + L": " + result.problem);
        return exitCodeOf(result.end);
    }
    std::string out;
    appendResult(out, archive.file, folder.wstring(), result.library, arguments.json);
    output_.write(out);
    if (!result.done() && !result.library.message.empty()) {
        complain(archive.file + L": " + result.library.message);
    }
    if (result.end == JobEnd::NoMember) complain(archive.file + L": " + result.problem);
    return exitCodeOf(result.end);
}

}  // namespace tovar::host
