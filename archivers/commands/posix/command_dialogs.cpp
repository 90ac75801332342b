#include "archivers/commands/command_dialogs.h"

#include "archivers/commands/console_dialogs.h"
#include "archivers/commands/posix/posix_terminal.h"

namespace archiver {

WindowHandle consoleOwner() noexcept {
    static char token = 0;
    return &token;
}

std::unique_ptr<CommandDialogs> makeCommandDialogs(const DialogSettings& settings) {
    const bool asks = settings.owner == consoleOwner();
    return std::make_unique<ConsoleDialogs>(asks ? PosixTerminal::ofProcess() : nullptr);
}

}  // namespace archiver
