#pragma once
#include <string>
#include <vector>

namespace tovar::host {

/// What the console host was asked to do.
struct Arguments {
    enum class Command { Help, Version, List, Test, Unknown };
    Command command = Command::Help;
    std::vector<std::wstring> archives;
    bool json = false;
    std::wstring problem;  ///< why the line was not understood; set with Command::Unknown
};

/// Reads a command line without the program's name: list|test [--json] [--] ARCHIVE...
[[nodiscard]] Arguments parseArguments(const std::vector<std::wstring>& words);

/// The help text, ASCII, LF at line ends.
extern const char* const kHelpText;

}  // namespace tovar::host
