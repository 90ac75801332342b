#include "archivers/commands/command_arguments.h"

#include <memory>

#include "archivers/commands/command_paths.h"
#include "archivers/commands/response_file.h"

namespace archiver {

ReturnCode NameArguments::take(std::string_view line, std::span<const CommandWord> words, std::size_t& at,
                               char listMark, const TextCodec& codec) {
    const CommandWord& word = words[at];
    ++at;
    if (listMark == '\0' || !word.text.starts_with(listMark)) {
        names_.push_back(word.text);
        return kOk;
    }
    std::filesystem::path file = pathOf(std::string_view(word.text).substr(1));
    if (!word.quoted && takeUnquotedArchive(line, word.offset + 1, file)) at = words.size();
    auto read = readResponseFile(file, codec);
    if (const auto* const code = std::get_if<ReturnCode>(&read)) return *code;
    auto& names = std::get<std::vector<std::string>>(read);
    names_.insert(names_.end(), std::make_move_iterator(names.begin()), std::make_move_iterator(names.end()));
    listTaken_ = true;
    return kOk;
}

NameArguments::Choice NameArguments::choice(PatternRules rules) const {
    if (names_.empty()) {
        return listTaken_ ? Choice{[](const Member&) { return false; }, true} : Choice{};
    }
    const auto set = std::make_shared<WildcardSet>(names_, rules);
    if (set->matchesAll()) return {};
    return {[set](const Member& member) { return set->matches(member.name); }, true};
}

namespace {

/// Reads the archive, the folder behind it and the names.
ReturnCode takeWords(std::string_view line, std::span<const CommandWord> words, const ArgumentRules& rules,
                     const TextCodec& codec, std::filesystem::path& archive, std::filesystem::path& folder,
                     NameArguments& names) {
    if (words.empty() || words[0].text.empty()) return kNotArcFile;
    archive = archiveOf(words[0].text, rules.extension);
    std::size_t at = 1;
    if (words.size() > 1 && isFolderWord(words[1].text)) {
        folder = folderOf(words[1].text);
        at = 2;
    }
    while (at < words.size()) {
        const ReturnCode code = names.take(line, words, at, rules.listMark, codec);
        if (code != kOk) return code;
    }
    return kOk;
}

}  // namespace

ReturnCode takeArguments(std::string_view line, std::span<const CommandWord> words, const ArgumentRules& rules,
                         const TextCodec& codec, Command& command) {
    NameArguments names;
    const ReturnCode code = takeWords(line, words, rules, codec, command.archive, command.options.target, names);
    if (code != kOk) return code;
    NameArguments::Choice choice = names.choice(rules.patterns);
    command.chosen = std::move(choice.chosen);
    command.namesGiven = choice.namesGiven;
    return kOk;
}

ReturnCode takePackArguments(std::string_view line, std::span<const CommandWord> words, const ArgumentRules& rules,
                             const TextCodec& codec, Command& command) {
    NameArguments names;
    const ReturnCode code = takeWords(line, words, rules, codec, command.archive, command.pack.base, names);
    if (code != kOk) return code;
    command.pack.names = names.names();
    command.namesGiven = !names.empty();
    return command.namesGiven && command.pack.names.empty() ? kNotFilename : kOk;
}

bool takeUnquotedArchive(std::string_view line, std::size_t offset, std::filesystem::path& archive) {
    const std::string_view rest = restOfLine(line, offset);
    if (rest.empty() || rest.find_first_of("\"\t\r\n\0", 0, 5) != std::string_view::npos ||
        rest.find(' ') == std::string_view::npos) {
        return false;
    }
    const std::filesystem::path file = pathOf(rest);
    if (!isFile(file)) return false;
    archive = file;
    return true;
}

}  // namespace archiver
