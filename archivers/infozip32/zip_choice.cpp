#include <algorithm>
#include <array>
#include <string_view>

#include "archivers/convention/wildcard.h"
#include "archivers/formats/letter_case.h"
#include "archivers/formats/utf8.h"
#include "archivers/infozip32/zip_run.h"

namespace archiver::infozip {

namespace result = zip_abi::result;

namespace {

struct NameKey {
    NameHash hash;
    std::size_t operator()(const std::string& name) const noexcept { return static_cast<std::size_t>(hash(name)); }
};
template <class Value>
using ByName = std::unordered_map<std::string, Value, NameKey>;

/// A name as members have it: "/" between its parts, none in front.
std::string memberName(const std::filesystem::path& name) {
    std::string text = utf8OfPath(name);
    std::ranges::replace(text, '\\', '/');
    while (text.starts_with("./")) text.erase(0, 2);
    return text;
}

std::string withoutFolders(const std::string& name) { return name.substr(name.rfind('/') + 1); }

}  // namespace

std::string ZipRun::key(std::string_view name) const {
    if (!systems_.sources.ignoresCase()) return std::string(name);
    std::string folded;
    while (!name.empty()) {
        const DecodedCharacter next = decodeCharacter(name);
        appendUtf8(foldCase(next.value), folded);
        name.remove_prefix(next.length);
    }
    return folded;
}

std::int32_t ZipRun::choose() {
    switch (task_.mode) {
        case ZipTask::Mode::kDelete:
            return chooseDeleted();
        case ZipTask::Mode::kRepair:
            for (std::size_t at = 0; at < old_.members().size(); ++at) steps_.push_back({at, Step::kNone});
            return result::kOk;
        default:
            return chooseSources();
    }
}

std::int32_t ZipRun::chooseDeleted() {
    std::vector<OldMember>& members = old_.members();
    ByName<std::vector<std::size_t>> byName;
    for (std::size_t at = 0; at < members.size(); ++at) byName[key(members[at].name)].push_back(at);
    std::vector<bool> goes(members.size(), false);
    std::vector<std::string> patterns;
    ByName<bool> seen;
    for (const std::filesystem::path& each : task_.names) {
        const std::string name = memberName(each);
        if (!seen.emplace(name, true).second) continue;
        auto at = byName.find(key(name));
        if (at == byName.end() && !name.ends_with('/')) at = byName.find(key(name + "/"));
        if (at != byName.end()) {
            for (const std::size_t member : at->second) goes[member] = true;
        } else {
            patterns.push_back(name);
        }
    }
    // Each pattern by itself, for those that choose nothing are told.
    for (const std::string& pattern : patterns) {
        bool matched = false;
        if (pattern.find_first_of("*?[") != pattern.npos) {
            WildcardSet set(std::array{pattern}, {PatternScope::kByPattern, true});
            for (std::size_t at = 0; at < members.size(); ++at) {
                if (!set.matches(members[at].name)) continue;
                matched = true;
                goes[at] = true;
            }
        }
        if (!matched) console_.warning("name not matched: ", pattern);
    }
    for (std::size_t at = 0; at < members.size(); ++at) {
        if (goes[at]) {
            deleted_.push_back(at);
        } else {
            steps_.push_back({at, Step::kNone});
        }
    }
    return deleted_.empty() ? fail(result::kNothingToDo, task_.archiveName) : result::kOk;
}

bool ZipRun::isNewer(const SourceItem& item, const OldMember& member) const {
    if (!item.facts.written || !member.written) return true;
    const std::int64_t seconds = item.facts.written->seconds;
    return (member.exactTime ? seconds : seconds & ~std::int64_t{1}) > member.written->seconds;
}

std::int32_t ZipRun::chooseSources() {
    task_.walk.omit = task_.archive;
    SourceWalk walk(systems_.sources, task_.base, task_.walk);
    ByName<bool> seen;
    for (const std::filesystem::path& each : task_.names) {
        if (!seen.emplace(utf8OfPath(each), true).second) continue;
        if (!walk.add(each)) console_.warning("name not matched: ", utf8OfPath(each));
    }
    for (const std::string& each : walk.unreadable()) {
        openFailed_ = true;
        console_.warning("could not open for reading: ", each);
    }
    items_ = std::move(walk.items());
    if (task_.junkFolders) {
        std::erase_if(items_, [](const SourceItem& each) { return each.isFolder(); });
        ByName<bool> stored;
        for (SourceItem& each : items_) each.name = withoutFolders(each.name);
        std::erase_if(items_, [&](const SourceItem& each) { return !stored.emplace(key(each.name), true).second; });
    }

    std::vector<OldMember>& members = old_.members();
    ByName<std::size_t> byName;
    for (std::size_t at = 0; at < members.size(); ++at) byName.emplace(key(members[at].name), at);
    std::vector<std::size_t> replacedBy(members.size(), Step::kNone);
    std::vector<std::size_t> added;
    for (std::size_t at = 0; at < items_.size(); ++at) {
        if (items_[at].name.size() > zip::kLargestName) {
            openFailed_ = true;
            console_.warning("could not open for reading: ", items_[at].name);
            continue;
        }
        const auto old = byName.find(key(items_[at].name));
        if (old == byName.end()) {
            if (task_.mode != ZipTask::Mode::kFreshen) added.push_back(at);
            continue;
        }
        const bool newer = task_.mode == ZipTask::Mode::kAdd || isNewer(items_[at], members[old->second]);
        if (newer) replacedBy[old->second] = at;
        passedOver_ = passedOver_ || !newer;
    }
    bool works = !added.empty();
    for (std::size_t at = 0; at < members.size(); ++at) {
        // Of several members with one name, the first is replaced and the others go with it.
        const std::size_t first = byName.find(key(members[at].name))->second;
        if (first != at && replacedBy[first] != Step::kNone) continue;
        works = works || replacedBy[at] != Step::kNone;
        steps_.push_back({at, replacedBy[at]});
    }
    for (const std::size_t each : added) steps_.push_back({Step::kNone, each});
    if (works || (task_.comment && hasOld_)) return result::kOk;
    if (openFailed_) return result::kOpen;
    const bool selects = task_.mode == ZipTask::Mode::kFreshen || task_.mode == ZipTask::Mode::kUpdate;
    if (selects && (passedOver_ || !items_.empty())) return result::kNothingToDo;
    return fail(result::kNothingToDo, task_.archiveName);
}

}  // namespace archiver::infozip
