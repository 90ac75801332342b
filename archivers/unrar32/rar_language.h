#pragma once
#include "archivers/commands/command.h"

namespace archiver {

/// The command language of the library for RAR: command [options] archive [folder\] [pattern | @list ...], in which the
/// case of letters counts. The command is the first word, with or without "-".
///
/// Members whose file was there and was kept are counted, and a run without an error gives their number, as callers of
/// this library expect.
extern const CommandLanguage kRarLanguage;

}  // namespace archiver
