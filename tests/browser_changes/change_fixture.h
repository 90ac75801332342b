#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "browser/archive_changes.h"
#include "create/fakes/zip_fixture.h"
#include "drivers/fakes/fake_archiver_library.h"
#include "drivers/un_lha.h"
#include "drivers/un_rar.h"
#include "drivers/un_zip.h"
#include "shell/fakes/fake_system_information.h"

namespace tovar::test {

/// Agrees or declines, and remembers what it was asked.
class FakeConfirmations final : public Confirmations {
public:
    bool agrees = true;
    std::function<void()> whileAsking;
    std::vector<std::wstring> messages, captions;
    int window = 0;
    std::vector<WindowHandle> declined;

    bool ask(WindowHandle, const Confirmation& confirmation, const Work& work) override {
        messages.push_back(confirmation.message());
        captions.push_back(confirmation.progress);
        EXPECT_EQ(confirmation.yes, L"&Yes");
        EXPECT_EQ(confirmation.no, L"&No");
        if (whileAsking) whileAsking();
        if (agrees) work(&window);
        return agrees;
    }
    void decline(WindowHandle owner) noexcept override { declined.push_back(owner); }
};

class FakeFileQuestions final : public FileQuestions {
public:
    std::vector<std::wstring> answer, folders;
    std::vector<Pick> picks;
    std::vector<WindowHandle> closed;
    std::function<void()> whileAsking;

    std::vector<std::wstring> ask(WindowHandle, const std::wstring& folder, Pick pick) override {
        folders.push_back(folder);
        picks.push_back(pick);
        if (whileAsking) whileAsking();
        return answer;
    }
    void close(WindowHandle owner) noexcept override { closed.push_back(owner); }
};

struct QuietPump final : MessagePump {
    void processPending() override {}
};

/// A desktop that copies within the files of a test.
class CopyingDesktop final : public DesktopFiles {
public:
    CopyingDesktop(FakeFileSystem& files, FakeSystemPaths& system) : files_(files), system_(system) {}

    std::vector<FileOperation> operations;
    Result result;

    Result run(const FileOperation& operation) override {
        operations.push_back(operation);
        const std::wstring target = CutAtNull(operation.target);
        for (std::wstring_view rest = operation.sources; !rest.empty() && rest.front() != L'\0';) {
            const std::wstring name = CutAtNull(rest);
            copy(system_.currentFolder() + name, target + name);
            rest.remove_prefix(name.size() + 1);
        }
        return result;
    }

private:
    void copy(const std::wstring& from, const std::wstring& to) {
        const FakeFileSystem::Node* node = files_.find(from);
        if (node == nullptr) return;
        if ((node->status.attributes & attribute::kFolder) == 0) {
            files_.addFile(to, node->bytes, node->status.attributes);
            return;
        }
        files_.addFolder(to, node->status.attributes);
        std::vector<FolderEntry> entries;
        files_.listFolder(from, entries);
        for (const FolderEntry& entry : entries) {
            if (entry.name != L"." && entry.name != L"..") copy(from + L'\\' + entry.name, to + L'\\' + entry.name);
        }
    }

    FakeFileSystem& files_;
    FakeSystemPaths& system_;
};

/// An archive "C:\out\new.zip" or of another kind, shown in a browser; files to add in "C:\base"; the work folder is
/// "C:\Temp". The process stands in "C:\before".
class ChangeFixture : public ZipFixture {
protected:
    ChangeFixture() {
        files.addFolder(LR"(C:\Temp)");
        files.addFolder(LR"(C:\out)");
        workFolder.resetToTempFolder();
        library.whileRunning = [this](ZipEvents&) { noteFiles(); };
        commands.whileRunning = [this] {
            noteFiles();
            for (const std::wstring& path : filesInTemp) {
                const auto* node = files.find(path);
                if (node->bytes.find("\r\n") != node->bytes.npos) listBytes = node->bytes;
            }
        };
    }

    template <class Driver>
    void list(const std::vector<std::string>& storedNames) {
        for (const std::string& name : storedNames) commands.members.push_back({.name = name});
        driver = std::make_unique<Driver>(commands, messages, regional);
        driver->SetArcFile(archive);
        folders.build(FileNamePart(archive), driver->entries());
    }
    template <class Driver>
    void listLzh(const std::vector<std::string>& storedNames) {
        archive = LR"(C:\out\new.lzh)";
        list<Driver>(storedNames);
    }
    [[nodiscard]] ArchiveScene scene(std::wstring_view key = L"\\") {
        return {owner, *driver, archive, folders, folders.find(key).value()};
    }
    [[nodiscard]] ArchiveMember folder(std::wstring_view key) const { return {.folder = folders.find(key).value()}; }
    [[nodiscard]] static ArchiveMember file(std::uint32_t entry) { return {.folder = {}, .entry = entry}; }

    /// The lines that the library of the common convention was given.
    [[nodiscard]] std::vector<std::wstring> lines() const {
        std::vector<std::wstring> all;
        for (const std::wstring& call : commands.calls) {
            if (call.starts_with(L"run ")) all.push_back(call.substr(4));
        }
        return all;
    }
    /// All files below the work folder.
    [[nodiscard]] std::vector<std::wstring> temporaryFiles() const {
        std::vector<std::wstring> waiting{LR"(C:\Temp)"}, found;
        while (!waiting.empty()) {
            const std::wstring current = waiting.back() + L'\\';
            waiting.pop_back();
            std::vector<FolderEntry> entries;
            files.listFolder(current, entries);
            for (const FolderEntry& entry : entries) {
                if (entry.name == L"." || entry.name == L"..") continue;
                ((entry.attributes & attribute::kFolder) != 0 ? waiting : found).push_back(current + entry.name);
            }
        }
        std::ranges::sort(found);
        return found;
    }
    /// Nothing is left of a change.
    void expectClean() const {
        std::vector<FolderEntry> entries;
        files.listFolder(LR"(C:\Temp\)", entries);
        EXPECT_EQ(entries.size(), 2U) << "only . and ..";
        EXPECT_EQ(system.currentFolder(), LR"(C:\before)");
    }
    void noteFiles() {
        filesInTemp = temporaryFiles();
        currentFolder = system.currentFolder();
    }

    FakeSystemInformation information;
    RegionalSettings regional;
    QuietPump pump;
    PathOperations paths{files, system, information, messages};
    WorkFolder workFolder{paths, files, system};
    CopyingDesktop desktop{files, system};
    FileOperations operations{desktop, paths, pump};
    FakeArchiverLibrary commands;
    std::unique_ptr<ArchiveDriver> driver;
    FolderModel folders;
    FakeConfirmations confirmations;
    FakeFileQuestions questions;
    ArchiveChanges changes{{engine, confirmations, questions, operations, workFolder, paths, files, system, messages}};
    std::vector<std::wstring> filesInTemp;  ///< while a library worked
    std::wstring currentFolder;             ///< likewise
    std::string listBytes;                  ///< of the response file
};

}  // namespace tovar::test
