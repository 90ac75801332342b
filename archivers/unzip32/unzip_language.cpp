#include "archivers/unzip32/unzip_language.h"

#include <algorithm>
#include <span>

#include "archivers/commands/command_arguments.h"
#include "archivers/commands/command_words.h"
#include "archivers/unzip32/unzip_texts.h"

namespace archiver {

namespace {

using Action = Command::Action;

/// Brackets are classes here, as in the patterns of the program that this language comes from.
constexpr ArgumentRules kArguments{.patterns = {.classes = true}, .extension = ".zip"};

/// What the words in front of the archive have said so far.
struct Settings {
    Command& command;
    bool overwrite = false;
    bool never = false;
};

/// A command, by its whole word without the hyphen.
struct CommandRow {
    std::string_view word;
    Action action;
    UnZipForm form = UnZipForm::kTable;
    bool printNames = false;
};
constexpr CommandRow kCommands[] = {
    {"x", Action::kUnpack},
    {"xv", Action::kUnpack},
    {"l", Action::kList, UnZipForm::kTable},
    {"lv", Action::kList, UnZipForm::kShort},
    {"v", Action::kListVerbose, UnZipForm::kVerbose},
    {"t", Action::kTest},
    {"c", Action::kPrint, UnZipForm::kTable, true},
    {"p", Action::kPrint},
    {"z", Action::kComment},
    {"Z", Action::kComment},
};

/// An option, by its whole word without its hyphens.
struct OptionRow {
    std::string_view word;
    void (*apply)(Settings& settings, bool on);
};
constexpr OptionRow kOptions[] = {
    {"o", [](Settings& settings, bool on) { settings.overwrite = on; }},
    {"n", [](Settings& settings, bool on) { settings.never = on; }},
    {"j", [](Settings& settings, bool on) { settings.command.options.keepFolders = !on; }},
    {"i", [](Settings& settings, bool on) { settings.command.showProgress = on; }},
    {"s", [](Settings& settings, bool on) { settings.command.options.blanksToUnderscores = on; }},
    {"L", [](Settings& settings, bool on) { settings.command.options.lowerCaseNames = on; }},
    // Commands in their own right, but understood beside "-x" as well.
    {"u", [](Settings& settings, bool on) { settings.command.options.onlyNewer = on; }},
    {"f",
     [](Settings& settings, bool on) {
         settings.command.options.onlyNewer = on;
         settings.command.options.onlyExisting = on;
     }},
    // Case never counts. Members are unpacked as the bytes they are: few archives tell truly which of them are texts.
    {"C", [](Settings&, bool) {}},
    {"a", [](Settings&, bool) {}},
    {"U", [](Settings&, bool) {}},
    {"V", [](Settings&, bool) {}},
    {"X", [](Settings&, bool) {}},
};

bool takeCommand(std::string_view word, Command& command) {
    const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                         [word](const CommandRow& each) { return each.word == word; });
    if (row == std::end(kCommands)) return false;
    command.action = row->action;
    command.form = static_cast<int>(row->form);
    command.printNames = row->printNames;
    return true;
}

bool takeOption(std::string_view word, bool on, Settings& settings) {
    if (word.starts_with('P') && on) {
        settings.command.password = word.substr(1);
        return true;
    }
    if (word.starts_with('q')) {  // "-qq" and "-qd" are quiet as well
        settings.command.showNames = !on;
        return true;
    }
    const auto* const row = std::find_if(std::begin(kOptions), std::end(kOptions),
                                         [word](const OptionRow& each) { return each.word == word; });
    if (row == std::end(kOptions)) return false;
    row->apply(settings, on);
    return true;
}

/// @param word  with its hyphens
bool takeSwitch(std::string_view word, Settings& settings) {
    const bool on = !word.starts_with("--");
    word.remove_prefix(on ? 1 : 2);
    return (on && takeCommand(word, settings.command)) || takeOption(word, on, settings);
}

bool lists(const Command& command) { return command.action == Action::kList || command.action == Action::kListVerbose; }

}  // namespace

std::variant<Command, ReturnCode> parseUnZip(std::string_view line, const TextCodec& codec) {
    Command command;
    Settings settings{command};
    const std::vector<CommandWord> all = commandWords(line);
    std::span<const CommandWord> words = all;
    while (!words.empty() && words[0].text.starts_with('-')) {
        const std::string_view word = words[0].text;
        words = words.subspan(1);
        if (word == "--") break;  // the archive's name may begin with a hyphen
        if (!takeSwitch(word, settings)) return kCommandName;
    }
    if (settings.never) {
        command.options.existing = ExistingFiles::kKeep;
    } else if (settings.overwrite) {
        command.options.existing = ExistingFiles::kReplace;
    }
    // Callers of the first versions do not quote the archive that they list.
    if (lists(command) && !words.empty() && takeUnquotedArchive(line, words[0].offset, command.archive)) {
        return command;
    }
    const ReturnCode code = takeArguments(line, words, kArguments, codec, command);
    if (code != kOk) return code;
    return command;
}

constexpr CommandLanguage kUnZipLanguage{.parse = &parseUnZip, .texts = &unZipTexts};

}  // namespace archiver
