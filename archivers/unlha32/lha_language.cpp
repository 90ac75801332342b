#include "archivers/unlha32/lha_language.h"

#include <algorithm>
#include <fstream>
#include <span>

#include "archivers/commands/command_arguments.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/command_words.h"
#include "archivers/unlha32/lha_switches.h"
#include "archivers/unlha32/lha_texts.h"
#include "archivers/unlha32/lzh_change.h"

namespace archiver {

namespace {

struct CommandRow {
    char letter;
    std::optional<Command::Action> action;  ///< none: it is not supported
    int folders = 1;                        ///< -x without the switch
    int questions = 0;                      ///< -m without the switch
    PackRequest::Mode mode = PackRequest::Mode::kAdd;
    bool move = false;
};
constexpr CommandRow kCommands[] = {
    {'x', Command::Action::kUnpack, 1, 1},
    {'e', Command::Action::kUnpack, 0, 0},
    {'p', Command::Action::kPrint},
    {'l', Command::Action::kList, 0},
    {'v', Command::Action::kListVerbose},
    {'t', Command::Action::kTest},
    {.letter = 'a', .action = Command::Action::kPack, .folders = 0},
    {.letter = 'u', .action = Command::Action::kPack, .folders = 0, .mode = PackRequest::Mode::kUpdate},
    {.letter = 'm', .action = Command::Action::kPack, .folders = 0, .move = true},
    {.letter = 'f', .action = Command::Action::kPack, .folders = 0, .mode = PackRequest::Mode::kFreshen},
    {'d', Command::Action::kDelete},
    {'s', std::nullopt},
    {'j', std::nullopt},
    {'c', std::nullopt},
    {'n', std::nullopt},
    {'y', std::nullopt},
};
constexpr char kDelete = 'd';

const CommandRow* rowOf(char letter) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    const auto* const found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [letter](const CommandRow& row) { return row.letter == letter; });
    return found == std::end(kCommands) ? nullptr : found;
}

PatternScope scopeOf(const LhaSwitches& switches) {
    if (switches.paths == 1) return PatternScope::kWholePath;
    if (switches.paths == 2 || switches.recursion == 2) return PatternScope::kFirstParts;
    return switches.recursion == 1 ? PatternScope::kFolderAndLast : PatternScope::kByPattern;
}

void setOptions(const CommandRow& row, const LhaSwitches& switches, Command& command) {
    const bool folders = switches.folders.value_or(row.folders) != 0;
    command.action = row.action.value_or(Command::Action::kUnpack);
    if (command.action == Command::Action::kList && folders) command.action = Command::Action::kListVerbose;
    command.showProgress = switches.dialogs == 0 && switches.noDialogs == 0;
    command.useSettings = switches.ignoreSettings == 0;

    UnpackOptions& options = command.options;
    options.keepFolders = folders;
    const int questions = switches.questions.value_or(row.questions);
    if (questions == 2) {
        options.existing = ExistingFiles::kNumber;
    } else if (questions == 1 || switches.yes != 0 || switches.yesToReplace != 0) {
        options.existing = ExistingFiles::kReplace;
    }
    options.onlyNewer = switches.ignoreTimes == 0;
    options.onlyMissing = switches.onlyMissing != 0;
    options.skipHiddenAndSystem = switches.attributes == 0;
    options.restoreAttributes = switches.attributes != 0;
    options.checkDiskSpace = switches.ignoreSpace == 0 && switches.yesToSpace == 0 && switches.yes == 0;
}

void setPacking(const CommandRow& row, const LhaSwitches& switches, PackRequest& pack) {
    pack.mode = row.mode;
    pack.move = row.move;
    pack.recurse = switches.recursion == 2;
    pack.searchBelow = switches.recursion == 1;
    pack.hidden = switches.attributes != 0;
    pack.folderEntries = switches.attributes == 2 && pack.recurse;
    pack.keepFolders = switches.folders.value_or(row.folders) != 0;
    pack.excluded = switches.excluded;
    pack.method = switches.method;
    pack.headerLevel = switches.headerLevel;
}

void exclude(const std::vector<std::string>& patterns, PatternRules rules, Command& command) {
    if (patterns.empty()) return;
    NameArguments names;
    for (const std::string& pattern : patterns) names.add(pattern);
    MemberFilter excluded = names.choice(rules).chosen;
    command.chosen = [chosen = std::move(command.chosen), excluded = std::move(excluded)](const Member& member) {
        return (!chosen || chosen(member)) && excluded && !excluded(member);
    };
}

std::variant<Command, ReturnCode> parse(std::string_view line, const TextCodec& codec) {
    const std::vector<CommandWord> words = commandWords(line);
    std::span<const CommandWord> rest(words);
    const CommandRow* row = rowOf('l');
    if (!rest.empty() && rest[0].text.size() == 1 && rest[0].text != "-" && rest[0].text != "/") {
        row = rowOf(rest[0].text[0]);
        if (row == nullptr) return kCommandName;
        rest = rest.subspan(1);
    }
    LhaSwitches switches;
    std::vector<CommandWord> arguments;
    if (!takeLhaSwitches(rest, switches, arguments)) return kCommandName;
    if (switches.wholeFolders != 0) {
        switches.recursion = 2;
        switches.folders = 1;
        switches.attributes = 2;
    }
    Command command;
    setOptions(*row, switches, command);
    const ArgumentRules rules{
        .patterns = {.scope = scopeOf(switches)}, .extension = ".lzh", .listMark = switches.listMark};
    const bool packs = command.action == Command::Action::kPack && row->action;
    const ReturnCode code = packs ? takePackArguments(line, arguments, rules, codec, command)
                                  : takeArguments(line, arguments, rules, codec, command);
    if (code != kOk) return code;
    const std::size_t namesFrom = arguments.size() > 1 && isFolderWord(arguments[1].text) ? 2 : 1;
    if (row->letter == kDelete && arguments.size() == namesFrom) return kNotFilename;
    if (!row->action) return kNotSupport;
    if (packs) {
        setPacking(*row, switches, command.pack);
    } else {
        exclude(switches.excluded, rules.patterns, command);
    }
    if (!switches.logFile.empty()) {
        command.log = std::filesystem::absolute(pathOf(switches.logFile));
        if (!std::ofstream(command.log, std::ios::binary | std::ios::app)) return kLogFile;
    }
    return command;
}

std::unique_ptr<CommandTexts> texts() { return std::make_unique<LhaTexts>(); }

}  // namespace

const CommandLanguage kLhaLanguage{.parse = &parse, .texts = &texts, .change = &changeLzh};

}  // namespace archiver
