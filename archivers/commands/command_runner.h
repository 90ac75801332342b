#pragma once
#include <cstdint>

#include "archivers/commands/command.h"
#include "archivers/convention/library_description.h"

namespace archiver {

/// Runs one command line of a language: opens the archive, does what the line commands, asks and shows its progress in
/// windows when the caller gave an owner for them, and words the output. On success there is at least one character of
/// output.
/// @return kOk or a code of the convention; what CommandLanguage::codeOf makes of it
std::int32_t runCommand(const CommandContext& context, const CommandLanguage& language, CommandOutput& output);

/// The same as a LibraryDescription wants it: `.command = &runLanguage<kLanguage>`.
template <const CommandLanguage& kLanguage>
std::int32_t runLanguage(const CommandContext& context, CommandOutput& output) {
    return runCommand(context, kLanguage, output);
}

}  // namespace archiver
