#pragma once
#include <memory>
#include <string>
#include <utility>

#include "create/bound_zip_library.h"
#include "drivers/library_finder.h"
#include "front/automation/archive_jobs.h"
#include "front/kind_table.h"
#include "front/library_check.h"
#include "host/console/terminal_passwords.h"
#include "shell/work_folder.h"

namespace tovar::host {

/// What a program of ours takes from the system; win32/ and posix/ each give theirs.
struct SystemParts {
    std::unique_ptr<SystemPaths> paths;
    std::unique_ptr<FileSystem> files;
    std::unique_ptr<SystemInformation> information;
    std::unique_ptr<TextCodec> ansi;
    RegionalSettings regional;
    std::wstring programFolder;  ///< where the bundled libraries lie
    /// Owner of the libraries' questions: a hidden window, or, where there are none, anything that is not null, which
    /// lets a library ask on the terminal.
    std::shared_ptr<void> questionOwner;
    std::unique_ptr<SecretInput> secrets;  ///< for libraries that cannot ask themselves
};
[[nodiscard]] SystemParts systemParts();

/// Everything that drivers stand on, put together for a program of ours: the archiver libraries are those that the
/// component would find, with the program's own folder in place of the component's.
class SystemServices {
public:
    /// @param messages  outlives this object
    explicit SystemServices(MessageBoxes& messages, SystemParts parts = systemParts())
        : messages_(messages), parts_(std::move(parts)) {}

    [[nodiscard]] DriverServices drivers() {
        return {libraries_, messages_, parts_.regional, *parts_.files, passwords_};
    }
    /// Whether the archives of a kind can be read. Only that kind's library is loaded for the answer.
    [[nodiscard]] bool reads(const KindRow& row) { return !CheckKind(row, drivers(), operations_).empty(); }

    /// What jobs on archives stand on.
    /// @param zipProgress  outlives them, as this object does
    [[nodiscard]] JobPorts jobs(ProgressDialogs& zipProgress, ExtractProgressSink progress = {}) {
        return {.drivers = drivers(),
                .zipLibraries = zipLibraries_,
                .zipProgress = zipProgress,
                .workFolder = workFolder(),
                .paths = *parts_.paths,
                .use = [this](ArchiveKind bit) { return use(bit); },
                .progress = std::move(progress)};
    }

    [[nodiscard]] WindowHandle questionOwner() { return parts_.questionOwner.get(); }
    [[nodiscard]] TerminalPasswords& passwords() { return passwords_; }

private:
    /// The system's folder for temporary files.
    [[nodiscard]] WorkFolder& workFolder() {
        workFolder_.resetToTempFolder();
        return workFolder_;
    }

    /// Nobody switches kinds off here.
    [[nodiscard]] KindUse use(ArchiveKind bit) {
        if (bit == kind::kCreateZip) return zipLibraries_.get() != nullptr ? KindUse::Ready : KindUse::Missing;
        for (const KindRow& row : kindTable()) {
            if ((row.bit == bit || row.creationBit == bit) && reads(row)) return KindUse::Ready;
        }
        return KindUse::Missing;
    }

    MessageBoxes& messages_;
    SystemParts parts_;
    TerminalPasswords passwords_{std::move(parts_.secrets)};
    std::unique_ptr<LibraryFolders> folders_ = systemLibraryFolders();
    std::unique_ptr<ModuleLoader> loader_ = systemModuleLoader();
    LibraryFinder finder_{*parts_.paths, *parts_.files, *folders_, parts_.programFolder};
    ArchiverLibraries libraries_{*loader_, finder_, *parts_.ansi, *parts_.paths};
    FoundZipLibraries zipLibraries_{*loader_, finder_, *parts_.ansi, *parts_.paths};
    PathOperations operations_{*parts_.files, *parts_.paths, *parts_.information, messages_};
    WorkFolder workFolder_{operations_, *parts_.files, *parts_.paths};
};

}  // namespace tovar::host
