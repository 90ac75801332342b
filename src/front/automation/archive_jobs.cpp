#include "front/automation/archive_jobs.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "archivers/convention/zip_abi.h"
#include "create/zip_engine.h"
#include "drivers/common_driver.h"
#include "drivers/extract_lines.h"
#include "drivers/return_codes.h"
#include "front/automation/given_password.h"
#include "front/automation/kept_messages.h"
#include "front/automation/named_members.h"
#include "front/automation/source_names.h"
#include "shell/current_folder_keeper.h"
#include "shell/list_file.h"
#include "shell/paths.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;
namespace zip_result = archiver::zip_abi::result;
using Action = ArchiveChange::Action;

constexpr std::int16_t kMostFiles = 32767;  // that a library's output has room for
constexpr std::int32_t kPasswordCode = 0x800A;
constexpr std::int32_t kAceNoPassword = 131;
constexpr std::wstring_view kZipLibrary = L"InfoZip32.dll";

/// The kind's first extension is the word that people know it by.
std::wstring kindWord(const KindRow& row) { return std::wstring(row.extensions.front()); }

bool isFile(const std::wstring& path) {
    std::error_code error;
    return fs::is_regular_file(fs::path(path), error);
}

bool isThere(const std::wstring& path) {
    std::error_code error;
    return fs::symlink_status(fs::path(path), error).type() != fs::file_type::not_found;
}

/// The bit that says whether archives of the kind can be changed.
ArchiveKind creatingBit(const KindRow& row) { return row.bit == kind::kZip ? kind::kCreateZip : row.creationBit; }

/// Words for testing, of the libraries that can be given a password.
std::wstring_view testWords(const KindRow& row) {
    switch (row.bit) {
        case kind::kZip:
        case kind::kRar:
            return L"-t";
        case kind::kArj:
            return L"t";
        default:
            return {};
    }
}

/// A driver's library has a password for its commands while the object lives.
class DriverPassword {
public:
    DriverPassword(ArchiveDriver& driver, std::wstring_view password)
        : driver_(password.empty() ? nullptr : dynamic_cast<CommonDriver*>(&driver)) {
        given_ = driver_ != nullptr && driver_->setPassword(password);
    }
    ~DriverPassword() {
        if (driver_ != nullptr) static_cast<void>(driver_->setPassword({}));
    }
    DriverPassword(const DriverPassword&) = delete;
    DriverPassword& operator=(const DriverPassword&) = delete;

    [[nodiscard]] bool given() const noexcept { return given_; }

private:
    CommonDriver* driver_;
    bool given_ = false;
};

/// A driver tells how it gets on while the object lives.
class DriverProgress {
public:
    DriverProgress(ArchiveDriver& driver, const ExtractProgressSink& sink) : driver_(driver) {
        driver_.setProgress(sink);
    }
    ~DriverProgress() { driver_.setProgress({}); }
    DriverProgress(const DriverProgress&) = delete;
    DriverProgress& operator=(const DriverProgress&) = delete;

private:
    ArchiveDriver& driver_;
};

std::wstring passwordProblem(bool wanted, bool given) {
    if (!wanted) return L"a password is needed";
    return given ? L"the password is not the right one" : L"the library cannot be given a password";
}

JobResult failure(JobEnd end, std::wstring problem, std::wstring about = {}) {
    return {.end = end, .problem = std::move(problem), .about = std::move(about)};
}

/// What a library's answer means.
JobResult judged(ExtractResult library) {
    JobResult result{.library = std::move(library), .reached = true};
    if (result.library.nothingChosen) {
        result.end = JobEnd::NoMember;
        result.problem = L"no member is called so";
    } else if (result.library.failed) {
        result.end = JobEnd::Failed;
        result.problem = result.library.message;
        if (result.problem.empty()) {
            result.problem = L"the library's code is " + std::to_wstring(result.library.code);
        }
    }
    return result;
}

}  // namespace

JobResult ArchiveJobs::unusable(ArchiveKind bit, std::wstring_view library) const {
    switch (ports_.use(bit)) {
        case KindUse::Missing:
            return failure(JobEnd::NoLibrary, L"the library " + std::wstring(library) + L" is missing or too old");
        case KindUse::SwitchedOff:
            return failure(JobEnd::SwitchedOff, L"the use of " + std::wstring(library) + L" is switched off");
        case KindUse::Ready:
            break;
    }
    return {};
}

