#pragma once
#include <memory>

#include "archivers/commands/command.h"

namespace archiver {

/// The words of Tar32: one member's name a line, and "TAR32 Error(0x801c): ..." with the usage for a line that is no
/// command. Lines end with CR LF.
std::unique_ptr<CommandTexts> tarTexts();

}  // namespace archiver
