#include "create/zip_engine.h"

#include <algorithm>
#include <exception>
#include <span>
#include <utility>
#include <vector>

#include "create/zip_job.h"
#include "create/zip_names.h"
#include "create/zip_options.h"
#include "create/zip_results.h"
#include "create/zip_work.h"
#include "shell/current_folder.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"

namespace tovar {
namespace {

namespace result = archiver::zip_abi::result;

constexpr std::wstring_view kTitle = L"Zip Message";
constexpr std::wstring_view kErrorTitle = L"Compression Error";
constexpr std::wstring_view kUnknownCommand = L"Unknown command";
constexpr std::wstring_view kLevelError = L"Compression Level Error";
constexpr std::wstring_view kPreprocessing = L"Preprocessing ... Wait a second!";
constexpr std::wstring_view kNoLibrary = L"InfoZip32.dll is missing, or cannot be used.";
constexpr std::wstring_view kBadNames = L"Nothing was done: these names have characters that the archive cannot take.";
constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::size_t kBadNamesShown = 5;
constexpr std::size_t kLongestPath = 65535;  ///< bytes; a library that takes less says so itself

/// @return whether a list has a line with something in it
bool hasNames(std::wstring_view list) { return list.find_first_not_of(kLineEnd) != list.npos; }

/// Texts for the library. Those that its code page cannot hold are kept for the user.
class Encoder {
public:
    explicit Encoder(const LibraryTexts& texts) : texts_(texts) {}

    std::string name(const std::wstring& text) { return taken(text, texts_.encode(text)); }
    /// Of a file or folder that does not become part of the archive: its short name does as well.
    std::string path(const std::wstring& text) { return taken(text, texts_.encodeFileName(text, kLongestPath)); }
    /// Of a file that may not be there yet: the folder's short name does as well.
    std::string newFile(const std::wstring& text) {
        if (auto whole = texts_.encodeFileName(text, kLongestPath)) return *whole;
        const std::wstring folder = ParentPath(text);
        const auto front = texts_.encodeFileName(folder, kLongestPath);
        const auto back = texts_.encode(FileNamePart(text));
        if (folder == text || !front || !back) return taken(text, std::nullopt);
        const bool ended = front->ends_with('\\') || front->ends_with('/');
        return *front + (ended ? "" : std::string(1, static_cast<char>(folder.back()))) + *back;
    }

    [[nodiscard]] bool good() const noexcept { return refused_ == 0; }
    [[nodiscard]] std::wstring complaint() const {
        std::wstring text(kBadNames);
        for (const std::wstring& each : shown_) text.append(kLineEnd).append(each);
        if (refused_ > shown_.size()) text.append(kLineEnd).append(L"...");
        return text;
    }

private:
    std::string taken(const std::wstring& text, std::optional<std::string> bytes) {
        if (bytes) return std::move(*bytes);
        if (refused_++ < kBadNamesShown) shown_.push_back(text);
        return {};
    }

