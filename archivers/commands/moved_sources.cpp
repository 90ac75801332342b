#include "archivers/commands/moved_sources.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace archiver {

namespace {

bool isSame(const std::optional<Moment>& one, const std::optional<Moment>& other) noexcept {
    if (!one || !other) return !one && !other;
    return one->seconds == other->seconds && one->nanoseconds == other->nanoseconds;
}

/// Whether nobody has written to the file since it was found.
bool isUnchanged(const MovedSource& moved, SourceSystem& system) {
    const std::optional<SourceFacts> now = system.find(moved.item->path);
    return now && now->kind == moved.item->facts.kind && now->size == moved.size &&
           isSame(now->written, moved.item->facts.written);
}

}  // namespace

void removeMoved(std::span<const MovedSource> moved, const MovedFolders& folders, SourceSystem& system,
                 PackEvents& events) {
    std::unordered_set<std::string_view> emptied;
    for (const MovedSource& each : moved) {
        std::string_view name = each.item->name;
        if (each.item->isFolder()) {
            emptied.insert(name);
            continue;
        }
        if (!isUnchanged(each, system) || !system.removeFile(each.item->path)) {
            events.warning(PackWarning::kNotRemoved, name);
            continue;
        }
        // The folders above it, until one that is known.
        while (name.find('/') != std::string_view::npos) {
            name = name.substr(0, name.find_last_of('/', name.size() - 2) + 1);
            if (name.empty() || !emptied.insert(name).second) break;
        }
    }
    // Folders stand before what is in them.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        // One that holds something else stays, and that is right.
        if (emptied.contains(folder->name)) static_cast<void>(system.removeFolder(folder->path));
    }
}

}  // namespace archiver
