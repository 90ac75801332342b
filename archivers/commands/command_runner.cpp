#include "archivers/commands/command_runner.h"

#include "archivers/commands/command_run.h"
#include "archivers/commands/library_settings.h"

namespace archiver {

namespace {

/// What a command is that unpacks into memory.
void sendToMemory(Command& command) {
    command.action = Command::Action::kPrint;
    command.printNames = false;
    command.furtherParts.clear();
}

/// What the user has set, where the line does not say otherwise.
void applySettings(const char* library, Command& command) {
    const LibrarySettings settings = loadLibrarySettings(library);
    command.showProgress = command.showProgress && settings.showProgress;
    if (command.options.threads == 0) command.options.threads = settings.processors;
}

std::int32_t refuse(CommandTexts& texts, const Command* command, ReturnCode code, CommandOutput& output) {
    std::string text;
    texts.refused(command, code, text);
    output.text(text);
    return code;
}

}  // namespace

std::int32_t runCommand(const CommandContext& context, const CommandLanguage& language, CommandOutput& output) {
    const std::unique_ptr<CommandTexts> texts = language.texts();
    auto parsed = language.parse(context.commandLine, context.codec);
    if (const auto* const code = std::get_if<ReturnCode>(&parsed)) return refuse(*texts, nullptr, *code, output);
    auto& command = std::get<Command>(parsed);
    if (context.memory != nullptr) sendToMemory(command);
    if (command.useSettings) applySettings(context.library.title, command);
    // The current folder of this moment counts: messages that run meanwhile may change it.
    command.archive = std::filesystem::absolute(command.archive);
    command.options.target = std::filesystem::absolute(command.options.target.empty() ? "." : command.options.target);
    for (Command::Part& part : command.furtherParts) part.target = std::filesystem::absolute(part.target);
    const OpenResult opened = context.library.open(command.archive);
    if (opened.reader == nullptr) return refuse(*texts, &command, opened.code, output);

    CommandRun run(context, command, *texts, *opened.reader, output);
    const UnpackSummary summary = run.run();
    if (summary.code == kOk && output.unused()) output.text("\r\n");
    return language.codeOf == nullptr ? summary.code : language.codeOf(command, summary);
}

}  // namespace archiver
