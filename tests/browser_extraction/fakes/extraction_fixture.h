#pragma once
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "browser/run_extract.h"
#include "browser/unpack_presenter.h"
#include "browser_extraction/fakes/fake_progress_dialogs.h"
#include "browser_extraction/fakes/fake_unpack_view.h"
#include "drivers/fakes/fake_ace_library.h"
#include "drivers/fakes/fake_archiver_library.h"
#include "drivers/un_ace.h"
#include "drivers/un_arj.h"
#include "drivers/un_cab.h"
#include "drivers/un_lha.h"
#include "drivers/un_rar.h"
#include "drivers/un_tar.h"
#include "drivers/un_zip.h"
#include "shell/fakes/fake_shell.h"

namespace tovar::test {

/// Counts how often messages were let run.
class CountingPump final : public MessagePump {
public:
    int times = 0;
    std::function<void()> whilePending;

    void processPending() override {
        ++times;
        if (whilePending) whilePending();
    }
};

/// An archive "C:\a.xyz", a target folder "C:\out" and the work folder "C:\Temp", with every kind's real driver over a
/// library that records what it is told.
class ExtractionFixture : public testing::Test {
public:
    ExtractionFixture() {
        shell.files.addFolder(LR"(C:\Temp)");
        shell.files.addFolder(LR"(C:\out)");
        workFolder.resetToTempFolder();
        library.whileRunning = [this] { readList(); };
    }

    template <class Driver>
    ArchiveDriver& drive() {
        driver = std::make_unique<Driver>(library, shell.messages, regional);
        return *driver;
    }
    ArchiveDriver& driveAce() {
        driver = std::make_unique<cUnAce>(ace, shell.messages, regional, shell.files, passwords);
        return *driver;
    }

    /// @return the command line that the library was given last; empty when there was none
    [[nodiscard]] std::wstring line() const {
        for (auto call = library.calls.rbegin(); call != library.calls.rend(); ++call) {
            if (call->starts_with(L"run ")) return call->substr(4);
        }
        return {};
    }

    FakeShell shell;
    FakeArchiverLibrary library;
    FakeAceLibrary ace;
    NoPasswords passwords;
    RegionalSettings regional;
    CountingPump pump;
    WorkFolder workFolder{shell.operations, shell.files, shell.paths};
    FakeProgressDialogs progress;
    std::chrono::milliseconds now{0};
    Extraction extraction{shell.messages, pump, progress, [this] { return now; }};
    std::unique_ptr<ArchiveDriver> driver;
    std::wstring archive = LR"(C:\a.xyz)";
    std::string listed;  ///< content of the list file while the library had it
    int window = 0;
    const WindowHandle owner = &window;

private:
    void readList() {
        const std::wstring command = line();
        const std::size_t at = command.find(L" @");
        if (at != command.npos) shell.files.readFile(command.substr(at + 2), listed);
    }
};

}  // namespace tovar::test
