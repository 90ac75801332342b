#include "archivers/unpacking/posix/folder_cache.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace archiver {
namespace {

constexpr std::size_t kMostKept = 32;

/// So many parts of a name are looked up and kept: an absurdly deep one costs its own length and no more.
constexpr std::size_t kLevelsKept = 8;

}  // namespace

bool isPlainPart(std::string_view part) noexcept {
    constexpr std::string_view kEndsName("/\0", 2);
    return !part.empty() && part != "." && part != ".." && part.find_first_of(kEndsName) == part.npos;
}

Descriptor openFolderAt(int above, const char* name, bool followLink) noexcept {
    const int flags = O_DIRECTORY | O_CLOEXEC | (followLink ? 0 : O_NOFOLLOW);
    Descriptor folder(::openat(above, name, O_RDONLY | flags));
#ifdef O_PATH
    // A folder that may be written and not read.
    if (!folder.isOpen() && errno == EACCES) folder = Descriptor(::openat(above, name, O_PATH | flags));
#endif
    return folder;
}

FolderCache::FolderCache(Descriptor root) : root_(std::make_shared<const Descriptor>(std::move(root))) {
    entries_.reserve(kMostKept);
}

FolderResult FolderCache::enter(std::string_view name, bool make) {
    if (name.empty()) return {root_, 0, false};
    const std::lock_guard lock(mutex_);

    // The nearest folder above it that is open.
    std::size_t known = name.size();
    SharedFolder folder = find(name);
    if (folder) return {std::move(folder), 0, false};
    for (std::size_t level = 0; level < kLevelsKept && !folder && known != 0; ++level) {
        const std::size_t separator = name.substr(0, known).rfind('/');
        known = separator == name.npos ? 0 : separator;
        if (known != 0) folder = find(name.substr(0, known));
    }
    if (!folder) known = 0, folder = root_;

    auto partsLeft = static_cast<std::size_t>(std::ranges::count(name.substr(known), '/')) + (known == 0 ? 1 : 0);
    bool made = false;
    while (known < name.size()) {
        const std::size_t start = known == 0 ? 0 : known + 1;
        const std::size_t end = std::min(name.find('/', start), name.size());
        const std::string part(name.substr(start, end - start));
        if (!isPlainPart(part)) return {nullptr, EINVAL, false};

        Descriptor next = openFolderAt(folder->number(), part.c_str(), false);
        made = false;
        if (!next.isOpen() && errno == ENOENT && make) {
            if (::mkdirat(folder->number(), part.c_str(), 0777) == 0) {
                made = true;
            } else if (errno != EEXIST) {
                return {nullptr, errno, false};
            }
            next = openFolderAt(folder->number(), part.c_str(), false);
        }
        if (!next.isOpen()) return {nullptr, errno, false};
        folder = std::make_shared<const Descriptor>(std::move(next));
        known = end;
        if (partsLeft-- <= kLevelsKept) keep(name.substr(0, known), folder);
    }
    return {std::move(folder), 0, made};
}

SharedFolder FolderCache::find(std::string_view name) noexcept {
    const auto found = std::ranges::find(entries_, name, &Entry::name);
    if (found == entries_.end()) return nullptr;
    found->used = ++clock_;
    return found->folder;
}

void FolderCache::keep(std::string_view name, const SharedFolder& folder) {
    Entry entry{std::string(name), folder, ++clock_};
    if (entries_.size() < kMostKept) {
        entries_.push_back(std::move(entry));
    } else {
        *std::ranges::min_element(entries_, {}, &Entry::used) = std::move(entry);
    }
}

}  // namespace archiver
