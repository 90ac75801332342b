#include "host/console/packing.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <vector>

#include "archivers/convention/zip_abi.h"
#include "create/zip_engine.h"
#include "drivers/common_driver.h"
#include "drivers/extract_lines.h"
#include "host/console/extract_report.h"
#include "host/console/json_text.h"
#include "host/console/member_list.h"
#include "host/console/progress_line.h"
#include "host/console/source_names.h"
#include "host/console/zip_progress.h"
#include "shell/list_file.h"
#include "shell/paths.h"

namespace tovar::host {
namespace {

namespace fs = std::filesystem;
using Command = Arguments::Command;
using Sources = Arguments::Sources;

constexpr std::int16_t kMostFiles = 32767;  // that a library's output has room for
constexpr int kUsualLevel = 6;
constexpr std::wstring_view kZipLibrary = L"InfoZip32.dll";

wchar_t actionOf(const Arguments& arguments) {
    if (arguments.command == Command::Delete) return L'd';
    if (arguments.move) return L'm';
    switch (arguments.sources) {
        case Sources::Newer:
            return L'u';
        case Sources::NewerAndThere:
            return L'f';
        case Sources::All:
            break;
    }
    return L'a';
}

std::wstring zipLine(const Arguments& arguments) {
    std::wstring line(1, actionOf(arguments));
    if (arguments.command == Command::Delete) return line;
    if (arguments.recurse) line += L" -r";
    if (arguments.password) line += L" -p";
    if (arguments.hidden) line += L" -s";
    return line + L" -l" + std::to_wstring(arguments.level.value_or(kUsualLevel));
}

/// Action and switches for an LZH archive. Level 0 is a method of its own; all others are the usual one.
std::wstring lhaWords(const Arguments& arguments) {
    std::wstring words(1, actionOf(arguments));
    if (arguments.command == Command::Delete) return words;
    if (arguments.recurse) words += L" -r2";
    if (arguments.hidden) words += L" -a1";
    if (arguments.level == 0) words += L" -jm0";
    return words + L" -x1";
}

std::wstring cabWords(const Arguments& arguments) {
    std::wstring words = arguments.level == 0 ? L"-a -mn -k" : L"-a -mz -k";
    if (arguments.recurse) words += L" -r";
    return words;
}

/// Keeps what the zip engine says until its run has ended: that there was nothing to do, the last that it says then, is
/// no error where only newer files were wanted, and said in other words where names were given.
class KeptMessages final : public MessageBoxes {
public:
    void show(WindowHandle, std::wstring_view text, std::wstring_view title, MessageIcon icon) override {
        kept_.push_back({std::wstring(text), std::wstring(title), icon});
    }
    void dropLast() {
        if (!kept_.empty()) kept_.pop_back();
    }
    void showIn(MessageBoxes& messages) const {
        for (const Kept& each : kept_) messages.show(nullptr, each.text, each.title, each.icon);
    }

private:
    struct Kept {
        std::wstring text, title;
        MessageIcon icon;
    };
    std::vector<Kept> kept_;
};

bool isFile(const std::wstring& path) {
    std::error_code error;
    return fs::is_regular_file(fs::path(path), error);
}

bool isThere(const std::wstring& path) {
    std::error_code error;
    return fs::symlink_status(fs::path(path), error).type() != fs::file_type::not_found;
}

}  // namespace

ExitCode Packing::refuse(const std::wstring& text, ExitCode code) {
    std::string line = "tovar: ";
    appendPrintable(line, text);
    output_.writeError(line + '\n');
    return code;
}

std::wstring Packing::refusalOf(const Arguments& arguments, const KindRow& row) {
    const bool cab = row.bit == kind::kCab;
    if (row.bit != kind::kZip && row.bit != kind::kLzh && !cab) return L"archives of this kind can only be read";
    if (cab && arguments.command != Command::Create) return L"cabinets cannot be changed; tovar create makes new ones";
    if (cab && arguments.move) return L"files are not moved into cabinets";
    if (row.bit != kind::kZip && arguments.password) return L"archives of this kind cannot be encrypted";
    return {};
}

ExitCode Packing::run(const Arguments& arguments) {
    const std::wstring& name = arguments.archives.front();
    std::error_code error;
    const fs::path base = fs::current_path(error);
    if (error) return refuse(L"there is no current folder", kBadArchive);
    const std::wstring archive = (base / fs::path(name)).lexically_normal().wstring();
    const KindRow* const row = kindByName(archive);
    if (row == nullptr) return refuse(name + L": this is no archive's name", kBadArchive);
    if (const std::wstring reason = refusalOf(arguments, *row); !reason.empty()) {
        return refuse(name + L": " + reason, kBadLine);
    }
    if (arguments.command == Command::Create && isThere(archive)) {
        const std::wstring advice = row->bit == kind::kCab ? L"" : L"; tovar add changes it";
        return refuse(name + L": this is there already" + advice, kBadArchive);
    }
    if (arguments.command == Command::Delete && !isFile(archive)) {
        return refuse(name + L": there is no such file", kBadArchive);
    }
    return begin({arguments, *row, archive, name, base.wstring()});
}

ExitCode Packing::begin(const Job& job) {
    SourceNames sources;
    if (job.arguments.command == Command::Delete) {
        sources.names = job.arguments.members;
    } else {
        sources = nameSources(job.arguments.members, fs::path(job.base));
    }
    if (!sources.problem.empty()) return refuse(sources.problem, sources.missing ? kNoMember : kBadLine);
    const bool zip = job.row.bit == kind::kZip;
    if (zip ? system_.zipLibraries().get() == nullptr : !system_.reads(job.row)) {
        const std::wstring_view library = zip ? kZipLibrary : job.row.library;
        return refuse(job.name + L": the library " + std::wstring(library) + L" is missing or too old", kNoLibrary);
    }
    return zip ? changeZip(job, sources.names) : changeByDriver(job, sources.names);
}

ExitCode Packing::changeZip(const Job& job, const std::vector<std::wstring>& names) {
    GivenPassword password;
    if (job.arguments.password) {
        auto given = system_.passwords().askNew(job.archive);
        if (!given) return refuse(job.name + L": there is no password, or not the same one twice", kBadArchive);
        password.give(std::move(*given));
    }
    NoComments comments;
    ZipProgress progress(output_);
    KeptMessages messages;
    ZipEngine engine(
        {system_.zipLibraries(), progress, comments, password, messages, system_.files(), system_.paths()});
    const std::wstring line = zipLine(job.arguments);
    const std::wstring rows = job.arguments.command == Command::Delete ? zipMemberRows(names) : zipRows(names);
    const bool good = engine
                          .run({.owner = system_.questionOwner(),
                                .command = line,
                                .archive = job.archive,
                                .files = rows,
                                .baseFolder = job.base})
                          .value_or(false);
    const ZipReport& report = engine.report();
    const bool idle = report.code == archiver::zip_abi::result::kNothingToDo;
    if (idle) messages.dropLast();
    messages.showIn(messages_);
    return tell(job, {.code = report.code, .text = report.log, .failed = !good, .nothingChosen = idle});
}

ExitCode Packing::changeByDriver(const Job& job, const std::vector<std::wstring>& names) {
    const auto made = job.row.makeDriver(system_.drivers());
    auto* const driver = dynamic_cast<CommonDriver*>(made.get());
    if (driver == nullptr) return refuse(job.name + L": archives of this kind can only be read", kBadLine);
    driver->setMaxFileCount(kMostFiles);
    const bool deletes = job.arguments.command == Command::Delete;
    ExtractResult result;
    try {
        const ListFile list(deletes ? memberRows(names) : listRows(names), driver->listCodec(), system_.workFolder(),
                            system_.files());
        ProgressLine line(output_);
        if (output_.errorsAreSeen()) {
            driver->setProgress([&line](const ExtractProgress& progress) {
                line.show(progress);
                return true;
            });
        }
        std::wstring words = (job.row.bit == kind::kCab ? cabWords(job.arguments) : lhaWords(job.arguments)) + L' ' +
                             QuoteIfNeeded(job.archive);
        if (!deletes) words += L' ' + QuoteIfNeeded(AddTrailingSeparator(job.base));
        result = driver->runLine(nullptr, words + L' ' + list.argument());
        driver->setProgress({});
    } catch (const SystemError&) {
        return refuse(job.name + L": the names cannot be told to the library", kBadArchive);
    }
    return tell(job, result);
}

ExitCode Packing::tell(const Job& job, ExtractResult result) {
    std::string out;
    const bool deletes = job.arguments.command == Command::Delete;
    if (result.nothingChosen && !deletes && job.arguments.sources != Sources::All) {
        result.failed = result.nothingChosen = false;
        result.message.clear();
    }
    appendChange(out, job.archive, deletes ? std::wstring_view() : job.base, result, job.arguments.json);
    output_.write(out);
    if (!result.message.empty() && result.failed && !result.nothingChosen) {
        static_cast<void>(refuse(job.name + L": " + result.message, kBadArchive));
    }
    if (!result.nothingChosen) return result.failed ? kBadArchive : kGood;
    return refuse(job.name + (deletes ? L": no member is called so" : L": no file is called so"), kNoMember);
}

}  // namespace tovar::host
