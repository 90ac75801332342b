#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>

#include "browser/archive_browser.h"
#include "front/kind_table.h"
#include "front/place_in_host.h"
#include "front/plugin_state.h"
#include "front/ports.h"
#include "settings/settings_store.h"
#include "shell/work_folder.h"

namespace tovar {

/// What the eight operations reach.
struct TovarPorts {
    std::shared_ptr<const void> surroundings;  ///< keeps everything below alive
    PluginState& state;
    SettingsStore& settings;
    WorkFolder& workFolder;
    PathOperations& paths;
    DriverServices drivers;
    MousePointer& pointer;
    MessagePump& pump;
    WindowSystem& windows;
    BrowserFactory& browsers;
    CreationWindows& creation;
    ConfigurationWindow& configuration;
};

/// The eight operations of `cTovar`. Objects share the state, so only one archive is shown at a time.
class TovarOperations {
public:
    /// Loads the settings, checks the archiver libraries and puts the work folder back to the system's. A step that
    /// fails is left out.
    explicit TovarOperations(const TovarPorts& ports);

    /// Saves the settings and unloads every window of the component, whichever object opened it.
    ~TovarOperations();
    TovarOperations(const TovarOperations&) = delete;
    TovarOperations& operator=(const TovarOperations&) = delete;

    /// Whether an archive is shown, being created, or worked on without windows: a host that asks before it lets go of
    /// the component must not do so under a library's feet.
    [[nodiscard]] bool IsBusy() const noexcept {
        return ports_.state.busy || ports_.state.creating || ports_.state.working;
    }

    /// Font of the windows that are built from now on.
    void SetFont(std::wstring_view sFontName, FontHandle hFont);

    /// Lets the user choose which archiver libraries may be used; returns when that is done. While an archive is being
    /// created, or the dialog is open already, what is open comes to the front instead.
    void Configure();

    [[nodiscard]] bool CanCreateArchive() const noexcept;

    /// Lets the user create an archive. While one is being created, or the configuration is open, what is open comes to
    /// the front instead.
    /// @param sArcList  the files to pack, handed on as they are
    /// @param fParent   may be null
    /// @return always false
    bool CreateArchive(std::wstring_view sArcFile, std::wstring_view sArcDir, std::wstring_view sArcList,
                       HostWindow* fParent);

    /// Shows an archive inside the host's window; one that is shown already is unloaded first.
    /// @param sArcFile  full path
    /// @param sArcDir   the host's folder it belongs to; empty for the folder it lies in
    /// @param fParent   may be null
    bool OpenArchive(std::wstring_view sArcFile, std::wstring_view sArcDir, HostWindow* fParent);

    /// @param nArcMode  becomes the kind's bit when the file is accepted, stays as it is otherwise
    /// @param bMsg      whether to tell the user that the kind is not available; that a file was refused is always told
    bool CanOpenArchive(std::wstring_view sArcFile, std::int32_t& nArcMode, bool bMsg);

    /// Moves the work folder; failures are ignored.
    void SetTempDir(std::wstring_view sTempDir);

    /// Closes every window of the component, whichever object opened it; dialogs close as by Cancel.
    void unloadWindows();

private:
    bool canOpen(std::wstring_view file, ArchiveKind& bit, bool withMessages, HostWindow* host);
    bool show(const std::wstring& file, const std::wstring& folder, ArchiveKind bit, HostWindow* host);
    bool bringOpenDialogToFront();
    const std::shared_ptr<ArchiveDriver>& driverOf(const KindRow& row);
    void tell(std::wstring_view file, std::wstring_view text, HostWindow* host);

    TovarPorts ports_;
    std::map<ArchiveKind, std::shared_ptr<ArchiveDriver>> drivers_;  ///< each made on first need
};

}  // namespace tovar
