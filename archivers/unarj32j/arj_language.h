#pragma once
#include "archivers/commands/command.h"

namespace archiver {

/// The command language of the library for ARJ: command [-switch[+|-|argument] ...] archive [folder\] [name | !list
/// ...]. The case of letters does not count. Switches stand before the archive.
///
/// Beyond its common switches, "-jb*" takes all chapters of an archive, not only the newest state, and "-v" is
/// accepted: volumes are followed in any case.
extern const CommandLanguage kArjLanguage;

}  // namespace archiver
