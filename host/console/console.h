#pragma once
#include <string>
#include <string_view>

#include "host/console/arguments.h"
#include "host/console/console_output.h"
#include "host/console/progress_line.h"
#include "host/console/system_services.h"
#include "host/console/zip_progress.h"

namespace tovar::host {

/// Tells the component's messages on the error output.
class ConsoleMessages final : public MessageBoxes {
public:
    explicit ConsoleMessages(ConsoleOutput& output) : output_(output) {}
    void show(WindowHandle owner, std::wstring_view text, std::wstring_view title, MessageIcon icon) override;

private:
    ConsoleOutput& output_;
};

/// Exit codes of the console host.
enum ExitCode { kGood = 0, kBadArchive = 1, kBadLine = 2, kNoLibrary = 3, kNoMember = 4 };
[[nodiscard]] ExitCode exitCodeOf(JobEnd end);

/// The console host's commands, on the component's own drivers.
class Console {
public:
    Console(ConsoleOutput& output, SystemServices& system) : output_(output), system_(system) {}

    /// @return the exit code: that of the first archive with which not all is well
    int run(const Arguments& arguments);

private:
    using Command = ExitCode (Console::*)(const ArchiveJobs::Opened& archive, const Arguments& arguments);

    int forEach(const Arguments& arguments, Command command);
    ExitCode list(const ArchiveJobs::Opened& archive, const Arguments& arguments);
    ExitCode test(const ArchiveJobs::Opened& archive, const Arguments& arguments);
    ExitCode extract(const ArchiveJobs::Opened& archive, const Arguments& arguments);
    void complain(const std::wstring& text);

    /// Jobs that tell how they get on in a line, where somebody looks on.
    [[nodiscard]] ArchiveJobs jobs(ProgressLine& line);

    ConsoleOutput& output_;
    SystemServices& system_;
    ZipProgress zipProgress_{output_};
};

}  // namespace tovar::host
