#include "drivers/extract_lines.h"

#include <algorithm>

#include "shell/paths.h"

namespace tovar {
namespace {

std::wstring replaced(std::wstring text, std::wstring_view from, std::wstring_view to) {
    if (from.empty()) return text;
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

std::wstring_view existingWord(const ExtractWords& words, ExistingFiles existing) {
    switch (existing) {
        case ExistingFiles::Overwrite:
            return words.overwrite;
        case ExistingFiles::Skip:
            return words.skip;
        case ExistingFiles::Ask:
            return words.ask;
        case ExistingFiles::AsUsual:
            break;
    }
    return {};
}

bool isSeparator(wchar_t character) { return character == L'\\' || character == L'/'; }

}  // namespace

std::wstring extractCommand(const ExtractWords& words, const ExtractOptions& options) {
    std::wstring command(words.base);
    // The other way round as well: a base that holds the flat word on its own account would lose it.
    command = options.keepFolders ? replaced(command, words.flat, words.keepFolder)
                                  : replaced(command, words.keepFolder, words.flat).append(words.flatSuffix);
    if (options.listed) command += words.listed;
    return command.append(existingWord(words, options.existing));
}

bool unpacksFlat(const ExtractWords& words) {
    return extractCommand(words, {.keepFolders = false}) != extractCommand(words, {.keepFolders = true});
}

std::wstring extractLine(const ExtractRequest& request) {
    std::wstring folder = AddTrailingSeparator(trimBlanks(request.folder));
    if (!folder.empty() && !isSeparator(folder.back())) folder += L'\\';  // "docs": a path without any separator
    return request.command + L' ' + QuoteIfNeeded(request.archive) + L' ' + QuoteIfNeeded(folder) + L' ' +
           request.members;
}

std::wstring memberArgument(std::wstring_view path) {
    if (!path.empty() && isSeparator(path.front())) path.remove_prefix(1);
    std::wstring argument(path);
    if (!argument.empty() && isSeparator(argument.back())) argument += L"*.*";
    argument = QuoteIfNeeded(argument);
    std::ranges::replace(argument, L'\\', L'/');
    return argument;
}

}  // namespace tovar
