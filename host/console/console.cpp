#include "host/console/console.h"

#include <algorithm>
#include <filesystem>

#include "drivers/common_driver.h"
#include "drivers/extract_lines.h"
#include "host/console/extract_report.h"
#include "host/console/json_text.h"
#include "host/console/listing.h"
#include "host/console/member_list.h"
#include "host/console/packing.h"
#include "host/console/progress_line.h"

namespace tovar::host {
namespace {

constexpr std::size_t kWriteSize = 1 << 16;  // bytes that are gathered before they are written

constexpr std::int16_t kMostFiles = 32767;  // that the library's output has room for

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

/// The kind's first extension is the word that people know it by.
std::wstring kindWord(const KindRow& row) { return std::wstring(row.extensions.front()); }

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
        case Arguments::Command::Delete: {
            ConsoleMessages messages(output_);
            return Packing(output_, system_, messages).run(arguments);
        }
        case Arguments::Command::Unknown:
            break;
    }
    complain(arguments.problem + L"; tovar --help tells what there is");
    return kBadLine;
}

int Console::forEach(const Arguments& arguments, Command command) {
    ExitCode result = kGood;
    const auto note = [&result](ExitCode code) {
        if (result == kGood) result = code;
    };
    for (const auto& name : arguments.archives) {
        std::error_code error;
        const auto path = std::filesystem::absolute(std::filesystem::path(name), error);
        const std::wstring file = error ? name : path.wstring();
        const KindRow* row = kindByName(file);
        if (!std::filesystem::is_regular_file(path, error)) {
            complain(name + L": there is no such file");
            note(kBadArchive);
        } else if (row == nullptr) {
            complain(name + L": this is no archive's name");
            note(kBadArchive);
        } else if (!system_.reads(*row)) {
            complain(name + L": the library " + std::wstring(row->library) + L" is missing or too old");
            note(kNoLibrary);
        } else {
            const auto driver = row->makeDriver(system_.drivers());
            if (!driver->CheckArchive(file)) {
                complain(name + L": this is no good " + kindWord(*row) + L" archive");
                note(kBadArchive);
            } else {
                note((this->*command)(file, *driver, arguments));
            }
        }
    }
    return result;
}

ExitCode Console::list(const std::wstring& file, ArchiveDriver& driver, const Arguments& arguments) {
    const bool json = arguments.json;
    const std::uint32_t count = driver.SetArcFile(file);
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
    const bool complete = driver.listingComplete();
    if (json) {
        out += complete ? "],\"complete\":true}\n" : "],\"complete\":false}\n";
    } else {
        out += std::to_string(count) + (count == 1 ? " member\n" : " members\n");
    }
    output_.write(out);
    if (complete) return kGood;
    complain(file + L": the listing breaks off here");
    return kBadArchive;
}

ExitCode Console::test(const std::wstring& file, ArchiveDriver& driver, const Arguments& arguments) {
    const bool good = driver.TestArchive(file);
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

ExitCode Console::extract(const std::wstring& file, ArchiveDriver& driver, const Arguments& arguments) {
    const ExtractWords& words = driver.description().extract;
    if (arguments.flat && !unpacksFlat(words)) {
        complain(file + L": archives of this kind unpack with their folders only");
        return kBadLine;
    }
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::absolute(
        arguments.folder.empty() ? std::filesystem::current_path(error) : std::filesystem::path(arguments.folder),
        error);
    if (error) {
        complain(arguments.folder + L": there can be no such folder");
        return kBadLine;
    }
    if (auto* const common = dynamic_cast<CommonDriver*>(&driver)) common->setMaxFileCount(kMostFiles);
    ExtractResult result;
    try {
        const MemberList members(arguments.members, driver.listCodec(), system_.workFolder(), system_.files());
        ProgressLine line(output_);
        if (output_.errorsAreSeen()) {
            driver.setProgress([&line](const ExtractProgress& progress) {
                line.show(progress);
                return true;
            });
        }
        result = driver.extract({.owner = arguments.ask ? system_.questionOwner() : nullptr,
                                 .command = extractCommand(words, {.keepFolders = !arguments.flat,
                                                                   .existing = existingFiles(arguments.existing),
                                                                   .listed = members.isFile()}),
                                 .archive = file,
                                 .folder = folder.wstring(),
                                 .members = members.argument(),
                                 .keepExisting = arguments.existing != Arguments::Existing::Overwrite});
        driver.setProgress({});
    } catch (const SystemError&) {
        complain(file + L": the members' names cannot be told to the library");
        return kBadArchive;
    }
    std::string out;
    appendResult(out, file, folder.wstring(), result, arguments.json);
    output_.write(out);
    if (!result.message.empty() && (result.failed || result.nothingChosen)) complain(file + L": " + result.message);
    if (result.nothingChosen) {
        complain(file + L": no member is called so");
        return kNoMember;
    }
    return result.failed ? kBadArchive : kGood;
}

}  // namespace tovar::host
