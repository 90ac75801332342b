#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "create/bound_zip_library.h"
#include "front/automation/automation.h"
#include "host/console/system_services.h"
#include "recording/session.h"

namespace tovar::test {

/// Counts what it is told, and answers as a test wants.
struct CountingListener final : ProgressListener {
    std::vector<std::wstring> paths;
    std::vector<double> done, totals;
    Answer answer = Answer::GoOn;
    std::function<void()> meanwhile;

    Answer onProgress(std::wstring_view path, double reached, double total) override {
        paths.emplace_back(path);
        done.push_back(reached);
        totals.push_back(total);
        if (meanwhile) meanwhile();
        return answer;
    }
    [[nodiscard]] std::wstring failure() const override { return L"no paper"; }
};

/// The bundled libraries; loaded once, as that takes a while.
struct LoadedSystem {
    host::SystemParts parts = host::systemParts();
    std::unique_ptr<LibraryFolders> folders = systemLibraryFolders();
    std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
    LibraryFinder finder{*parts.paths, *parts.files, *folders, parts.programFolder};
    ArchiverLibraries libraries{*loader, finder, *parts.ansi, *parts.paths};
    FoundZipLibraries zipLibraries{*loader, finder, *parts.ansi, *parts.paths};
    KeptMessages shown;
    PathOperations operations{*parts.files, *parts.paths, *parts.information, shown};
    WorkFolder workFolder{operations, *parts.files, *parts.paths};

    static LoadedSystem& instance() {
        static LoadedSystem system;
        return system;
    }
};

/// The automation over the bundled libraries, in a folder of its own that is not the current one.
class AutomationFixture : public testing::Test {
protected:
    using Files = std::map<std::string, std::string>;

    AutomationFixture() : folder(recording::makeTemporaryFolder()) {
        system.workFolder.resetToTempFolder();
        write("src/a.txt", "alpha");
        write("src/docs/b c.txt", std::string(50000, 'b'));
        write("src/docs/deep/d.txt", "delta");
    }
    ~AutomationFixture() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    void write(const std::filesystem::path& name, const std::string& bytes) const {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
    [[nodiscard]] std::wstring path(const std::filesystem::path& name) const { return (folder / name).wstring(); }

    /// What lies below a folder.
    [[nodiscard]] Files below(const std::filesystem::path& name) const {
        Files files;
        for (const auto& each : std::filesystem::recursive_directory_iterator(folder / name)) {
            if (!each.is_regular_file()) continue;
            std::ifstream stream(each.path(), std::ios::binary);
            files[each.path().lexically_relative(folder / name).generic_string()] = {
                std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        }
        return files;
    }

    AutomationResult pack(const std::wstring& archive, const std::wstring& password = {}) {
        return automation.change(path(archive), path("src"), {.names = {L"a.txt", L"docs"}}, password);
    }

    std::filesystem::path folder;
    LoadedSystem& system = LoadedSystem::instance();
    std::map<ArchiveKind, KindUse> uses;
    bool working = false;
    Automation automation{{system.libraries, system.parts.regional, *system.parts.files, *system.parts.paths,
                           system.zipLibraries, system.workFolder,
                           [this](ArchiveKind bit) {
                               const auto found = uses.find(bit);
                               return found == uses.end() ? KindUse::Ready : found->second;
                           },
                           working}};
};

}  // namespace tovar::test
