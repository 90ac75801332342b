#pragma once
#include <windows.h>

#include <memory>

#include "browser/win32/archive_actions_factory.h"
#include "browser/win32/browser_factory.h"
#include "browser/win32/dialog_passwords.h"
#include "browser/win32/windows_progress_dialogs.h"
#include "create/bound_zip_library.h"
#include "drivers/archiver_libraries.h"
#include "drivers/library_finder.h"
#include "drivers/library_folders.h"
#include "drivers/module_loader.h"
#include "front/automation/automation.h"
#include "front/state_inventory.h"
#include "front/tovar.h"
#include "front/win32/change_dialogs.h"
#include "front/win32/configuration_window.h"
#include "front/win32/creation_windows.h"
#include "front/win32/server_lock.h"
#include "front/win32/windows_ports.h"
#include "settings/settings_store.h"
#include "settings/win32/windows_registry.h"
#include "shell/path_operations.h"
#include "shell/regional.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/system_message_boxes.h"
#include "shell/win32/windows_desktop_files.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "shell/work_folder.h"

namespace tovar {

/// Everything that the objects share, wired: the real system behind every port, and the shared state. Lives as long as
/// one of its objects, so that nothing is left to take down when the DLL is unloaded.
///
/// A host has one user-interface thread, and so there is one component. For a host with several each thread has its
/// own, since windows and what works for them belong to their thread.
class Component : public std::enable_shared_from_this<Component> {
public:
    /// @return the calling thread's component; made when there is none
    [[nodiscard]] static std::shared_ptr<Component> ofThisThread();

    Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    [[nodiscard]] TovarPorts ports();
    /// What work without windows stands on: the same libraries, files and state.
    [[nodiscard]] AutomationPorts automation();

private:
    ServerLock lock_;
    WindowsFileSystem files_;
    WindowsSystemPaths systemPaths_;
    WindowsSystemInformation information_;
    SystemMessageBoxes messages_;
    PathOperations paths_{files_, systemPaths_, information_, messages_};
    WorkFolder workFolder_{paths_, files_, systemPaths_};
    WindowsRegistry registry_;
    SettingsStore settings_{registry_};
    RegionalSettings regional_;
    DialogPasswords passwords_{[this] { return state_.fontName; }};
    AnsiCodec ansi_;
    std::unique_ptr<ModuleLoader> loader_;
    std::unique_ptr<LibraryFolders> folders_;
    LibraryFinder finder_;
    ArchiverLibraries libraries_{*loader_, finder_, ansi_, systemPaths_};
    WindowsMousePointer pointer_;
    WindowsMessagePump pump_;
    WindowsWindowSystem windows_;
    WindowsProgressDialogs progress_{regional_, [this] { return state_.fontName; }};
    PluginState state_;
    HostedProgressDialogs creationProgress_{regional_, [this] { return state_.fontName; }};
    DialogComments comments_{[this] { return state_.fontName; }};
    FoundZipLibraries zipLibraries_{*loader_, finder_, ansi_, systemPaths_};
    ZipEngine zip_{{zipLibraries_, creationProgress_, comments_, passwords_, messages_, files_, systemPaths_}};
    WindowsDesktopFiles desktopFiles_;
    FileOperations fileOperations_{desktopFiles_, paths_, pump_};
    HostedConfirmations confirmations_{[this] { return state_.fontName; }};
    DialogFileQuestions fileQuestions_{paths_, [this] { return state_.fontName; }};
    ArchiveChanges changes_{
        {zip_, confirmations_, fileQuestions_, fileOperations_, workFolder_, paths_, files_, systemPaths_, messages_}};
    ArchiveActionsFactory actions_{workFolder_, paths_,          files_,
                                   messages_,   pump_,           progress_,
                                   &changes_,   &confirmations_, [this] { return weak_from_this().lock(); }};
    WindowsBrowserFactory browsers_{files_, messages_,
                                    [this](const BrowserRequest& request) { return actions_.create(request); }};
    WindowsCreationWindows creation_{
        {state_, creationProgress_, zip_, libraries_, regional_, workFolder_, paths_, files_, systemPaths_, messages_}};
    StateInventory inventory_{state_, libraries_};
    WindowsConfiguration configuration_{settings_, inventory_, [this] { return state_.fontName; }};
};

}  // namespace tovar
