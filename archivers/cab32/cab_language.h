#pragma once
#include "archivers/commands/command.h"

namespace archiver {

/// The command language of the library for cabinets: -command [-switch ...] archive [folder\] [name | @list ...]. The
/// case of letters does not count. Switches stand before the archive. "-a" makes a new cabinet, MSZIP or stored; LZX
/// and self-extracting programs are refused with kNotSupport.
extern const CommandLanguage kCabLanguage;

}  // namespace archiver
