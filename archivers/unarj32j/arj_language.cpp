#include "archivers/unarj32j/arj_language.h"

#include <algorithm>
#include <span>

#include "archivers/commands/command_arguments.h"
#include "archivers/commands/command_words.h"
#include "archivers/commands/member_log.h"
#include "archivers/formats/arj/arj_reader.h"

namespace archiver {

namespace {

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

struct CommandRow {
    std::string_view name;
    Command::Action action;
    bool keepFolders;
};
constexpr CommandRow kCommands[] = {
    {"x", Command::Action::kUnpack, true},      {"xv", Command::Action::kUnpack, true},
    {"e", Command::Action::kUnpack, false},     {"ev", Command::Action::kUnpack, false},
    {"t", Command::Action::kTest, true},        {"l", Command::Action::kList, true},
    {"v", Command::Action::kListVerbose, true}, {"lv", Command::Action::kListVerbose, true},
};

/// What the switches say, until all of them are known.
struct ArjSwitches {
    bool noDialog = false;
    bool yes = false;
    bool yesToReplace = false;
    bool wholePaths = false;
    bool anyDepth = false;
    bool allChapters = false;
    char listMark = '!';
};

/// Switches that are on or off: alone or with "+", and with "-".
struct OnOffSwitch {
    std::string_view name;
    void (*set)(ArjSwitches& switches, Command& command, bool on);
};
constexpr OnOffSwitch kOnOff[] = {
    {"i", [](ArjSwitches&, Command& command, bool on) { command.showProgress = !on; }},
    {"y", [](ArjSwitches& switches, Command&, bool on) { switches.yes = on; }},
    {"p", [](ArjSwitches& switches, Command&, bool on) { switches.wholePaths = on; }},
    {"r", [](ArjSwitches& switches, Command&, bool on) { switches.anyDepth = on; }},
    {"jyo", [](ArjSwitches& switches, Command&, bool on) { switches.yesToReplace = on; }},
    {"jyc", [](ArjSwitches&, Command&, bool) {}},  // folders are made without a question
    {"v", [](ArjSwitches&, Command&, bool) {}},    // volumes are followed in any case
};

bool takeSwitch(std::string_view word, ArjSwitches& switches, Command& command) {
    const std::string lower = lowerCase(word);
    if (lower == "++") {
        command.useSettings = false;
        return true;
    }
    if (lower == "jb*") {
        switches.allChapters = true;
        return true;
    }
    if (lower.starts_with('!') && word.size() <= 2) {
        switches.listMark = word.size() == 2 ? word[1] : '!';
        return true;
    }
    if (lower.starts_with('g')) {
        command.password = word.substr(1);
        return true;
    }
    const bool off = lower.ends_with('-');
    const std::string_view name =
        std::string_view(lower).substr(0, lower.size() - (off || lower.ends_with('+') ? 1 : 0));
    const auto* const found =
        std::find_if(std::begin(kOnOff), std::end(kOnOff), [name](const OnOffSwitch& row) { return row.name == name; });
    if (found == std::end(kOnOff)) return false;
    found->set(switches, command, !off);
    return true;
}

/// "-hb<name>" is a name that begins with the sign of switches.
bool isNameInDisguise(std::string_view word) { return lowerCase(word.substr(0, 3)) == "-hb" && word.size() > 3; }

void setOptions(const ArjSwitches& switches, Command& command) {
    if (switches.yes || switches.yesToReplace) command.options.existing = ExistingFiles::kReplace;
    command.options.checkDiskSpace = !switches.yes;  // one of the questions that are answered with yes
    if (switches.allChapters) {
        command.prepare = [](ArchiveReader& reader) {
            if (auto* const arj = dynamic_cast<ArjArchive*>(&reader)) arj->setChapters(ArjArchive::Chapters::kAll);
        };
    }
}

PatternScope scopeOf(const ArjSwitches& switches) {
    if (!switches.wholePaths) return PatternScope::kByPattern;
    return switches.anyDepth ? PatternScope::kFolderAndLast : PatternScope::kWholePath;
}

std::variant<Command, ReturnCode> parse(std::string_view line, const TextCodec& codec) {
    std::vector<CommandWord> words = commandWords(line);
    const std::string name = words.empty() ? std::string() : lowerCase(words[0].text);
    const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                         [&name](const CommandRow& each) { return each.name == name; });
    if (row == std::end(kCommands)) return kCommandName;
    Command command;
    command.action = row->action;
    command.options.keepFolders = row->keepFolders;

    ArjSwitches switches;
    std::size_t at = 1;
    for (; at < words.size() && words[at].text.starts_with('-') && !isNameInDisguise(words[at].text); ++at) {
        if (!takeSwitch(std::string_view(words[at].text).substr(1), switches, command)) return kCommandName;
    }
    for (std::size_t argument = at; argument < words.size(); ++argument) {
        if (isNameInDisguise(words[argument].text)) words[argument].text.erase(0, 3);
    }
    setOptions(switches, command);
    const ArgumentRules rules{
        .patterns = {.scope = scopeOf(switches)}, .extension = ".arj", .listMark = switches.listMark};
    const ReturnCode code = takeArguments(line, std::span(words).subspan(at), rules, codec, command);
    if (code != kOk) return code;
    return command;
}

std::unique_ptr<CommandTexts> texts() {
    return std::make_unique<MemberLog>(
        MemberLogStyle{.unpacking = "Processing archive: ", .testing = "Processing archive: "});
}

}  // namespace

const CommandLanguage kArjLanguage{.parse = &parse, .texts = &texts};

}  // namespace archiver
