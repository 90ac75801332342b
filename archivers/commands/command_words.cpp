#include "archivers/commands/command_words.h"

#include <utility>

namespace archiver {

namespace {

bool isBlank(char character) noexcept {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

}  // namespace

std::vector<CommandWord> commandWords(std::string_view line) {
    std::vector<CommandWord> words;
    CommandWord word;
    bool inWord = false;
    bool inQuotes = false;
    const auto finish = [&] {
        if (inWord) words.push_back(std::exchange(word, {}));
        inWord = false;
    };
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char character = line[at];
        if (character == '\0' || (isBlank(character) && !inQuotes)) {
            finish();
            inQuotes = inQuotes && character != '\0';
            continue;
        }
        if (!inWord) {
            inWord = true;
            word.offset = at;
        }
        if (character == '"') {
            inQuotes = !inQuotes;
            word.quoted = true;
        } else {
            word.text.push_back(character);
        }
    }
    finish();
    return words;
}

std::string_view restOfLine(std::string_view line, std::size_t offset) noexcept {
    line.remove_prefix(offset < line.size() ? offset : line.size());
    while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
    while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
    return line;
}

bool isFolderWord(std::string_view word) noexcept {
    return word.ends_with('\\') || word.ends_with('/') || word.ends_with(':');
}

}  // namespace archiver
