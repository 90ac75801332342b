#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/commands/command_words.h"

namespace archiver {

/// What the switches of the library for LZH say; each starts with its value without a switch. Numeric ones are 1 when
/// they are given without a value or with "+", and 0 with "-".
struct LhaSwitches {
    int attributes = 0;            ///< -a: 0 hidden and system members are passed over, 1 and 2 attributes are restored
    int ignoreTimes = 0;           ///< -c: 1 files that are there are replaced whatever their date
    int wholeFolders = 0;          ///< -d: 1 the same as -r2 -x1 -a2
    int ignoreSpace = 0;           ///< -f: 1 the disk's free space is not looked at
    std::optional<int> questions;  ///< -m: 0 ask, 1 replace, 2 write under a new name; else as the command has it
    int dialogs = 0;               ///< -n: 0 with a progress window
    int paths = 0;                 ///< -p: what names are compared with: 0 the last part, 1 the path, 2 its first parts
    int recursion = 0;             ///< -r: 0 as many parts as the name has, 1 in every folder below, 2 first parts
    std::optional<int> folders;    ///< -x: 1 with folders, 0 without; else as the command has it
    int yes = 0;                   ///< -y: yes to every question
    int yesToReplace = 0;          ///< -jyo
    int yesToSpace = 0;            ///< -jyk
    int onlyMissing = 0;           ///< -jn: 1 only what is not there
    int noDialogs = 0;             ///< -gn
    int method = 2;                ///< -jm: 0 -lh0-, 2 -lh5-, 3 -lh6-, 4 -lh7-
    int headerLevel = 2;           ///< -h
    int ignoreSettings = 0;        ///< -+
    std::vector<std::string> excluded;  ///< -jx
    std::string logFile;                ///< -gl: what the output is added to
    char listMark = '@';                ///< "--" none, "--c" another
};

/// Parts the words behind the command into switches, which may stand anywhere, and arguments.
///
/// A switch begins with "-" or "/", and several may be joined, as in "-r2x1a1"; the case of letters does not count.
/// A word with "/" in front is an argument when it has another "/" in it: a path from the root then.
/// @param arguments  the others, with those given by -gb
/// @return false for an unknown switch or a value that it does not have
bool takeLhaSwitches(std::span<const CommandWord> words, LhaSwitches& switches, std::vector<CommandWord>& arguments);

}  // namespace archiver
