#pragma once
#include <string>
#include <vector>

#include "browser/browser_actions.h"

namespace tovar::test {

/// Writes down what it is asked for, and says that the archive was changed where it can be.
class RecordedActions final : public BrowserActions {
public:
    std::wstring last;  ///< a command's word and the paths that it is for

    [[nodiscard]] bool offers(BrowserCommand) const override { return true; }
    void extract(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override {
        record(L"extract", scene, members);
    }
    void openMember(const ArchiveScene& scene, std::uint32_t entry) override {
        record(L"open", scene, {{std::nullopt, entry}});
    }
    bool addFiles(const ArchiveScene& scene) override {
        last = L"add " + scene.folders.key(scene.folder);
        return true;
    }
    bool addFolder(const ArchiveScene& scene) override { return addFiles(scene); }
    bool addPaths(const ArchiveScene& scene, const std::vector<std::wstring>&) override { return addFiles(scene); }
    bool paste(const ArchiveScene& scene) override { return addFiles(scene); }
    [[nodiscard]] bool canPaste() const override { return false; }
    bool deleteMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override {
        record(L"delete", scene, members);
        return true;
    }

private:
    void record(const wchar_t* word, const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
        last = word;
        for (const ArchiveMember& each : members) {
            last += L' ';
            last += each.folder ? scene.folders.key(*each.folder)
                                : scene.folders.key(scene.folder) + scene.driver.FileName(each.entry);
        }
    }
};

}  // namespace tovar::test