ArchiveJobs::Opened ArchiveJobs::open(const std::wstring& file) {
    Opened opened;
    opened.file = file;
    opened.row = kindByName(file);
    if (!isFile(file)) {
        opened.result = failure(JobEnd::NoFile, L"there is no such file");
    } else if (opened.row == nullptr) {
        opened.result = failure(JobEnd::NoKind, L"this is no archive's name");
    } else if (opened.result = unusable(opened.row->bit, opened.row->library); opened.result.done()) {
        auto driver = opened.row->makeDriver(ports_.drivers);
        if (driver->CheckArchive(file)) {
            opened.driver = std::move(driver);
        } else {
            opened.result = failure(JobEnd::BadArchive, L"this is no good " + kindWord(*opened.row) + L" archive");
        }
    }
    return opened;
}

JobResult ArchiveJobs::list(const Opened& archive) {
    static_cast<void>(archive.driver->SetArcFile(archive.file));
    if (archive.driver->listingComplete()) return {};
    return failure(JobEnd::BadArchive, L"the listing breaks off here");
}

JobResult ArchiveJobs::test(const Opened& archive, std::wstring_view password) {
    const CurrentFolderKeeper keeper(ports_.paths);
    const std::wstring_view words = testWords(*archive.row);
    if (password.empty() || words.empty()) {
        if (archive.driver->TestArchive(archive.file)) return {};
        return failure(JobEnd::BadArchive, L"the archive is damaged");
    }
    // Without a password the library's check passes encrypted members over; its command tests them too.
    auto& driver = dynamic_cast<CommonDriver&>(*archive.driver);
    const DriverPassword given(driver, password);
    const DriverProgress progress(driver, ports_.progress);
    JobResult result = judged(driver.runLine(nullptr, std::wstring(words) + L' ' + QuoteIfNeeded(archive.file)));
    if (result.library.code == kPasswordCode) {
        result.end = JobEnd::NoPassword;
        result.problem = passwordProblem(true, given.given());
    } else if (!result.done()) {
        result.end = JobEnd::BadArchive;
    }
    return result;
}

JobResult ArchiveJobs::extract(const Opened& archive, const ExtractJob& job) {
    ArchiveDriver& driver = *archive.driver;
    const ExtractWords& words = driver.description().extract;
    if (!job.keepFolders && !unpacksFlat(words)) {
        return failure(JobEnd::Unsupported, L"archives of this kind unpack with their folders only");
    }
    for (const std::wstring& member : job.members) {
        if (member.empty() || member.find_first_of(L"\"\r\n") != member.npos) {
            return failure(JobEnd::BadName, L"the library cannot be told of such a name", member);
        }
    }
    const CurrentFolderKeeper keeper(ports_.paths);
    auto* const common = dynamic_cast<CommonDriver*>(&driver);
    if (common != nullptr) common->setMaxFileCount(kMostFiles);
    try {
        const NamedMembers members(job.members, driver.listCodec(), ports_.workFolder, ports_.drivers.files);
        const DriverPassword password(driver, job.password);
        const DriverProgress progress(driver, ports_.progress);
        JobResult result = judged(driver.extract(
            {.owner = job.owner,
             .command = extractCommand(
                 words, {.keepFolders = job.keepFolders, .existing = job.existing, .listed = members.isFile()}),
             .archive = archive.file,
             .folder = job.folder,
             .members = members.argument(),
             .keepExisting = job.existing != ExistingFiles::Overwrite}));
        const std::int32_t noPassword = common != nullptr ? kPasswordCode : kAceNoPassword;
        if (result.end == JobEnd::Failed && result.library.code == noPassword) {
            result.end = JobEnd::NoPassword;
            result.problem = passwordProblem(!job.password.empty(), password.given() || common == nullptr);
        }
        return result;
    } catch (const SystemError&) {
        return failure(JobEnd::BadName, L"the members' names cannot be told to the library");
    }
}

