#include "archivers/packing/source_walk.h"

#include <algorithm>
#include <array>
#include <utility>

#include "archivers/convention/wildcard.h"
#include "archivers/formats/letter_case.h"
#include "archivers/formats/utf8.h"

namespace archiver {
namespace {

bool isPattern(std::string_view name) noexcept { return name.find_first_of("*?[") != name.npos; }

bool isEverything(std::string_view pattern) noexcept { return pattern == "*" || pattern == "*.*"; }

bool isHidden(const SourceFacts& facts) noexcept {
    return (facts.attributes & (attribute::kHidden | attribute::kSystem)) != 0;
}

std::string joined(std::string_view folder, std::string_view name) {
    std::string text(folder);
    if (!text.empty()) text += '/';
    return text.append(name);
}

/// A name without its root and without the parts that name no file. @param climbs  set when it has ".."
std::string plainName(std::string_view name, bool& climbs) {
    std::string plain;
    plain.reserve(name.size());
    while (!name.empty()) {
        const std::string_view part = name.substr(0, name.find('/'));
        name.remove_prefix(std::min(part.size() + 1, name.size()));
        if (part == "..") climbs = true;
        if (part.empty() || part == "." || part == "..") continue;
        if (!plain.empty()) plain += '/';
        plain += part;
    }
    return plain;
}

std::string folded(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const DecodedCharacter next = decodeCharacter(text);
        appendUtf8(foldCase(next.value), result);
        text.remove_prefix(next.length);
    }
    return result;
}

}  // namespace

class SourceWalk::Pattern {
public:
    explicit Pattern(std::string text)
        : everything_(isEverything(text)), set_(std::array{std::move(text)}, {PatternScope::kLastPart, true}) {}

    [[nodiscard]] bool everything() const noexcept { return everything_; }
    [[nodiscard]] bool matches(std::string_view name) { return everything_ || set_.matches(name); }

private:
    bool everything_;
    WildcardSet set_;
};

SourceWalk::SourceWalk(SourceSystem& system, const std::filesystem::path& base, WalkOptions options)
    : system_(system), plainBase_(base), base_(system.absolute(base)), options_(std::move(options)) {
    if (!options_.omit.empty()) omitted_ = key(utf8OfPath(system_.absolute(options_.omit)));
}

std::string SourceWalk::key(std::string_view name) const {
    return system_.ignoresCase() ? folded(name) : std::string(name);
}

SourceWalk::Place SourceWalk::placeOf(const std::filesystem::path& name) const {
    bool climbs = false;
    if (!name.has_root_path()) {
        std::string plain = plainName(utf8OfPath(name), climbs);
        if (climbs) return {system_.absolute(plainBase_ / name), std::move(plain)};
        return {plain.empty() ? base_ : base_ / std::filesystem::path(name).make_preferred(), std::move(plain)};
    }
    Place place{system_.absolute(name), {}};
    std::string path = utf8OfPath(place.path);
    const std::string base = utf8OfPath(base_);
    if (base.size() <= path.size() && key(path).starts_with(key(base)) &&
        (path.size() == base.size() || base.ends_with('/') || path[base.size()] == '/')) {
        path.erase(0, base.size());
        path.erase(0, path.find_first_not_of('/'));
        place.name = std::move(path);
    } else {
        place.name = plainName(utf8OfPath(name.relative_path()), climbs);
    }
    return place;
}

bool SourceWalk::add(const std::filesystem::path& name) {
    Place place = placeOf(name);
    while (place.name.ends_with('/')) place.name.pop_back();
    std::optional<SourceFacts> facts = system_.find(place.path);
    // A name with brackets is a file first, and a pattern only when no file has it.
    if (!facts && isPattern(utf8OfPath(name.filename()))) return addPattern(name.parent_path(), name.filename());
    if (!facts || facts->kind == SourceKind::kOther) return false;
    if (facts->kind == SourceKind::kFile) {
        addItem(std::move(place), *facts);
        return true;
    }
    facts->kind = SourceKind::kFolder;
    bool found = true;
    if (!place.name.empty()) addItem(place, *facts);
    if (options_.recurse) addBelow(place, nullptr, found);
    return true;
}

bool SourceWalk::addPattern(const std::filesystem::path& folder, const std::filesystem::path& pattern) {
    const Place place = placeOf(folder);
    std::optional<SourceFacts> facts = system_.find(place.path);
    if (!facts || (facts->kind != SourceKind::kFolder && facts->kind != SourceKind::kFolderLink)) return false;
    Pattern chosen(utf8OfPath(pattern));
    bool found = false;
    if (options_.recurse && chosen.everything() && !place.name.empty()) {
        // The folder itself, too: without it one that is empty would be lost.
        facts->kind = SourceKind::kFolder;
        addItem(place, *facts);
        found = options_.folderEntries;
    }
    addBelow(place, &chosen, found);
    return found;
}

void SourceWalk::addItem(Place place, const SourceFacts& facts) {
    const bool folder = facts.kind == SourceKind::kFolder;
    if (folder && !options_.folderEntries) return;
    if (!folder && !omitted_.empty() && key(utf8OfPath(place.path)) == omitted_) return;
    if (folder) place.name += '/';
    if (!seen_.insert(key(place.name)).second) return;
    items_.push_back({std::move(place.path), std::move(place.name), facts});
}

/// The folders that wait are kept in a list of their own, for a tree may be deeper than a stack.
void SourceWalk::addBelow(const Place& folder, Pattern* pattern, bool& found) {
    struct Waiting {
        Place place;
        std::optional<SourceFacts> facts;  ///< of a folder that is to become an item
    };
    std::vector<Waiting> waiting{{folder, std::nullopt}};
    while (!waiting.empty()) {
        const Waiting here = std::move(waiting.back());
        waiting.pop_back();
        if (here.facts) addItem(here.place, *here.facts);
        std::vector<ListedSource> names;
        if (system_.list(here.place.path, names) != kOk) {
            unreadable_.push_back(here.place.name);
            continue;
        }
        std::ranges::sort(
            names, {}, [](const ListedSource& each) -> const auto& { return each.name.native(); });
        const std::size_t above = waiting.size();
        for (ListedSource& each : names) {
            if (!options_.hidden && isHidden(each.facts)) continue;
            const std::string part = utf8OfPath(each.name);
            Place place{here.place.path / each.name, joined(here.place.name, part)};
            if (each.facts.kind == SourceKind::kFile) {
                if (pattern != nullptr && !pattern->matches(part)) continue;
                found = true;
                addItem(std::move(place), each.facts);
            } else if (each.facts.kind == SourceKind::kFolder && options_.recurse) {
                const bool chosen = pattern == nullptr || pattern->everything();
                if (chosen && options_.folderEntries) found = true;
                waiting.push_back({std::move(place), chosen ? std::optional(each.facts) : std::nullopt});
            }
        }
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(above), waiting.end());
    }
}

}  // namespace archiver
