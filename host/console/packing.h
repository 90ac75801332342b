#pragma once
#include <string>

#include "front/automation/archive_jobs.h"
#include "host/console/arguments.h"
#include "host/console/console.h"
#include "host/console/console_output.h"
#include "host/console/system_services.h"

namespace tovar::host {

/// The console host's commands that make and change archives: ZIP by the zip engine, LZH and CAB by their drivers.
class Packing {
public:
    Packing(ConsoleOutput& output, SystemServices& system) : output_(output), system_(system) {}

    ExitCode run(const Arguments& arguments);

private:
    /// Tells on the error output why something was not done.
    ExitCode refuse(const std::wstring& text, ExitCode code);
    ExitCode tell(const Arguments& arguments, const std::wstring& archive, const std::wstring& base,
                  const JobResult& result);

    ConsoleOutput& output_;
    SystemServices& system_;
};

}  // namespace tovar::host
