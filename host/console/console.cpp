#include "host/console/console.h"

#include <algorithm>
#include <filesystem>

#include "host/console/json_text.h"
#include "host/console/listing.h"

namespace tovar::host {
namespace {

constexpr std::size_t kWriteSize = 1 << 16;  // bytes that are gathered before they are written

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
                note((this->*command)(file, *driver, arguments.json));
            }
        }
    }
    return result;
}

ExitCode Console::list(const std::wstring& file, ArchiveDriver& driver, bool json) {
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
    out += json ? "]}\n" : std::to_string(count) + (count == 1 ? " member\n" : " members\n");
    output_.write(out);
    return kGood;
}

ExitCode Console::test(const std::wstring& file, ArchiveDriver& driver, bool json) {
    const bool good = driver.TestArchive(file);
    std::string out;
    if (json) {
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

}  // namespace tovar::host
