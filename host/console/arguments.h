#pragma once
#include <optional>
#include <string>
#include <vector>

namespace tovar::host {

/// What the console host was asked to do.
struct Arguments {
    enum class Command { Help, Version, List, Test, Extract, Create, Add, Delete, Unknown };
    enum class Existing { Skip, Overwrite, Ask };
    enum class Sources { All, Newer, NewerAndThere };  ///< the last two: than the member of that name

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

    // Of Command::Create and Command::Add, which have one archive and files and folders, and of Command::Delete, which
    // has one and members of it; all of them are in `members`, and there is at least one.
    std::optional<int> level;  ///< 0 to 9
    Sources sources = Sources::All;
    bool move = false;
    bool recurse = true;
    bool hidden = false;
    bool password = false;  ///< is asked for at the terminal

    [[nodiscard]] bool changes() const noexcept {
        return command == Command::Create || command == Command::Add || command == Command::Delete;
    }
};

/// Reads a command line without the program's name; kHelpText tells its form.
[[nodiscard]] Arguments parseArguments(const std::vector<std::wstring>& words);

/// The help text, ASCII, LF at line ends.
extern const char* const kHelpText;

}  // namespace tovar::host
