#pragma once
#include "archivers/commands/command.h"

namespace archiver {

/// The command language of the library for LZH: [command] [-switch ...] archive [folder\] [name | @list ...]. A line
/// without a command lists. Self-extractors, joining, comments, renaming and converting are refused with kNotSupport.
extern const CommandLanguage kLhaLanguage;

}  // namespace archiver
