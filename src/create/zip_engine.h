#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "create/zip_command.h"
#include "create/zip_library.h"
#include "create/zip_prompts.h"
#include "drivers/password_source.h"
#include "shell/arc_progress.h"
#include "shell/file_system.h"
#include "shell/message_boxes.h"
#include "shell/system_paths.h"

namespace tovar {

/// What the zip engine reaches; all of it outlives the engine.
struct ZipPorts {
    ZipLibraries& libraries;
    ProgressDialogs& progress;
    CommentSource& comments;
    PasswordSource& passwords;
    MessageBoxes& messages;
    FileSystem& files;
    SystemPaths& system;
};

/// One zip command.
struct ZipRequest {
    WindowHandle owner = nullptr;  ///< of the windows that are shown; null = none
    /// A command (A, F, U, M, D or X) and options, such as "a -r -l9"; see ZipCommand.
    std::wstring_view command;
    std::wstring_view archive;  ///< full path
    /// Files and folders, one a line, relative to the base folder, lines separated by CR LF. For deleting: entries as
    /// the archive names them, or patterns.
    std::wstring_view files;
    std::wstring_view
        baseFolder;  ///< with or without a separator at its end; the current folder while the library runs
};

/// How many entries a run has changed, as far as the library tells.
struct ZipCounts {
    std::uint64_t added = 0, updated = 0, freshened = 0, deleted = 0;
    friend bool operator==(const ZipCounts&, const ZipCounts&) = default;
};

/// What came of a run.
struct ZipReport {
    std::int32_t code = 0;  ///< of the library's last call; 0 where it was not called
    ZipCounts counts = {};
    std::wstring log = {};    ///< what the library wrote, and the sums; lines end with CR LF, the last one with nothing
    std::wstring error = {};  ///< the text that was shown; empty when there was none
};

/// Creates, changes and trims ZIP archives through the zip library. One run at a time, as the library keeps its options
/// for the whole process: libraries and dialogs let messages run, so that a second one may be asked for meanwhile.
class ZipEngine {
public:
    explicit ZipEngine(const ZipPorts& ports) : ports_(ports) {}

    /// Runs a command with the progress dialog, which is closed on return in any case; failures with a text have been
    /// shown. The current folder is as it was. Never throws.
    /// @return nullopt when nothing was run: no files, an unknown command, a bad level, or another run is going on;
    ///         otherwise whether the library reported success
    std::optional<bool> run(const ZipRequest& request) noexcept;

    [[nodiscard]] bool running() const noexcept { return running_; }

    /// Of the last run that was one.
    [[nodiscard]] const ZipReport& report() const noexcept { return report_; }

private:
    std::optional<bool> runCommand(const ZipRequest& request);
    bool runLibrary(const ZipRequest& request, const ZipCommand& command, ZipLibrary& library);
    void tell(WindowHandle owner, std::wstring_view text, std::wstring_view title);

    ZipPorts ports_;
    ZipReport report_;
    bool running_ = false;
};

}  // namespace tovar
