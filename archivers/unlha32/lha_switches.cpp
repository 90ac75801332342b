#include "archivers/unlha32/lha_switches.h"

#include <algorithm>

namespace archiver {

namespace {

char lowerLetter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// A switch with a number. Without a place for it, it has no effect here.
struct NumericSwitch {
    std::string_view name;
    int highest;
    void (*set)(LhaSwitches& switches, int value);
};

constexpr auto kIgnored = [](LhaSwitches&, int) {};

/// Longer names before those that they begin with.
constexpr NumericSwitch kNumeric[] = {
    {"jyo", 1, [](LhaSwitches& switches, int value) { switches.yesToReplace = value; }},
    {"jyc", 1, kIgnored},  // folders are made without a question
    {"jyn", 1, kIgnored},  // so are new names
    {"jyk", 1, [](LhaSwitches& switches, int value) { switches.yesToSpace = value; }},
    {"jso", 9, kIgnored},  // how files are shared, and what is told of errors
    {"jsm", 9, kIgnored},
    {"jsp", 9, kIgnored},
    {"jse", 9, kIgnored},
    {"jsf", 9, kIgnored},
    {"jsg", 9, kIgnored},
    {"jm", 4, [](LhaSwitches& switches, int value) { switches.method = value; }},
    {"jp", 1, kIgnored},  // callers give it; it changes nothing that could be seen
    {"jn", 1, [](LhaSwitches& switches, int value) { switches.onlyMissing = value; }},
    {"ga", 9, kIgnored},  // write-protected files are replaced where files are replaced at all
    {"gf", 9, kIgnored},  // finer rules for updating, like -u
    {"gm", 1, kIgnored},  // errors are told in the output, never in windows
    {"gn", 1, [](LhaSwitches& switches, int value) { switches.noDialogs = value; }},
    {"gp", 9, kIgnored},
    {"gr", 9, kIgnored},
    {"gw", 9, kIgnored},
    {"a", 2, [](LhaSwitches& switches, int value) { switches.attributes = value; }},
    {"c", 1, [](LhaSwitches& switches, int value) { switches.ignoreTimes = value; }},
    {"d", 1, [](LhaSwitches& switches, int value) { switches.wholeFolders = value; }},
    {"f", 1, [](LhaSwitches& switches, int value) { switches.ignoreSpace = value; }},
    {"h", 2, [](LhaSwitches& switches, int value) { switches.headerLevel = value; }},
    {"i", 9, kIgnored},  // names are compared whatever their case, and keep it
    {"m", 2, [](LhaSwitches& switches, int value) { switches.questions = value; }},
    {"n", 2, [](LhaSwitches& switches, int value) { switches.dialogs = value; }},
    {"p", 2, [](LhaSwitches& switches, int value) { switches.paths = value; }},
    {"r", 2, [](LhaSwitches& switches, int value) { switches.recursion = value; }},
    {"u", 9, kIgnored},
    {"x", 1, [](LhaSwitches& switches, int value) { switches.folders = value; }},
    {"y", 1, [](LhaSwitches& switches, int value) { switches.yes = value; }},
    {"+", 1, [](LhaSwitches& switches, int value) { switches.ignoreSettings = value; }},
};

/// Switches that take the rest of their word.
struct TextSwitch {
    std::string_view name;
    void (*set)(LhaSwitches& switches, std::vector<CommandWord>& arguments, CommandWord rest);
};
constexpr TextSwitch kTexts[] = {
    {"jx", [](LhaSwitches& switches, std::vector<CommandWord>&,
              CommandWord rest) { switches.excluded.push_back(std::move(rest.text)); }},
    {"gb",
     [](LhaSwitches&, std::vector<CommandWord>& arguments, CommandWord rest) { arguments.push_back(std::move(rest)); }},
    {"gl", [](LhaSwitches& switches, std::vector<CommandWord>&,
              CommandWord rest) { switches.logFile = std::move(rest.text); }},
    // A new archive is made where the old one is: only there can it take its name in one step.
    {"w", [](LhaSwitches&, std::vector<CommandWord>&, CommandWord) {}},
};

bool beginsWith(std::string_view text, std::string_view name) {
    return text.size() >= name.size() && std::equal(name.begin(), name.end(), text.begin(),
                                                    [](char one, char other) { return one == lowerLetter(other); });
}

template <class Row, std::size_t kCount>
const Row* findRow(const Row (&rows)[kCount], std::string_view text) {
    const auto* const found =
        std::find_if(rows, rows + kCount, [text](const Row& row) { return beginsWith(text, row.name); });
    return found == rows + kCount ? nullptr : found;
}

/// Takes the value in front of `text` away.
int takeValue(std::string_view& text) {
    if (text.empty() || (text[0] != '+' && text[0] != '-' && (text[0] < '0' || text[0] > '9'))) return 1;
    const char sign = text[0];
    text.remove_prefix(1);
    if (sign == '+') return 1;
    return sign == '-' ? 0 : sign - '0';
}

bool takeSwitchWord(const CommandWord& word, LhaSwitches& switches, std::vector<CommandWord>& arguments) {
    std::string_view text = std::string_view(word.text).substr(1);
    if (text.starts_with('-')) {
        if (text.size() > 2) return false;
        switches.listMark = text.size() == 2 ? text[1] : '\0';
        return true;
    }
    if (text.empty()) return false;
    while (!text.empty()) {
        if (const TextSwitch* const row = findRow(kTexts, text)) {
            CommandWord rest = word;
            rest.text = text.substr(row->name.size());
            if (rest.text.empty()) return false;
            row->set(switches, arguments, std::move(rest));
            return true;
        }
        const NumericSwitch* const row = findRow(kNumeric, text);
        if (row == nullptr) return false;
        text.remove_prefix(row->name.size());
        const int value = takeValue(text);
        if (value > row->highest) return false;
        row->set(switches, value);
    }
    return true;
}

bool isSwitch(const CommandWord& word) {
    const std::string_view text = word.text;
    return text.starts_with('-') || (text.starts_with('/') && text.find('/', 1) == std::string_view::npos);
}

}  // namespace

bool takeLhaSwitches(std::span<const CommandWord> words, LhaSwitches& switches, std::vector<CommandWord>& arguments) {
    for (const CommandWord& word : words) {
        if (!isSwitch(word)) {
            arguments.push_back(word);
        } else if (!takeSwitchWord(word, switches, arguments)) {
            return false;
        }
    }
    return true;
}

}  // namespace archiver
