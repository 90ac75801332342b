#pragma once
#include <memory>
#include <string>

#include "browser/archive_actions.h"
#include "browser/archive_browser.h"
#include "browser/archive_exports.h"
#include "browser/win32/local_file_time.h"
#include "browser/win32/ole_drag_source.h"
#include "browser/win32/unpack_dialog.h"
#include "browser/win32/windows_clipboard_watch.h"
#include "browser/win32/windows_processes.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/windows_clipboard.h"
#include "shell/win32/windows_programs.h"

namespace tovar {

/// Makes the commands of browsers, over the real desktop. Keeps what all browsers of the component share.
class ArchiveActionsFactory {
public:
    /// All of it outlives the factory and what it makes.
    /// @param changes        null: archives cannot be changed
    /// @param confirmations  null: members do not leave the window
    /// @param component      gives what has to stay as long as another program holds something of a drag
    ArchiveActionsFactory(WorkFolder& workFolder, PathOperations& paths, FileSystem& files, MessageBoxes& messages,
                          MessagePump& pump, ProgressDialogs& progress, ArchiveChanges* changes = nullptr,
                          Confirmations* confirmations = nullptr,
                          std::function<std::shared_ptr<const void>()> component = {})
        : workFolder_(workFolder),
          paths_(paths),
          files_(files),
          messages_(messages),
          pump_(pump),
          progress_(progress),
          changes_(changes),
          launcher_(programs_, pump),
          copies_(files),
          confirmations_(confirmations),
          dragSource_(std::move(component)),
          items_(workFolder, files, processes_) {}

    [[nodiscard]] std::unique_ptr<BrowserActions> create(const BrowserRequest& request) {
        return std::make_unique<ArchiveActions>(
            ArchiveActionsPorts{workFolder_, paths_, files_, messages_, pump_, progress_, launcher_, dialogs_, copies_,
                                lastFolder_, changes_, &fileClipboard_,
                                confirmations_ == nullptr
                                    ? MakeExports()
                                    : [this](Extraction& extraction) { return makeExports(extraction); }},
            request.fontName);
    }

private:
    using MakeExports = std::function<std::unique_ptr<MemberExports>(Extraction& extraction)>;

    [[nodiscard]] std::unique_ptr<MemberExports> makeExports(Extraction& extraction) {
        return std::make_unique<ArchiveExports>(
            ArchiveExports::Ports{{{extraction, workFolder_, paths_, files_, messages_, items_},
                                   *confirmations_,
                                   dragSource_,
                                   &fileTimeOfLocal},
                                  clipboardCopies_});
    }

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
    // What takes members out of windows, and files into them.
    Confirmations* confirmations_;
    OleDragSource dragSource_;
    WindowsProcesses processes_;
    OwnItems items_;
    AnsiCodec ansi_;
    WindowsClipboard clipboard_;
    FileClipboard fileClipboard_{clipboard_, ansi_};
    WindowsClipboardWatch clipboardWatch_;
    ClipboardCopies clipboardCopies_{clipboard_, ansi_, clipboardWatch_};
};

}  // namespace tovar
