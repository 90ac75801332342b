#pragma once
#include <memory>
#include <string>

#include "browser/archive_browser.h"
#include "front/library_check.h"
#include "front/window_system.h"
#include "settings/archive_kind.h"

namespace tovar {

/// A font of the system as hosts hand it over: HFONT on Windows, never looked into.
using FontHandle = void*;

/// An archive that is shown, with what has to live as long as its window.
struct BrowserSession {
    std::shared_ptr<const void> surroundings;  ///< what the driver and the window stand on
    std::shared_ptr<ArchiveDriver> driver;
    std::unique_ptr<ArchiveBrowser> browser;
    std::unique_ptr<WindowWatch> watch;
    bool unloaded = false;  ///< the window is gone
};

/// What all objects of the component share. Built once, handed to who needs it.
struct PluginState {
    LibraryVersions versions;
    ArchiveKind availability = kind::kNone;
    ArchiveKind effective = kind::kNone;  ///< allowed AND available; every question of use is answered from it

    std::wstring fontName;
    FontHandle hFont = nullptr;

    std::wstring archiveFile;               ///< full path of the archive that is browsed or created
    std::wstring archiveFolder;             ///< the host's folder it belongs to, or the target folder
    ArchiveKind archiveKind = kind::kNone;  ///< of the archive that is browsed; none without one
    std::wstring fileList;                  ///< for creating, as the host handed it over

    bool busy = false;                        ///< from showing the browser until its window is gone
    std::shared_ptr<BrowserSession> session;  ///< null while no archive is shown or being opened

    // What is going on. Libraries and dialogs let messages run, so that a host may call again before it is over.
    bool opening = false;
    bool creating = false;
    bool configuring = false;
    bool unloading = false;
    bool working = false;  ///< an operation without windows
};

}  // namespace tovar
