#pragma once
#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "shell/folder_source.h"
#include "shell/letter_case.h"

namespace tovar::test {

/// A computer in memory, with a desktop, documents and two drives. What happens on it is reported for those folders
/// only that are watched.
class FakeFolderSource final : public FolderSource {
public:
    static constexpr SystemErrorCode kNotFound = 3, kAccessDenied = 5, kNotReady = 21;

    struct Folder {
        std::vector<SubFolder> inside;
        SystemErrorCode error = 0;
    };

    FakeFolderSource() {
        folders_[LR"(C:\)"];
        folders_[LR"(D:\)"].error = kNotReady;
        addFolder(LR"(C:\users\me\Desktop)");
        addFolder(LR"(C:\users\me\Documents)");
        addFolder(LR"(C:\users\me\Desktop\on desk)");
    }

    // What happens on the computer.
    void addFolder(const std::wstring& path, bool hidden = false) {
        const std::size_t end = path.rfind(L'\\');
        const std::wstring parent = end <= 2 ? path.substr(0, 3) : path.substr(0, end);
        if (folders_.contains(path)) return;
        if (!folders_.contains(parent)) addFolder(parent);
        folders_[path];
        if (!hidden) put(parent, {path.substr(end + 1), false, false, ++clock_});
        touch(parent);
    }
    void removeFolder(const std::wstring& path) {
        const std::wstring parent = parentOf(path), name = path.substr(path.rfind(L'\\') + 1);
        std::erase_if(folders_[parent].inside, [&](const SubFolder& each) { return each.name == name; });
        std::erase_if(folders_,
                      [&](const auto& each) { return each.first == path || each.first.starts_with(path + L'\\'); });
        touch(path);
        touch(parent);
    }
    void renameFolder(const std::wstring& path, const std::wstring& name) {
        const std::wstring parent = parentOf(path), old = path.substr(path.rfind(L'\\') + 1);
        const std::wstring now = path.substr(0, path.rfind(L'\\') + 1) + name;
        auto& inside = folders_[parent].inside;
        const auto found =
            std::find_if(inside.begin(), inside.end(), [&](const SubFolder& each) { return each.name == old; });
        SubFolder renamed = *found;
        inside.erase(found);
        renamed.name = name;
        put(parent, renamed);
        std::map<std::wstring, Folder> moved;
        for (const auto& [each, folder] : folders_) {
            const bool inIt = each == path || each.starts_with(path + L'\\');
            moved[inIt ? now + each.substr(path.size()) : each] = folder;
        }
        folders_ = std::move(moved);
        touch(parent);
    }
    Folder& folder(const std::wstring& path) { return folders_[path]; }
    void touch(const std::wstring& path) {
        for (const auto& [key, watched] : watched_) {
            if (watched == path) changed_.insert(key);
        }
    }
    void setDrives(std::vector<FolderPlace> drives) {
        drivesNow = std::move(drives);
        if (driveKey_ != 0) changed_.insert(driveKey_);
    }

    [[nodiscard]] std::vector<std::wstring> watchedPaths() const {
        std::vector<std::wstring> paths;
        for (const auto& [key, path] : watched_) paths.push_back(path);
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    FolderPlace documentsPlace{L"My Documents", LR"(C:\users\me\Documents)", 11};
    std::vector<FolderPlace> drivesNow{{L"(C:)", LR"(C:\)", 13}, {L"(D:)", LR"(D:\)", 14}};
    std::vector<std::wstring> listed, asked;  ///< paths, in the order of the calls
    bool canWatch = true;
    std::set<std::wstring> slow;  ///< roots of all that answers late only

    /// The answers to all open questions come in.
    void answer() {
        for (const auto& [key, path] : std::exchange(open_, {})) late_.push_back({key, look(path)});
    }
    [[nodiscard]] std::vector<std::wstring> open() const {
        std::vector<std::wstring> paths;
        for (const auto& [key, path] : open_) paths.push_back(path);
        return paths;
    }

    FolderPlace desktop() override { return {L"Desktop", LR"(C:\users\me\Desktop)", 10}; }
    FolderPlace documents() override { return documentsPlace; }
    FolderPlace computer() override { return {L"My Computer", L"", 12}; }
    std::vector<FolderPlace> drives() override { return drivesNow; }
    bool isSlow(const std::wstring& path) override {
        return std::any_of(slow.begin(), slow.end(), [&](const std::wstring& root) { return path.starts_with(root); });
    }
    std::optional<FolderLook> lookInto(FolderWatchKey key, const std::wstring& path) override {
        watchFolder(key, path);
        listed.push_back(path);
        if (!isSlow(path)) return look(path);
        open_[key] = path;
        return std::nullopt;
    }
    std::vector<LateLook> takeLate() override { return std::exchange(late_, {}); }
    bool mayHaveFolders(const std::wstring& path) override {
        asked.push_back(path);
        const auto found = folders_.find(path);
        return found != folders_.end() && (found->second.error == kNotReady || !found->second.inside.empty());
    }
    bool isFolder(const std::wstring& path) override { return isSlow(path) || isFolderNow(path); }
    bool isFolderNow(const std::wstring& path) const {
        auto found = folders_.find(path);
        if (found == folders_.end()) {
            const auto isIt = [&](const auto& each) { return foldCase(each.first) == foldCase(path); };
            found = std::find_if(folders_.begin(), folders_.end(), isIt);
        }
        return found != folders_.end() && found->second.error != kNotReady;
    }
    void watchFolder(FolderWatchKey key, const std::wstring& path) override {
        if (canWatch) watched_[key] = path;
    }
    void watchDrives(FolderWatchKey key) override { driveKey_ = key; }
    void unwatch(FolderWatchKey key) override {
        watched_.erase(key);
        open_.erase(key);
        std::erase_if(late_, [&](const LateLook& each) { return each.key == key; });
        if (driveKey_ == key) driveKey_ = 0;
    }
    std::vector<FolderWatchKey> takeChanges() override {
        std::vector<FolderWatchKey> changed(changed_.begin(), changed_.end());
        changed_.clear();
        return changed;
    }

private:
    [[nodiscard]] FolderLook look(const std::wstring& path) const {
        const auto found = folders_.find(path);
        if (found == folders_.end()) return {kNotFound, isFolderNow(path), {}};
        if (found->second.error != 0) return {found->second.error, isFolderNow(path), {}};
        return {0, true, found->second.inside};
    }
    static std::wstring parentOf(const std::wstring& path) {
        const std::size_t end = path.rfind(L'\\');
        return end <= 2 ? path.substr(0, 3) : path.substr(0, end);
    }
    void put(const std::wstring& parent, const SubFolder& folder) {
        auto& inside = folders_[parent].inside;
        inside.insert(
            std::upper_bound(inside.begin(), inside.end(), folder,
                             [](const SubFolder& left, const SubFolder& right) { return left.name < right.name; }),
            folder);
    }

    std::map<std::wstring, Folder> folders_;
    std::map<FolderWatchKey, std::wstring> watched_;
    std::set<FolderWatchKey> changed_;
    std::map<FolderWatchKey, std::wstring> open_;
    std::vector<LateLook> late_;
    FolderWatchKey driveKey_ = 0;
    std::uint64_t clock_ = 1000;
};

}  // namespace tovar::test
