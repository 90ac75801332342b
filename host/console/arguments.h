#pragma once
#include <string>
#include <vector>

namespace tovar::host {

/// What the console host was asked to do.
struct Arguments {
    enum class Command { Help, Version, List, Test, Extract, Unknown };
    enum class Existing { Skip, Overwrite, Ask };

    Command command = Command::Help;
    std::vector<std::wstring> archives;
    bool json = false;
    std::wstring problem;  ///< why the line was not understood; set with Command::Unknown

    // Of Command::Extract, which has one archive.
    std::vector<std::wstring> members;  ///< none: all
    std::wstring folder;                ///< empty: the current one
    bool flat = false;
    bool ask = false;  ///< the library may ask for passwords, and whether files are replaced
    Existing existing = Existing::Skip;
};

/// Reads a command line without the program's name; kHelpText tells its form.
[[nodiscard]] Arguments parseArguments(const std::vector<std::wstring>& words);

/// The help text, ASCII, LF at line ends.
extern const char* const kHelpText;

}  // namespace tovar::host
