#include "browser/folder_model.h"

#include <algorithm>
#include <utility>

#include "shell/letter_case.h"

namespace tovar {
namespace {

constexpr std::wstring_view kSeparator = L"\\";
constexpr std::size_t kParentCharacters = 2;

/// Calls `each` with every part between separators, also with empty ones; stops when it answers false.
template <class Each>
bool forEachPart(std::wstring_view path, std::wstring_view separators, const Each& each) {
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find_first_of(separators, start), path.size());
        if (!each(path.substr(start, end - start))) return false;
        start = end + 1;
    }
    return true;
}

/// Turns counts per group, kept one place to the right, into the groups' first places.
void accumulate(std::vector<std::uint32_t>& start) {
    for (std::size_t group = 1; group < start.size(); ++group) start[group] += start[group - 1];
}

}  // namespace

std::span<const std::uint32_t> FolderModel::Groups::of(std::uint32_t group) const {
    const std::uint32_t first = start.at(group);
    return std::span(items).subspan(first, start.at(group + std::size_t{1}) - first);
}

void FolderModel::build(std::wstring_view rootText, const EntryTable& entries, Breather* breather) {
    clear();
    FolderModel built;
    PacedWork work(breather);
    std::vector<Folder> folderOfPath;
    built.rootText_ = rootText;
    built.addFolders(entries, folderOfPath, work);
    built.groupChildren();
    built.groupFiles(entries, folderOfPath, work);
    *this = std::move(built);
}

void FolderModel::clear() noexcept {
    rootText_.clear();
    nodes_.clear();
    parents_ = {};
    children_ = {};
    files_ = {};
}

void FolderModel::addFolders(const EntryTable& entries, std::vector<Folder>& folderOfPath, PacedWork& work) {
    nodes_.intern({});
    parents_.push_back(kRoot);
    folderOfPath.reserve(entries.folderCount());
    for (std::uint32_t path = 0; path < entries.folderCount(); ++path) {
        Folder folder = kRoot;
        forEachPart(entries.folderPath(path), kSeparator, [&](std::wstring_view part) {
            if (!part.empty()) folder = addChild(folder, part);
            work.done();
            return true;
        });
        folderOfPath.push_back(folder);
    }
}

Folder FolderModel::addChild(Folder parent, std::wstring_view text) {
    scratch_.assign({static_cast<wchar_t>(parent & 0xFFFF), static_cast<wchar_t>(parent >> 16)});
    scratch_ += text;
    const Folder folder = nodes_.intern(scratch_);
    if (folder == parents_.size()) parents_.push_back(parent);
    return folder;
}

void FolderModel::groupChildren() {
    children_.start.assign(parents_.size() + 1, 0);
    children_.items.resize(parents_.size() - 1);
    for (Folder folder = 1; folder < size(); ++folder) ++children_.start[parents_[folder] + std::size_t{1}];
    accumulate(children_.start);
    std::vector<std::uint32_t> place(children_.start.begin(), children_.start.end() - 1);
    for (Folder folder = 1; folder < size(); ++folder) children_.items[place[parents_[folder]]++] = folder;
}

void FolderModel::groupFiles(const EntryTable& entries, const std::vector<Folder>& folderOfPath, PacedWork& work) {
    files_.start.assign(parents_.size() + 1, 0);
    const std::uint32_t count = entries.size();
    for (std::uint32_t entry = 0; entry < count; ++entry) {
        if (!entries.name(entry).empty()) ++files_.start[folderOfPath[entries.folder(entry)] + std::size_t{1}];
        work.done();
    }
    accumulate(files_.start);
    files_.items.resize(files_.start.back());
    std::vector<std::uint32_t> place(files_.start.begin(), files_.start.end() - 1);
    for (std::uint32_t entry = 0; entry < count; ++entry) {
        if (!entries.name(entry).empty()) files_.items[place[folderOfPath[entries.folder(entry)]]++] = entry;
        work.done();
    }
}

std::wstring_view FolderModel::text(Folder folder) const {
    const std::wstring_view node = nodes_.at(folder);
    return folder == kRoot ? std::wstring_view(rootText_) : node.substr(kParentCharacters);
}

std::wstring FolderModel::key(Folder folder) const {
    std::vector<Folder> way;
    for (Folder each = folder; each != kRoot; each = parents_.at(each)) way.push_back(each);
    std::wstring key(kSeparator);
    std::for_each(way.rbegin(), way.rend(), [&](Folder each) { key.append(text(each)).append(kSeparator); });
    return key;
}

std::optional<Folder> FolderModel::parent(Folder folder) const {
    const Folder parent = parents_.at(folder);
    return folder == kRoot ? std::nullopt : std::optional(parent);
}

std::span<const Folder> FolderModel::children(Folder folder) const { return children_.of(folder); }

std::span<const std::uint32_t> FolderModel::files(Folder folder) const { return files_.of(folder); }

std::optional<Folder> FolderModel::find(std::wstring_view key) const {
    if (size() == 0 || !key.starts_with(kSeparator) || !key.ends_with(kSeparator)) return std::nullopt;
    Folder folder = kRoot;
    const bool found = forEachPart(key.substr(1), kSeparator, [&](std::wstring_view part) {
        const auto inside = children(folder);
        const auto match = std::find_if(inside.begin(), inside.end(), [&](Folder each) { return text(each) == part; });
        if (match == inside.end()) return false;
        folder = *match;
        return true;
    });
    return found ? std::optional(folder) : std::nullopt;
}

std::optional<Folder> FolderModel::findWritten(std::wstring_view path) const {
    if (size() == 0) return std::nullopt;
    std::vector<Folder> candidates{kRoot};
    const bool found = forEachPart(path, L"\\/", [&](std::wstring_view part) {
        if (part.empty()) return true;
        const std::wstring folded = foldCase(part);
        std::vector<Folder> alike, next;
        for (const Folder folder : candidates) {
            for (const Folder child : children(folder)) {
                if (text(child) == part) {
                    alike.push_back(child);
                } else if (foldCase(text(child)) == folded) {
                    next.push_back(child);
                }
            }
        }
        alike.insert(alike.end(), next.begin(), next.end());
        candidates = std::move(alike);
        return !candidates.empty();
    });
    return found ? std::optional(candidates.front()) : std::nullopt;
}

}  // namespace tovar
