#include "archivers/unrar32/rar_language.h"

#include <algorithm>
#include <span>

#include "archivers/commands/command_arguments.h"
#include "archivers/commands/command_words.h"
#include "archivers/commands/member_log.h"

namespace archiver {

namespace {

/// What the options say, until all of them are known.
struct RarOptions {
    bool yes = false;
    bool overwrite = false;
    bool keep = false;
    bool freshen = false;
    bool update = false;
    bool strictPaths = false;
    bool recursive = false;
};

struct Option {
    std::string_view name;
    void (*apply)(RarOptions& options, Command& command);
};
constexpr Option kOptions[] = {
    {"y", [](RarOptions& options, Command&) { options.yes = true; }},
    {"o", [](RarOptions& options, Command&) { options.overwrite = true, options.keep = false; }},
    {"o-", [](RarOptions& options, Command&) { options.keep = true, options.overwrite = false; }},
    {"f", [](RarOptions& options, Command&) { options.freshen = true; }},
    {"u", [](RarOptions& options, Command&) { options.update = true; }},
    {"s", [](RarOptions& options, Command&) { options.strictPaths = true; }},
    {"r", [](RarOptions& options, Command&) { options.recursive = true; }},
    {"h", [](RarOptions&, Command& command) { command.askPassword = false; }},
    {"q", [](RarOptions&, Command& command) { command.showProgress = false; }},
    // How far names are trusted. None of ours leaves the target, whatever a line says.
    {"e1", [](RarOptions&, Command&) {}},
    {"e2", [](RarOptions&, Command&) {}},
};

/// @return whether the word without its "-" is an option
bool takeOption(std::string_view word, RarOptions& options, Command& command) {
    if (word.starts_with('p')) {
        command.password = word.substr(1);
        return true;
    }
    const auto* const found = std::find_if(std::begin(kOptions), std::end(kOptions),
                                           [word](const Option& option) { return option.name == word; });
    if (found == std::end(kOptions)) return false;
    found->apply(options, command);
    return true;
}

void setExistingRules(const RarOptions& options, UnpackOptions& unpack) {
    // Callers add "-y" to their usual "-u" when a user wants files replaced: then all are, newer ones too. Alone, "-u"
    // replaces older files without a question, which is what it asks for.
    const bool replaceAll = options.yes && !options.freshen;
    unpack.onlyNewer = (options.update || options.freshen) && !replaceAll;
    unpack.onlyExisting = options.freshen;
    if (options.keep) {
        unpack.existing = ExistingFiles::kKeep;
    } else if (options.yes || options.overwrite || options.update) {
        unpack.existing = ExistingFiles::kReplace;
    }
    // One of the questions that are answered with yes.
    unpack.checkDiskSpace = !options.yes;
}

PatternScope scopeOf(const RarOptions& options) {
    if (!options.strictPaths) return PatternScope::kByPattern;
    return options.recursive ? PatternScope::kFolderAndLast : PatternScope::kWholePath;
}

struct CommandRow {
    std::string_view name;
    Command::Action action;
    bool keepFolders;
};
constexpr CommandRow kCommands[] = {
    {"x", Command::Action::kUnpack, true}, {"e", Command::Action::kUnpack, false},
    {"t", Command::Action::kTest, true},   {"p", Command::Action::kPrint, true},
    {"l", Command::Action::kList, true},   {"v", Command::Action::kListVerbose, true},
};
constexpr std::string_view kComment = "c";  // the reader knows no comments

ReturnCode takeCommand(std::string_view word, Command& command) {
    if (word.starts_with('-')) word.remove_prefix(1);
    if (word == kComment) return kNotSupport;
    const auto* const found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [word](const CommandRow& row) { return row.name == word; });
    if (found == std::end(kCommands)) return kCommandName;
    command.action = found->action;
    command.options.keepFolders = found->keepFolders;
    command.printNames = false;
    return kOk;
}

std::variant<Command, ReturnCode> parse(std::string_view line, const TextCodec& codec) {
    const std::vector<CommandWord> words = commandWords(line);
    Command command;
    ReturnCode code = words.empty() ? kCommandName : takeCommand(words[0].text, command);
    if (code != kOk) return code;
    RarOptions options;
    std::size_t at = 1;
    for (; at < words.size() && words[at].text.starts_with('-'); ++at) {
        if (words[at].text == "--") {
            ++at;
            break;
        }
        if (!takeOption(std::string_view(words[at].text).substr(1), options, command)) return kCommandName;
    }
    setExistingRules(options, command.options);
    const ArgumentRules rules{.patterns = {.scope = scopeOf(options)}, .extension = ".rar"};
    code = takeArguments(line, std::span(words).subspan(at), rules, codec, command);
    if (code != kOk) return code;
    return command;
}

std::unique_ptr<CommandTexts> texts() { return std::make_unique<MemberLog>(MemberLogStyle{}); }

std::int32_t codeOf(const Command& command, const UnpackSummary& summary) {
    constexpr std::uint64_t most = 0x7FFF;  // what is above is an error
    if (summary.code != kOk || command.action != Command::Action::kUnpack) return summary.code;
    return static_cast<std::int32_t>(std::min(summary.skipped, most));
}

}  // namespace

const CommandLanguage kRarLanguage{.parse = &parse, .texts = &texts, .codeOf = &codeOf};

}  // namespace archiver
