#pragma once
#include "archivers/commands/command.h"

namespace archiver {

/// The command language of UnZip32: [-command] [-options] archive[.zip] [folder\] [@list | pattern ...]
///
/// Commands and options are whole words, options are turned off by a second hyphen ("--j"). Without a command members
/// are extracted.
extern const CommandLanguage kUnZipLanguage;

/// The forms of its listings, in Command::form.
enum class UnZipForm : int {
    kTable,    ///< "-l"
    kShort,    ///< "-lv"
    kVerbose,  ///< "-v"
};

/// @param line  UTF-8
std::variant<Command, ReturnCode> parseUnZip(std::string_view line, const TextCodec& codec);

}  // namespace archiver
