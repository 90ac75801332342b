#pragma once
#include "archivers/commands/command.h"

namespace archiver {

/// The command language of the library for cabinets: -command [-switch ...] archive [folder\] [name | @list ...]. The
/// case of letters does not count. Switches stand before the archive. Commands that make cabinets are refused with
/// kNotSupport.
extern const CommandLanguage kCabLanguage;

}  // namespace archiver
