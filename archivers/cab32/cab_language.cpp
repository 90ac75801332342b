#include "archivers/cab32/cab_language.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

#include "archivers/cab32/cabinet_packing.h"
#include "archivers/cab32/expression.h"
#include "archivers/commands/command_arguments.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/command_words.h"
#include "archivers/commands/member_log.h"
#include "archivers/commands/response_file.h"
#include "archivers/commands/text_columns.h"
#include "archivers/formats/cab/cabinet_layout.h"

namespace archiver {

namespace {

constexpr std::string_view kExtension = ".cab";
constexpr char kListMark = '@';

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

struct CommandRow {
    std::string_view name;
    std::optional<Command::Action> action;  ///< none: it is not supported
};
constexpr CommandRow kCommands[] = {
    {"-x", Command::Action::kUnpack}, {"-l", Command::Action::kList}, {"-t", Command::Action::kTest},
    {"-c", Command::Action::kTest},   {"-a", Command::Action::kPack}, {"-f", std::nullopt},
};

struct CabSwitches {
    bool overwrite = false;
    bool expressions = false;
    bool lzx = false;
};

void setMethod(CabinetMethod method, CabSwitches& switches, Command& command) {
    switches.lzx = false;
    command.pack.method = static_cast<int>(method);
}

struct Switch {
    std::string_view name;
    void (*set)(CabSwitches& switches, Command& command);
};
constexpr Switch kSwitches[] = {
    {"-j", [](CabSwitches&, Command& command) { command.options.keepFolders = command.pack.keepFolders = false; }},
    {"-o", [](CabSwitches& switches, Command&) { switches.overwrite = true; }},
    {"-i", [](CabSwitches&, Command& command) { command.showProgress = false; }},
    {"-n", [](CabSwitches&, Command& command) { command.showNames = false; }},
    {"-w", [](CabSwitches& switches, Command&) { switches.expressions = true; }},
    // For packing; when unpacking, names without folders are looked for in all of them.
    {"-r", [](CabSwitches&, Command& command) { command.pack.recurse = true; }},
    // A set of cabinets is followed in any case; without a size to cut at, packing makes one cabinet.
    {"-k", [](CabSwitches&, Command&) {}},
    {"-v", [](CabSwitches&, Command&) {}},  // callers give it; its meaning is not published
    {"-mz", [](CabSwitches& switches, Command& command) { setMethod(CabinetMethod::kMsZip, switches, command); }},
    {"-mn", [](CabSwitches& switches, Command& command) { setMethod(CabinetMethod::kStored, switches, command); }},
    {"-ms", [](CabSwitches& switches, Command& command) { setMethod(CabinetMethod::kStored, switches, command); }},
    {"-ml", [](CabSwitches& switches, Command&) { switches.lzx = true; }},
};

/// "-ml:15" to "-ml:21": the window of LZX in bits.
bool isWindowSwitch(std::string_view word) {
    if (!word.starts_with("-ml:") || word.size() != 6) return false;
    const std::string_view bits = word.substr(4);
    return bits >= "15" && bits <= "21" && bits[1] >= '0' && bits[1] <= '9';
}

bool takeSwitch(std::string_view word, CabSwitches& switches, Command& command) {
    const std::string lower = lowerCase(word);
    if (isWindowSwitch(lower)) {
        switches.lzx = true;
        return true;
    }
    const auto* const found = std::find_if(std::begin(kSwitches), std::end(kSwitches),
                                           [&lower](const Switch& row) { return row.name == lower; });
    if (found == std::end(kSwitches)) return false;
    found->set(switches, command);
    return true;
}

/// The expressions behind the archive and the target; those of response files, too.
ReturnCode takeExpressions(std::span<const CommandWord> words, const TextCodec& codec, Command& command) {
    std::vector<std::string> texts;
    for (const CommandWord& word : words) {
        if (!word.text.starts_with(kListMark)) {
            texts.push_back(word.text);
            continue;
        }
        auto read = readResponseFile(pathOf(std::string_view(word.text).substr(1)), codec);
        if (const auto* const code = std::get_if<ReturnCode>(&read)) return *code;
        for (std::string& text : std::get<std::vector<std::string>>(read)) texts.push_back(std::move(text));
    }
    if (words.empty()) return kOk;
    std::vector<Expression> expressions;
    for (const std::string& text : texts) {
        std::optional<Expression> expression = Expression::compile(text);
        if (!expression) return kCommandName;
        expressions.push_back(std::move(*expression));
    }
    command.namesGiven = true;
    command.chosen = [expressions = std::move(expressions)](const Member& member) {
        const std::string_view last = lastPart(member.name);
        return std::any_of(expressions.begin(), expressions.end(),
                           [&](const Expression& each) { return each.matches(last) || each.matches(member.name); });
    };
    return kOk;
}

/// What a line packs. Hidden files are among it: there is no switch that would ask for them, and what is left out of a
/// new archive without a word is lost.
ReturnCode takeSources(std::string_view line, std::span<const CommandWord> words, const ArgumentRules& rules,
                       const TextCodec& codec, Command& command) {
    command.pack.hidden = true;
    const ReturnCode code = takePackArguments(line, words, rules, codec, command);
    for (std::string& name : command.pack.names) {
        std::replace(name.begin(), name.end(), '\\', '/');
        // The base folder itself, and not the root of a disk.
        if (name.find_first_not_of('/') == std::string::npos) name.assign(1, '.');
    }
    return code;
}

std::variant<Command, ReturnCode> parse(std::string_view line, const TextCodec& codec) {
    const std::vector<CommandWord> words = commandWords(line);
    const std::string name = words.empty() ? std::string() : lowerCase(words[0].text);
    const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                         [&name](const CommandRow& each) { return each.name == name; });
    if (row == std::end(kCommands)) return kCommandName;
    Command command;
    command.action = row->action.value_or(Command::Action::kUnpack);
    command.pack.method = static_cast<int>(CabinetMethod::kMsZip);
    CabSwitches switches;
    std::size_t at = 1;
    for (; at < words.size() && words[at].text.starts_with('-'); ++at) {
        if (!takeSwitch(words[at].text, switches, command)) return kCommandName;
    }
    if (switches.overwrite) command.options.existing = ExistingFiles::kReplace;

    const std::span<const CommandWord> arguments = std::span(words).subspan(at);
    const std::size_t namesFrom = arguments.size() > 1 && isFolderWord(arguments[1].text) ? 2 : 1;
    const std::size_t plain = switches.expressions ? std::min(namesFrom, arguments.size()) : arguments.size();
    const ArgumentRules rules{.patterns = {}, .extension = kExtension, .listMark = kListMark};
    if (command.action == Command::Action::kPack) {
        const ReturnCode code = takeSources(line, arguments, rules, codec, command);
        if (code != kOk) return code;
        // LZX is not written, and expressions do not choose files.
        if (switches.lzx || switches.expressions) return kNotSupport;
        return command;
    }
    ReturnCode code = takeArguments(line, arguments.first(plain), rules, codec, command);
    if (code == kOk && switches.expressions) code = takeExpressions(arguments.subspan(plain), codec, command);
    if (code != kOk) return code;
    if (!row->action) return kNotSupport;
    return command;
}

std::unique_ptr<CommandTexts> texts() { return std::make_unique<MemberLog>(MemberLogStyle{.checksums = false}); }

}  // namespace

const CommandLanguage kCabLanguage{.parse = &parse, .texts = &texts, .change = &changeCabinet};

}  // namespace archiver
