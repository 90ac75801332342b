#pragma once
#include <filesystem>
#include <string>

#include "drivers/extraction.h"
#include "host/console/arguments.h"
#include "host/console/console.h"
#include "host/console/console_output.h"
#include "host/console/system_services.h"

namespace tovar::host {

/// The console host's commands that make and change archives: ZIP by the zip engine, LZH and CAB by their drivers.
class Packing {
public:
    /// @param messages  takes what the zip engine says
    Packing(ConsoleOutput& output, SystemServices& system, MessageBoxes& messages)
        : output_(output), system_(system), messages_(messages) {}

    ExitCode run(const Arguments& arguments);

private:
    /// One run: what is changed, and what of it is the user's business.
    struct Job {
        const Arguments& arguments;
        const KindRow& row;
        std::wstring archive;  ///< full path
        std::wstring name;     ///< as given
        std::wstring base;     ///< the current folder, which names are relative to
    };

    /// Why a kind of archives cannot do what is wanted; empty when it can.
    [[nodiscard]] static std::wstring refusalOf(const Arguments& arguments, const KindRow& row);
    ExitCode refuse(const std::wstring& text, ExitCode code);
    ExitCode begin(const Job& job);
    ExitCode changeZip(const Job& job, const std::vector<std::wstring>& names);
    ExitCode changeByDriver(const Job& job, const std::vector<std::wstring>& names);
    /// Nothing to do is no failure where only newer files were wanted.
    ExitCode tell(const Job& job, ExtractResult result);

    ConsoleOutput& output_;
    SystemServices& system_;
    MessageBoxes& messages_;
};

}  // namespace tovar::host
