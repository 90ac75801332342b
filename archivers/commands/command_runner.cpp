#include "archivers/commands/command_runner.h"

#include <system_error>
#include <utility>

#include "archivers/commands/change_run.h"
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

/// Empty is the current folder. A path that the system takes for none stays, and is not found later.
void makeAbsolute(std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(path.empty() ? "." : path, error);
    if (!error) path = std::move(absolute);
}

std::int32_t refuse(CommandTexts& texts, const Command* command, ReturnCode code, CommandOutput& output) {
    std::string text;
    texts.refused(command, code, text);
    output.text(text);
    return code;
}

std::int32_t change(const CommandContext& context, const CommandLanguage& language, Command& command,
                    CommandTexts& texts, CommandOutput& output) {
    if (language.change == nullptr) return refuse(texts, &command, kNotSupport, output);
    makeAbsolute(command.pack.base);
    ChangeRun run(context, command, texts, output);
    UnpackSummary summary;
    summary.code = run.run(language.change);
    if (summary.code == kOk && output.unused()) output.text("\r\n");
    return language.codeOf == nullptr ? summary.code : language.codeOf(command, summary);
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
    if (command.archive.empty()) return refuse(*texts, nullptr, kNotArcFile, output);
    makeAbsolute(command.archive);
    makeAbsolute(command.options.target);
    for (Command::Part& part : command.furtherParts) makeAbsolute(part.target);
    if (command.changes()) return change(context, language, command, *texts, output);
    const OpenResult opened = context.library.open(command.archive);
    if (opened.reader == nullptr) return refuse(*texts, &command, opened.code, output);

    if (command.prepare) command.prepare(*opened.reader);
    CommandRun run(context, command, *texts, *opened.reader, output);
    const UnpackSummary summary = run.run();
    if (summary.code == kOk && output.unused()) output.text("\r\n");
    return language.codeOf == nullptr ? summary.code : language.codeOf(command, summary);
}

}  // namespace archiver
