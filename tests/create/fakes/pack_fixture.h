#pragma once
#include <map>
#include <set>
#include <string>
#include <vector>

#include "create/fakes/zip_fixture.h"
#include "create/pack_presenter.h"
#include "drivers/fakes/fake_archiver_library.h"
#include "drivers/un_cab.h"
#include "drivers/un_lha.h"
#include "shell/fakes/fake_system_information.h"

namespace tovar::test {

/// Keeps what the dialog shows.
class FakePackView final : public PackView {
public:
    std::vector<std::wstring> packers, actions, names;
    std::vector<PackLevel> levels;
    int packer = -1, action = -1, level = -1;
    bool actionEnabled = false, levelEnabled = false;
    std::map<PackOption, bool> enabled, checked;
    std::wstring archive;
    std::vector<std::wstring> log;  ///< "hide", "close" and what was asked for
    std::wstring archiveAnswer;
    std::vector<std::wstring> namesAnswer;
    std::vector<std::wstring> messagesShown;

    /// Which of the five boxes can be used, such as "01234".
    [[nodiscard]] std::string usable() const {
        std::string boxes;
        for (const auto& [option, on] : enabled) {
            if (on) boxes += static_cast<char>('0' + static_cast<int>(option));
        }
        return boxes;
    }

    [[nodiscard]] WindowHandle hWnd() const override { return nullptr; }
    void fillPackers(const std::vector<std::wstring_view>& texts) override { packers = {texts.begin(), texts.end()}; }
    void fillActions(const std::vector<std::wstring_view>& texts) override { actions = {texts.begin(), texts.end()}; }
    void fillLevels(const std::vector<PackLevel>& all) override { levels = all; }
    void selectPacker(int index) override { packer = index; }
    void selectAction(int index) override { action = index; }
    void selectLevel(int index) override { level = index; }
    void enableAction(bool on) override { actionEnabled = on; }
    void enableLevel(bool on) override { levelEnabled = on; }
    void enableOption(PackOption option, bool on) override { enabled[option] = on; }
    void checkOption(PackOption option, bool on) override { checked[option] = on; }
    void setArchive(std::wstring_view path) override { archive = path; }
    void setNames(const std::vector<std::wstring>& all) override { names = all; }
    std::wstring askArchive(const ArchiveQuestion& question) override {
        log.push_back(std::wstring(question.title) + L"; " + std::wstring(question.filter) + L"; " +
                      std::wstring(question.extension) + L"; " + question.archive);
        return archiveAnswer;
    }
    std::vector<std::wstring> askNames(const std::wstring& folder) override {
        log.push_back(L"names in " + folder);
        return namesAnswer;
    }
    void showMessages(WindowHandle, std::wstring_view text) override { messagesShown.emplace_back(text); }
    void hide() override { log.push_back(L"hide"); }
    void close() override { log.push_back(L"close"); }
};

/// The pack dialog's presenter over fakes.
class PackFixture : public ZipFixture, protected PackDrivers {
protected:
    PackFixture() {
        files.addFolder(LR"(C:\Temp)");
        files.addFolder(LR"(C:\out)");
        workFolder.resetToTempFolder();
        lhaLibrary.whileRunning = [this] { noteCall(); };
        cabLibrary.whileRunning = [this] { noteCall(); };
    }

    void load(ArchiveKind effective = kind::kCreating) {
        job.effective = effective;
        presenter.onLoad();
    }
    /// Loads, chooses and presses Ok.
    void pack(int packer, const std::vector<PackOption>& options = {}, int action = 0) {
        load();
        presenter.onPacker(packer);
        presenter.onAction(action);
        for (const PackOption option : options) presenter.onOption(option, true);
        presenter.onOk();
    }
    /// What the list file held and where the process stood during a command.
    void noteCall() {
        currentFolder = system.currentFolder();
        if (const auto* file = files.find(LR"(C:\Temp\VTL1.TMP)")) listBytes = file->bytes;
    }
    static std::vector<std::wstring> linesOf(const FakeArchiverLibrary& library) {
        std::vector<std::wstring> lines;
        for (const std::wstring& call : library.calls) {
            if (call.starts_with(L"run ")) lines.push_back(call.substr(4));
        }
        return lines;
    }

    CommonDriver& lha() override { return lhaDriver; }
    CommonDriver& cab() override { return cabDriver; }

    FakeSystemInformation information;
    RegionalSettings regional;
    PathOperations paths{files, system, information, messages};
    WorkFolder workFolder{paths, files, system};
    FakeArchiverLibrary lhaLibrary, cabLibrary;
    cUnLHA lhaDriver{lhaLibrary, messages, regional};
    cUnCab cabDriver{cabLibrary, messages, regional};
    std::wstring list = L"a.txt\r\nb.txt\r\n";
    std::wstring base = LR"(C:\base)";
    PackJob job{.owner = owner,
                .effective = kind::kCreating,
                .archiveFile = archive,
                .fileList = list,
                .baseFolder = base,
                .zip = engine,
                .drivers = *this,
                .workFolder = workFolder,
                .paths = paths,
                .files = files,
                .system = system,
                .messages = messages};
    FakePackView view;
    PackPresenter presenter{view, job};
    std::wstring currentFolder;
    std::string listBytes;
};

}  // namespace tovar::test
