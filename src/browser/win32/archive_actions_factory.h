#pragma once
#include <memory>
#include <string>

#include "browser/archive_actions.h"
#include "browser/archive_browser.h"
#include "browser/win32/unpack_dialog.h"
#include "shell/win32/windows_programs.h"

namespace tovar {

/// Makes the commands of browsers, over the real desktop. Keeps what all browsers of the component share.
class ArchiveActionsFactory {
public:
    /// All of it outlives the factory and what it makes.
    /// @param changes  null: archives cannot be changed
    ArchiveActionsFactory(WorkFolder& workFolder, PathOperations& paths, FileSystem& files, MessageBoxes& messages,
                          MessagePump& pump, ProgressDialogs& progress, ArchiveChanges* changes = nullptr)
        : workFolder_(workFolder),
          paths_(paths),
          files_(files),
          messages_(messages),
          pump_(pump),
          progress_(progress),
          changes_(changes),
          launcher_(programs_, pump),
          copies_(files) {}

    [[nodiscard]] std::unique_ptr<BrowserActions> create(const BrowserRequest& request) {
        return std::make_unique<ArchiveActions>(
            ArchiveActionsPorts{workFolder_, paths_, files_, messages_, pump_, progress_, launcher_, dialogs_, copies_,
                                lastFolder_, changes_},
            request.fontName);
    }

private:
    WorkFolder& workFolder_;
    PathOperations& paths_;
    FileSystem& files_;
    MessageBoxes& messages_;
    MessagePump& pump_;
    ProgressDialogs& progress_;
    ArchiveChanges* changes_;
    WindowsPrograms programs_;
    ProgramLauncher launcher_;
    WindowsUnpackDialogs dialogs_;
    OpenedCopies copies_;
    std::wstring lastFolder_;
};

}  // namespace tovar
