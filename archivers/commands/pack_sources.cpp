#include "archivers/commands/pack_sources.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

#include "archivers/commands/command_paths.h"
#include "archivers/commands/text_columns.h"
#include "archivers/convention/wildcard.h"
#include "archivers/formats/letter_case.h"
#include "archivers/formats/utf8.h"
#include "archivers/packing/source_walk.h"

namespace archiver {

namespace {

/// What names are that a file system takes for one.
std::string folded(std::string_view utf8) {
    std::string result;
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        appendUtf8(foldCase(next.value), result);
        utf8.remove_prefix(next.length);
    }
    return result;
}

/// A name that is looked for in all folders is a pattern, even without "*" and "?"; a class of its first character is
/// one.
std::string searched(const std::string& name) {
    const std::size_t last = name.find_last_of("/\\") + 1;
    if (last == name.size() || name.find_first_of("*?[", last) != std::string::npos) return name;
    const std::size_t length = decodeCharacter(std::string_view(name).substr(last)).length;
    std::string pattern = name.substr(0, last);
    (((pattern += '[') += name.substr(last, length)) += ']') += name.substr(last + length);
    return pattern;
}

/// Drops all folders from the names. @return false when two files had the same last part; the first one stays
bool flatten(std::vector<SourceItem>& items) {
    std::unordered_set<std::string> names;
    bool distinct = true;
    std::erase_if(items, [&](SourceItem& item) {
        if (item.isFolder()) return true;
        item.name = std::string(lastPart(item.name));
        if (names.insert(folded(item.name)).second) return false;
        distinct = false;
        return true;
    });
    return distinct;
}

/// The walk gives hidden files only where they are named themselves. Not to take them is what the command says, and no
/// error; the user is told nevertheless, as it may not be what was meant.
void leaveHidden(std::vector<SourceItem>& items, PackEvents& events) {
    std::erase_if(items, [&](const SourceItem& item) {
        constexpr std::uint8_t kEither = attribute::kHidden | attribute::kSystem;
        if (item.isFolder() || (item.facts.attributes & kEither) == 0) return false;
        events.warning(PackWarning::kHidden, item.name);
        return true;
    });
}

}  // namespace

ReturnCode findSources(const Command& command, SourceSystem& system, PackEvents& events, std::vector<SourceItem>& items,
                       MovedFolders& folders) {
    const PackRequest& pack = command.pack;
    SourceWalk walk(system, pack.base,
                    {.recurse = pack.recurse || pack.searchBelow,
                     .hidden = pack.hidden,
                     .folderEntries = pack.folderEntries || pack.move,
                     .omit = command.archive});
    ReturnCode code = kOk;
    const auto take = [&](const std::string& name) {
        const bool found = walk.add(pathOf(pack.searchBelow && !pack.recurse ? searched(name) : name));
        if (found) return;
        events.warning(PackWarning::kNotFound, name);
        code = kNotExist;
    };
    if (pack.names.empty()) take("*.*");
    for (const std::string& name : pack.names) take(name);
    for (const std::string& folder : walk.unreadable()) {
        events.warning(PackWarning::kNotOpened, folder);
        if (code == kOk) code = kCannotRead;
    }
    items = std::move(walk.items());
    if (!pack.hidden) leaveHidden(items, events);
    if (pack.move) {
        std::ranges::copy_if(items, std::back_inserter(folders), &SourceItem::isFolder);
        if (!pack.folderEntries) std::erase_if(items, [](const SourceItem& item) { return item.isFolder(); });
    }
    if (!pack.excluded.empty()) {
        WildcardSet excluded(pack.excluded, {});
        std::erase_if(items, [&](const SourceItem& item) { return excluded.matches(item.name); });
    }
    if (!pack.keepFolders && !flatten(items) && code == kOk) code = kSameNameFile;
    return code;
}

}  // namespace archiver
