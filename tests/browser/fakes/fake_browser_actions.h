#pragma once
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "browser/browser_actions.h"
#include "browser/member_exports.h"

namespace tovar::test {

/// Remembers what it was asked for.
class FakeBrowserActions final : public BrowserActions {
public:
    std::set<BrowserCommand> offered{kOpen, mnuEditExtract, mnuEditAdd, kAddFolder, kPaste, mnuEditDelete};
    std::function<void()> whileWorking;
    bool changesArchive = false;
    bool filesOnClipboard = false;

    std::vector<std::vector<ArchiveMember>> extracted, deleted;
    std::vector<std::uint32_t> opened;
    std::vector<Folder> addedTo, foldersAddedTo, pastedTo;
    std::vector<std::vector<std::wstring>> dropped;
    std::vector<WindowHandle> owners;
    std::vector<std::wstring> archives;
    int timesCancelled = 0;
    MemberExports* exporter = nullptr;

    [[nodiscard]] bool offers(BrowserCommand command) const override { return offered.contains(command); }
    void extract(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override {
        extracted.push_back(members);
        work(scene);
    }
    void openMember(const ArchiveScene& scene, std::uint32_t entry) override {
        opened.push_back(entry);
        work(scene);
    }
    bool addFiles(const ArchiveScene& scene) override {
        addedTo.push_back(scene.folder);
        work(scene);
        return changesArchive;
    }
    bool addFolder(const ArchiveScene& scene) override {
        foldersAddedTo.push_back(scene.folder);
        work(scene);
        return changesArchive;
    }
    bool addPaths(const ArchiveScene& scene, const std::vector<std::wstring>& paths) override {
        dropped.push_back(paths);
        work(scene);
        return changesArchive;
    }
    bool paste(const ArchiveScene& scene) override {
        pastedTo.push_back(scene.folder);
        work(scene);
        return changesArchive;
    }
    [[nodiscard]] bool canPaste() const override { return filesOnClipboard; }
    bool deleteMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override {
        deleted.push_back(members);
        work(scene);
        return changesArchive;
    }
    [[nodiscard]] MemberExports* exports() noexcept override { return exporter; }
    void cancel() noexcept override { ++timesCancelled; }

private:
    void work(const ArchiveScene& scene) {
        owners.push_back(scene.owner);
        archives.push_back(scene.archiveFile);
        if (whileWorking) whileWorking();
    }
};

}  // namespace tovar::test
