#pragma once
#include "archivers/commands/command.h"
#include "archivers/commands/command_dialogs.h"
#include "archivers/convention/library_description.h"

namespace archiver {

/// What a command wants of its windows, by what its caller allows and its line says.
inline DialogSettings dialogSettingsOf(const CommandContext& context, const Command& command) {
    return {.owner = context.window,
            .archive = command.archive,
            .title = context.library.title,
            .showProgress = command.showProgress,
            .pumpMessages = context.pumpMessages && command.pumpMessages};
}

}  // namespace archiver