    const LibraryTexts& texts_;
    std::size_t refused_ = 0;
    std::vector<std::wstring> shown_;
};

std::wstring temporaryFolder(const SystemPaths& system) {
    try {
        return CutAtNull(system.tempFolder());
    } catch (const SystemError&) {
        return {};  // the library is told not to use it anyway
    }
}

/// Hands the names to the library, as many calls as they need.
///
/// One call takes 4,000 names. The rest is not dropped: an archive from which files are missing without a word is the
/// worst that can happen to who deletes the files afterwards, and with "move" or "delete" half of the work would be
/// left undone unnoticed. Every call leaves a whole archive, so that the calls together do what one would.
/// @return the code of the run
std::int32_t runCalls(ZipLibrary& library, const ZipOptions& options, const std::string& archive,
                      std::span<const std::string> names, ZipJob& job) {
    std::int32_t idle = result::kOk;  ///< of a call that found nothing to do
    bool done = false;
    do {
        if (job.cancelled()) return result::kInterrupted;
        const std::span batch = names.first(std::min(names.size(), ZipNames::kMost));
        names = names.subspan(batch.size());
        const ZipNames list(archive, batch);
        const std::int32_t code = library.run(options.record(), list.record(), job);
        // One call that has nothing to do is not yet a failure; and the last entry may have gone, and the archive
        // with it, in a call before.
        if (code == result::kNothingToDo || (code == result::kNoArchive && done)) {
            idle = code;
            continue;
        }
        if (code != result::kOk) return code;
        done = true;
        job.onCallDone();
    } while (!names.empty());
    return done ? result::kOk : idle;
}

}  // namespace

std::optional<bool> ZipEngine::run(const ZipRequest& request) noexcept {
    if (running_) return std::nullopt;
    const ScopedFlag running(running_);
    try {
        return runCommand(request);
    } catch (const std::exception&) {
        return false;  // memory ran out; the archive is whole all the same
    }
}

std::optional<bool> ZipEngine::runCommand(const ZipRequest& request) {
    if (!hasNames(request.files)) return std::nullopt;
    ZipCommand command;
    switch (parseZipCommand(request.command, command)) {
        case ZipCommandError::UnknownCommand:
            tell(request.owner, kUnknownCommand, kTitle);
            return std::nullopt;
        case ZipCommandError::Level:
            tell(request.owner, kLevelError, kTitle);
            return std::nullopt;
        case ZipCommandError::None:
            break;
    }
    report_ = {};
    ZipLibrary* const library = ports_.libraries.get();
    if (library == nullptr) {
        report_.error = kNoLibrary;
        tell(request.owner, kNoLibrary, kErrorTitle);
        return false;
    }
    return runLibrary(request, command, *library);
}

bool ZipEngine::runLibrary(const ZipRequest& request, const ZipCommand& command, ZipLibrary& library) {
    const LibraryTexts::Use use(library.texts());
    std::wstring_view title = kErrorTitle;
    {
        // Shown before the files are counted: with many of them that takes a moment, which can be cancelled too.
        const std::unique_ptr<ArcProgress> progress = ports_.progress.show(request.owner);
        progress->SetCaption(FileNamePart(request.archive));
        progress->showFolder(request.archive);
        progress->showFile(kPreprocessing);
        const std::wstring base = AddTrailingSeparator(request.baseFolder);
        ZipJob job({ports_, request.owner, command, base, library.texts().codec(), *progress});
        const ZipWork work = gatherZipWork(command, request.files, base, ports_.files, [&] {
            progress->SetPrg1(-1, -1);
            return !job.cancelled();
        });

        Encoder encoder(library.texts());
        const std::string archive = encoder.newFile(std::wstring(request.archive));
        const ZipOptions options(command, encoder.path(std::wstring(request.baseFolder)),
                                 library.texts().encode(temporaryFolder(ports_.system)).value_or(std::string()));
        std::vector<std::string> names;
        names.reserve(work.names.size());
        for (const std::wstring& name : work.names) names.push_back(encoder.name(name));

        if (encoder.good()) {
            job.begin(work);
            const CurrentFolder current(ports_.system, request.baseFolder);
            report_.code = runCalls(library, options, archive, names, job);
            report_.error = zipResultText(report_.code);
        } else {
            report_.code = result::kParameters;
            report_.error = encoder.complaint();
            title = kTitle;
        }
        if (report_.code == result::kOk) {
            job.finish();
        } else {
            job.fail(report_.error);
        }
        report_.counts = job.counts();
        report_.log = job.log();
    }
    // The progress dialog is gone: it does not stay behind a failure's message, nor after it.
    if (!report_.error.empty()) tell(request.owner, report_.error, title);
    return report_.code == result::kOk;
}

void ZipEngine::tell(WindowHandle owner, std::wstring_view text, std::wstring_view title) {
    ports_.messages.show(owner, text, title, MessageIcon::Exclamation);
}

}  // namespace tovar
