#pragma once
#include <string_view>
#include <variant>

#include "archivers/commands/command.h"

namespace archiver {

/// The command language of Tar32: [-]letters [what the letters take] archive [folder\] [name ...], with long options
/// anywhere. "xvfo ARC DIR" takes ARC for "f" and DIR for "o". A later word that ends in a separator is the folder of
/// the names behind it; "@file" stands for the words of the file. Files are replaced without a question.
extern const CommandLanguage kTarLanguage;

/// @param line  UTF-8
std::variant<Command, ReturnCode> parseTar(std::string_view line, const TextCodec& codec);

}  // namespace archiver