JobResult ArchiveJobs::change(const std::wstring& archive, const std::wstring& base, const ArchiveChange& change,
                              const NewPassword& password, WindowHandle owner) {
    const KindRow* const row = kindByName(archive);
    if (row == nullptr) return failure(JobEnd::NoKind, L"this is no archive's name");
    if (std::wstring reason = refusalOf(change, row->bit); !reason.empty()) {
        return failure(JobEnd::Unsupported, std::move(reason));
    }
    if (change.action == Action::Create && isThere(archive)) {
        return failure(JobEnd::Exists, L"this is there already");
    }
    if (change.action == Action::Delete && !isFile(archive)) {
        return failure(JobEnd::NoFile, L"there is no such file");
    }
    SourceNames sources;
    if (change.action == Action::Delete) {
        sources.names = change.names;
        for (const std::wstring& name : change.names) {
            if (!name.empty() && name.find_first_of(L"\"\r\n") == name.npos) continue;
            return failure(JobEnd::BadName, L"the libraries cannot be told of such a name", name);
        }
    } else {
        sources = nameSources(change.names, fs::path(base));
    }
    if (!sources.problem.empty()) {
        return failure(sources.missing ? JobEnd::NoSource : JobEnd::BadName, sources.problem, sources.about);
    }
    const bool zip = row->bit == kind::kZip;
    if (JobResult refused = unusable(creatingBit(*row), zip ? kZipLibrary : row->library); !refused.done()) {
        return refused;
    }
    const CurrentFolderKeeper keeper(ports_.paths);
    const Change wanted{change, *row, archive, base, owner};
    JobResult result = zip ? changeZip(wanted, sources.names, password) : changeByDriver(wanted, sources.names);
    // Nothing to do is no failure where only newer files were wanted.
    if (result.end == JobEnd::NoMember && change.action != Action::Delete) {
        if (change.sources != ArchiveChange::Sources::All) {
            result.end = JobEnd::Done;
            result.problem.clear();
            result.library.failed = result.library.nothingChosen = false;
            result.library.message.clear();
        } else {
            result.problem = L"no file is called so";
        }
    }
    return result;
}

JobResult ArchiveJobs::changeZip(const Change& change, const std::vector<std::wstring>& names,
                                 const NewPassword& password) {
    GivenPassword given;
    if (change.wanted.encrypt) {
        auto answer = password();
        if (!answer) return failure(JobEnd::NoPassword, L"there is no password, or not the same one twice");
        given.give(std::move(*answer));
    }
    NoComments comments;
    // That there was nothing to do, the last that the engine says then, is no error where only newer files were wanted,
    // and said in other words where names were given.
    KeptMessages messages;
    ZipEngine engine(
        {ports_.zipLibraries, ports_.zipProgress, comments, given, messages, ports_.drivers.files, ports_.paths});
    const std::wstring line = zipWords(change.wanted);
    const std::wstring rows = change.wanted.action == Action::Delete ? zipMemberRows(names) : zipRows(names);
    const bool good = engine
                          .run({.owner = change.owner,
                                .command = line,
                                .archive = change.archive,
                                .files = rows,
                                .baseFolder = change.base})
                          .value_or(false);
    const ZipReport& report = engine.report();
    const bool idle = report.code == zip_result::kNothingToDo;
    if (idle) messages.dropLast();
    messages.showIn(ports_.drivers.messages);
    JobResult result = judged({.code = report.code, .text = report.log, .failed = !good, .nothingChosen = idle});
    if (result.end == JobEnd::Failed && !messages.last().empty()) result.problem = messages.last();
    return result;
}

JobResult ArchiveJobs::changeByDriver(const Change& change, const std::vector<std::wstring>& names) {
    const auto made = change.row.makeDriver(ports_.drivers);
    auto* const driver = dynamic_cast<CommonDriver*>(made.get());
    if (driver == nullptr) return failure(JobEnd::Unsupported, L"archives of this kind can only be read");
    driver->setMaxFileCount(kMostFiles);
    const bool deletes = change.wanted.action == Action::Delete;
    try {
        const ListFile list(deletes ? memberRows(names) : listRows(names), driver->listCodec(), ports_.workFolder,
                            ports_.drivers.files);
        const DriverProgress progress(*driver, ports_.progress);
        std::wstring words = (change.row.bit == kind::kCab ? cabWords(change.wanted) : lhaWords(change.wanted)) + L' ' +
                             QuoteIfNeeded(change.archive);
        if (!deletes) words += L' ' + QuoteIfNeeded(AddTrailingSeparator(change.base));
        // No owner: a window of the library's would ask nothing that matters here.
        return judged(driver->runLine(nullptr, words + L' ' + list.argument()));
    } catch (const SystemError&) {
        return failure(JobEnd::BadName, L"the names cannot be told to the library");
    }
}

}  // namespace tovar
