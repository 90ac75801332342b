#pragma once
#include <string_view>

namespace tovar {

/// What a zip command does.
enum class ZipAction { Add, Freshen, Update, Move, Delete, Repair };

/// A zip command line, taken apart.
struct ZipCommand {
    ZipAction action = ZipAction::Add;
    bool encrypt = false;          ///< -P
    bool systemAndHidden = false;  ///< -S
    bool comment = false;          ///< -C
    bool recurse = false;          ///< -R
    bool verbose = false;          ///< -V
    bool folderInfo = false;       ///< -D: names are passed with the base folder in front
    char level = '6';              ///< -L and a digit: '0' (stored) to '9'

    friend bool operator==(const ZipCommand&, const ZipCommand&) = default;
};

enum class ZipCommandError { None, UnknownCommand, Level };

/// Takes a command line apart: words between blanks, in either case. The first one is the command; of the others the
/// first two characters count, and unknown ones are left aside. Deleting and repairing have no options.
/// @param command  what was read; the defaults where there is an error
[[nodiscard]] ZipCommandError parseZipCommand(std::wstring_view line, ZipCommand& command);

}  // namespace tovar
