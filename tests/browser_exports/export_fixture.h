#pragma once
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "browser/archive_exports.h"
#include "browser_extraction/fakes/extraction_fixture.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar::test {

/// Process 26 among others; its secrets count up.
class FakeProcesses final : public Processes {
public:
    std::set<std::uint32_t> others{};
    bool hasSecrets = true;

    [[nodiscard]] std::uint32_t current() const override { return 26; }
    [[nodiscard]] bool isRunning(std::uint32_t process) const override {
        return process == 26 || others.contains(process);
    }
    [[nodiscard]] std::wstring unguessable() override {
        return hasSecrets ? std::wstring(31, L'0') + static_cast<wchar_t>(L'1' + made_++) : std::wstring();
    }

private:
    int made_ = 0;
};

// The first and second file or folder that the component makes.
inline constexpr wchar_t kFirstName[] = L"TovarEx-0000001a-00000000000000000000000000000001";
inline constexpr wchar_t kSecondName[] = L"TovarEx-0000001a-00000000000000000000000000000002";

class FakeClipboard final : public Clipboard {
public:
    std::optional<std::string> files;
    bool locked = false;

    [[nodiscard]] bool hasFiles() const override { return files.has_value(); }
    [[nodiscard]] bool open() override { return !locked; }
    void close() noexcept override {}
    bool empty() override {
        files.reset();
        return true;
    }
    bool putFiles(std::string_view block) override {
        files = block;
        return true;
    }
    [[nodiscard]] std::optional<std::string> takeFiles() override { return files; }
    /// The names of the list, a "|" behind each.
    [[nodiscard]] std::string names() const {
        std::string text = files.value_or(std::string(20, ' ')).substr(20);
        for (char& each : text) each = each == '\0' ? '|' : each;
        return text;
    }
};

class FakeClipboardWatch final : public ClipboardWatch {
public:
    std::function<void()> onChanged;

    void start(std::function<void()> changed) override { onChanged = std::move(changed); }
    void stop() noexcept override { onChanged = {}; }
};

/// An archive in a browser, with what leaves it; "C:\target" is a folder outside.
class ExportFixture : public ExtractionFixture {
protected:
    ExportFixture() { shell.files.addFolder(LR"(C:\target)"); }

    template <class Driver>
    void list(const std::vector<std::string>& storedNames) {
        for (const std::string& name : storedNames) library.members.push_back({.name = name});
        drive<Driver>().SetArcFile(archive);
        folders.build(L"a.xyz", driver->entries());
    }
    [[nodiscard]] ArchiveScene scene(std::wstring_view key = L"\\") const {
        return {owner, *driver, archive, folders, folders.find(key).value()};
    }
    [[nodiscard]] ArchiveMember folder(std::wstring_view key) const { return {.folder = folders.find(key).value()}; }
    [[nodiscard]] static ArchiveMember file(std::uint32_t entry) { return {.folder = {}, .entry = entry}; }
    /// What the library makes of its next command line.
    void unpacks(const std::vector<std::wstring>& paths) {
        library.whileRunning = [this, paths, listing = library.whileRunning] {
            listing();
            for (const std::wstring& path : paths) shell.files.addFile(path, "content");
        };
    }
    [[nodiscard]] bool isThere(const std::wstring& path) const { return shell.files.find(path) != nullptr; }
    [[nodiscard]] std::vector<std::wstring> namesIn(const std::wstring& path) const {
        std::vector<FolderEntry> entries;
        shell.files.listFolder(path + L'\\', entries);
        std::vector<std::wstring> names;
        for (const FolderEntry& entry : entries) {
            if (entry.name != L"." && entry.name != L"..") names.push_back(entry.name);
        }
        return names;
    }
    void expectClean() const {
        EXPECT_EQ(namesIn(LR"(C:\Temp)"), std::vector<std::wstring>{});
        EXPECT_EQ(namesIn(LR"(C:\target)"), std::vector<std::wstring>{});
    }

    FolderModel folders;
    FakeProcesses processes;
    OwnItems items{workFolder, shell.files, processes};
    MemberCopies::Ports copyPorts{extraction, workFolder, shell.operations, shell.files, shell.messages, items};
};

}  // namespace tovar::test
