#pragma once
#include <map>
#include <string>
#include <vector>

#include "shell/fakes/fake_file_system.h"
#include "shell/paths.h"
#include "shell/system_paths.h"

namespace tovar::test {

/// Current folders, short names, a search path and temporary files as a test tells them; calls that change something
/// are logged.
class FakeSystemPaths final : public SystemPaths {
public:
    /// Temporary files are made in these files.
    explicit FakeSystemPaths(FakeFileSystem& files) : files_(files) {}

    wchar_t drive = L'C';
    std::map<wchar_t, std::wstring> folders = {{L'C', LR"(C:\)"}};  // the current folder of each drive
    std::map<std::wstring, std::wstring> shortNames;
    std::map<std::wstring, std::wstring> searchable;  // name -> full path
    std::wstring temp = LR"(C:\Temp\)";
    SystemErrorCode tempFolderError = 0;
    SystemErrorCode createTempFileError = 0;
    std::vector<std::wstring> log;

    [[nodiscard]] std::wstring currentFolder() const override {
        const auto found = folders.find(drive);
        return found == folders.end() ? std::wstring() : found->second;
    }
    SystemErrorCode setCurrentFolder(const std::wstring& path) override {
        log.push_back(L"setCurrentFolder " + path);
        const auto* node = files_.find(path);
        if (!node || (node->status.attributes & attribute::kFolder) == 0) return FakeFileSystem::kPathNotFound;
        if (HasDriveRoot(path)) drive = upperCase(path).front();
        folders[drive] = path;
        return 0;
    }
    SystemErrorCode setCurrentDrive(wchar_t letter) override {
        log.push_back(std::wstring(L"setCurrentDrive ") + letter);
        const wchar_t wanted = upperCase({&letter, 1}).front();
        if (!folders.contains(wanted)) return FakeFileSystem::kFileNotFound;
        drive = wanted;
        return 0;
    }
    [[nodiscard]] std::optional<std::wstring> shortPathName(const std::wstring& path) const override {
        const auto found = shortNames.find(path);
        return found == shortNames.end() ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] std::wstring searchPath(const std::wstring& name) const override {
        const auto found = searchable.find(name);
        return found == searchable.end() ? std::wstring() : found->second;
    }
    [[nodiscard]] std::wstring tempFolder() const override {
        if (tempFolderError != 0) throw SystemError(tempFolderError);
        return temp;
    }
    /// Names are VTL1.TMP, VTL2.TMP and so on.
    std::wstring createTempFile(const std::wstring& folder, const std::wstring& prefix) override {
        log.push_back(L"createTempFile " + folder);
        if (createTempFileError != 0) throw SystemError(createTempFileError);
        std::wstring path =
            AddTrailingSeparator(folder) + prefix.substr(0, 3) + std::to_wstring(++tempFiles_) + L".TMP";
        files_.addFile(path);
        return path;
    }

private:
    FakeFileSystem& files_;
    int tempFiles_ = 0;
};

}  // namespace tovar::test
