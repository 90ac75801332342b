#include "archivers/commands/command_words.h"

#include <system_error>
#include <utility>

namespace archiver {

namespace {

bool isBlank(char character) noexcept {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

bool endsWithSeparator(std::string_view word) noexcept {
    return !word.empty() && (word.back() == '\\' || word.back() == '/');
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

bool isFolderWord(std::string_view word) noexcept { return endsWithSeparator(word) || word.ends_with(':'); }

std::filesystem::path pathOf(std::string_view utf8) {
    utf8 = utf8.substr(0, utf8.find('\0'));
    return std::u8string(utf8.begin(), utf8.end());
}

std::filesystem::path folderOf(std::string_view utf8) {
    std::string text(utf8);
    if (endsWithSeparator(text)) text.back() = '/';
    std::filesystem::path folder = pathOf(text);
    // "C:\" is a drive's root, "C:" its current folder: the one separator that is not left out.
    if (!folder.has_filename() && folder.has_relative_path()) folder = folder.parent_path();
    return folder.make_preferred();
}

std::filesystem::path archiveOf(std::string_view utf8, std::string_view extension) {
    std::filesystem::path archive = pathOf(utf8);
    if (!extension.empty() && !archive.has_extension() && archive.has_filename() && !isFile(archive)) {
        archive += pathOf(extension);
    }
    return archive;
}

bool isFile(const std::filesystem::path& file) noexcept {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    return !error && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace archiver
