#include "archivers/tar32/tar_parser.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "archivers/commands/command_paths.h"
#include "archivers/commands/response_file.h"

namespace archiver::tar {

namespace {

using Action = Command::Action;

/// Letters that change nothing when an archive is read: its compression is recognised, and names are told always.
constexpr std::string_view kIgnoredLetters = "vVIiegSRazZBjJG";

/// A long option that is on or off; without a value it is on.
struct OptionRow {
    std::string_view name;
    void (*apply)(Command& command, PatternRules& patterns, bool on);
};
constexpr OptionRow kOptions[] = {
    {"use-directory", [](Command& command, PatternRules&, bool on) { command.options.keepFolders = on; }},
    {"display-dialog", [](Command& command, PatternRules&, bool on) { command.showProgress = on; }},
    {"message-loop", [](Command& command, PatternRules&, bool on) { command.pumpMessages = on; }},
    {"inverse-procresult", [](Command& command, PatternRules&, bool on) { command.invertCallback = on; }},
    {"confirm-overwrite",
     [](Command& command, PatternRules&, bool on) {
         command.options.existing = on ? ExistingFiles::kAsk : ExistingFiles::kReplace;
     }},
    {"check-all-path", [](Command&, PatternRules& patterns,
                          bool on) { patterns.scope = on ? PatternScope::kWholePath : PatternScope::kByPattern; }},
    // Nothing is ever written outside the target folder, and the compression is recognised.
    {"absolute-paths", [](Command&, PatternRules&, bool) {}},
    {"bzip2", [](Command&, PatternRules&, bool) {}},
};

bool endsWithSeparator(std::string_view word) { return word.ends_with('\\') || word.ends_with('/'); }

}  // namespace

ReturnCode Parser::parse() {
    command_.options.existing = ExistingFiles::kReplace;
    ReturnCode code = readWords();
    bool options = true;
    bool lettersTaken = false;
    for (std::size_t at = 0; code == kOk && at < words_.size(); ++at) {
        Word& word = words_[at];
        const bool option = options && !word.listed && word.text.starts_with('-');
        if (option && word.text == "--") {
            options = false;
        } else if (option && word.text.starts_with("--")) {
            code = takeLongOption(std::string_view(word.text).substr(2));
        } else if (option || !lettersTaken) {
            lettersTaken = true;
            code = takeLetters(std::string_view(word.text).substr(option ? 1 : 0));
        } else {
            takeArgument(std::move(word.text));
        }
    }
    if (code != kOk) return code;
    if (writes_) return kNotSupport;
    if (!actionTaken_) return kCommandName;
    if (!archiveTaken_) return kNotArcFile;
    finish();
    return kOk;
}

ReturnCode Parser::readWords() {
    const std::vector<CommandWord> words = commandWords(line_);
    for (const CommandWord& word : words) {
        if (!word.text.starts_with('@')) {
            words_.push_back({word.text});
            continue;
        }
        std::filesystem::path file = pathOf(std::string_view(word.text).substr(1));
        const bool lineEnds = !word.quoted && takeUnquotedArchive(line_, word.offset + 1, file);
        auto read = readResponseFile(file, codec_);
        if (const auto* const code = std::get_if<ReturnCode>(&read)) return *code;
        auto& listed = std::get<std::vector<std::string>>(read);
        listTaken_ = true;
        for (std::string& text : listed) words_.push_back({std::move(text), true});
        if (lineEnds) break;
    }
    return kOk;
}

ReturnCode Parser::takeLetters(std::string_view letters) {
    for (std::size_t at = 0; at < letters.size();) {
        const ReturnCode code = takeLetter(letters, at);
        if (code != kOk) return code;
    }
    return kOk;
}

ReturnCode Parser::takeLetter(std::string_view letters, std::size_t& at) {
    const char letter = letters[at++];
    switch (letter) {
        case 'x':
        case 't':
        case 'l':
        case 'p':
        case 'c':
            command_.action = letter == 'x' ? Action::kUnpack : letter == 'p' ? Action::kPrint : Action::kList;
            command_.printNames = false;
            writes_ = writes_ || letter == 'c';
            actionTaken_ = true;
            return kOk;
        case 'f':
            slots_.push_back(Slot::kArchive);
            return kOk;
        case 'o':
            slots_.push_back(Slot::kTarget);
            return kOk;
        case 'b':
        case 'N':
            slots_.push_back(Slot::kIgnored);
            return kOk;
        case 'A':
            if (at < letters.size()) ++at;
            return kOk;
        case 'z':
            while (at < letters.size() && letters[at] >= '0' && letters[at] <= '9') ++at;
            return kOk;
        default:
            return kIgnoredLetters.find(letter) == std::string_view::npos ? kCommandName : kOk;
    }
}

ReturnCode Parser::takeLongOption(std::string_view option) {
    const std::size_t equals = std::min(option.find('='), option.size());
    const std::string_view name = option.substr(0, equals);
    const bool on = equals == option.size() || option.substr(equals) != "=0";
    const auto* const row = std::find_if(std::begin(kOptions), std::end(kOptions),
                                         [name](const OptionRow& each) { return each.name == name; });
    if (row == std::end(kOptions)) return kCommandName;
    row->apply(command_, patterns_, on);
    return kOk;
}

void Parser::takeArgument(std::string text) {
    std::optional<Slot> slot;
    if (nextSlot_ < slots_.size()) {
        slot = slots_[nextSlot_++];
    } else if (!archiveTaken_) {
        slot = Slot::kArchive;
    } else if (endsWithSeparator(text)) {
        slot = Slot::kTarget;
    }
    if (!slot) {
        groups_.back().names.add(std::move(text));
    } else if (*slot == Slot::kArchive) {
        command_.archive = archiveOf(text, {});
        archiveTaken_ = !command_.archive.empty();
    } else if (*slot == Slot::kTarget) {
        if (!groups_.back().names.empty()) groups_.emplace_back();
        groups_.back().target = folderOf(text);
    }
}

void Parser::finish() {
    // A folder behind the last name has nothing to take.
    if (groups_.size() > 1 && groups_.back().names.empty()) groups_.pop_back();
    if (listTaken_ && groups_[0].names.empty()) groups_[0].names.noteList();
    bool first = true;
    for (Group& group : groups_) {
        NameArguments::Choice choice = group.names.choice(patterns_);
        if (std::exchange(first, false)) {
            command_.options.target = std::move(group.target);
            command_.chosen = std::move(choice.chosen);
            command_.namesGiven = choice.namesGiven;
        } else {
            command_.furtherParts.push_back({std::move(group.target), std::move(choice.chosen), choice.namesGiven});
        }
    }
}

}  // namespace archiver::tar
