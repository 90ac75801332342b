#include "front/tovar.h"

#include <exception>
#include <new>
#include <string>

#include "shell/paths.h"
#include "shell/scoped_flag.h"

namespace tovar {
namespace {

constexpr std::wstring_view kUnavailable =
    L"The necessary DLL is not properly installed.\r\n"
    L"Or, the user turned off the use of DLL.\r\n"
    L"\r\n"
    L"Check the configuration or install Vantrel again.";
constexpr std::wstring_view kRefused =
    L"The necessary DLL is properly installed.\r\n"
    L"But it can not be opened by Vantrel.\r\n"
    L"\r\n"
    L"It might be corrupted archive.\r\n"
    L"It will be tried by external program !!!";

class Hourglass {
public:
    explicit Hourglass(MousePointer& pointer) : pointer_(pointer) { pointer_.show(PointerShape::Hourglass); }
    ~Hourglass() { pointer_.show(PointerShape::Default); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    MousePointer& pointer_;
};

/// Runs a step; a failing one is skipped.
template <class Step>
void attempt(Step step) noexcept {
    try {
        step();
    } catch (...) {  // NOLINT: the next step runs in any case
    }
}

/// The window is gone. What belonged to it goes as soon as its last message is done.
void onUnloaded(PluginState& state, const std::weak_ptr<BrowserSession>& weakSession) {
    const std::shared_ptr<BrowserSession> session = weakSession.lock();
    if (!session || session->unloaded) return;
    session->unloaded = true;
    session->driver->setHWnd(nullptr);
    if (state.session == session) {
        state.session = nullptr;
        state.busy = false;
        state.archiveKind = kind::kNone;
    }
    if (session->watch) session->watch->whenIdle([session] {});
}

void closeSession(PluginState& state) {
    const std::shared_ptr<BrowserSession> session = state.session;
    if (session) session->browser->unload();
}

}  // namespace

TovarOperations::TovarOperations(const TovarPorts& ports) : ports_(ports) {
    attempt([this] { ports_.settings.loadSettings(); });
    attempt([this] {
        ports_.state.versions = CheckArchiverLibraries(ports_.drivers, ports_.paths);
        ports_.state.availability = availabilityMask(ports_.state.versions);
        ports_.state.effective = ports_.settings.ArchiverSetting() & ports_.state.availability;
    });
    attempt([this] { ports_.workFolder.resetToTempFolder(); });
}

TovarOperations::~TovarOperations() {
    attempt([this] { ports_.settings.saveSettings(); });
    attempt([this] { unloadWindows(); });
}

void TovarOperations::SetFont(std::wstring_view sFontName, FontHandle hFont) {
    ports_.state.fontName = sFontName;
    ports_.state.hFont = hFont;
}

void TovarOperations::Configure() {
    if (bringOpenDialogToFront()) return;
    const ScopedFlag configuring(ports_.state.configuring);
    ports_.configuration.showModal();
}

bool TovarOperations::CanCreateArchive() const noexcept { return (ports_.state.effective & kind::kCreating) != 0; }

bool TovarOperations::CreateArchive(std::wstring_view sArcFile, std::wstring_view sArcDir, std::wstring_view sArcList,
                                    HostWindow* fParent) {
    if (sArcFile.empty() || sArcDir.empty() || ports_.state.working || bringOpenDialogToFront()) return false;
    const ScopedFlag creating(ports_.state.creating);
    ports_.pump.processPending();
    ports_.state.archiveFile = sArcFile;
    ports_.state.archiveFolder = sArcDir;
    ports_.state.fileList = sArcList;
    const std::unique_ptr<ProgressWindow> progress = ports_.creation.createProgress();
    if (progress) PlaceInHost(progress->hWnd(), fParent, false, ports_.windows);
    const WindowHandle owner = fParent == nullptr ? nullptr : fParent->hWnd();
    ports_.creation.preparePackDialog(0, ports_.windows.isWindow(owner) ? owner : nullptr);
    ports_.creation.showPackDialog();
    return false;
}

bool TovarOperations::OpenArchive(std::wstring_view sArcFile, std::wstring_view sArcDir, HostWindow* fParent) {
    // A library that lets messages run while it looks at a file must not be given another one meanwhile.
    if (sArcFile.empty() || ports_.state.opening || ports_.state.working) return false;
    const ScopedFlag opening(ports_.state.opening);
    bool shown = false;
    const Hourglass hourglass(ports_.pointer);
    attempt([&] {
        const std::wstring file(sArcFile);
        const std::wstring folder = sArcDir.empty() ? ParentPath(file) : std::wstring(sArcDir);
        ArchiveKind bit = kind::kNone;
        if (canOpen(file, bit, false, fParent)) shown = show(file, folder, bit, fParent);
    });
    return shown;
}

bool TovarOperations::CanOpenArchive(std::wstring_view sArcFile, std::int32_t& nArcMode, bool bMsg) {
    ArchiveKind bit = kind::kNone;
    if (!canOpen(sArcFile, bit, bMsg, nullptr)) return false;
    nArcMode = static_cast<std::int32_t>(bit);
    return true;
}

void TovarOperations::SetTempDir(std::wstring_view sTempDir) {
    attempt([&] { ports_.workFolder.SetTempDir(sTempDir); });
}

bool TovarOperations::canOpen(std::wstring_view file, ArchiveKind& bit, bool withMessages, HostWindow* host) {
    const KindRow* const row = file.empty() ? nullptr : kindByName(file);
    if (row == nullptr || (ports_.state.effective & kind::kReading) == 0) return false;
    if ((ports_.state.effective & row->bit) == 0) {
        if (withMessages) tell(file, kUnavailable, host);
        return false;
    }
    if (!driverOf(*row)->CheckArchive(file)) {
        tell(file, kRefused, host);
        return false;
    }
    bit = row->bit;
    return true;
}

bool TovarOperations::show(const std::wstring& file, const std::wstring& folder, ArchiveKind bit, HostWindow* host) {
    PluginState& state = ports_.state;
    closeSession(state);

    const auto session = std::make_shared<BrowserSession>();
    session->surroundings = ports_.surroundings;
    session->driver = driverOf(*kindByName(file));
    session->browser = ports_.browsers.create({file, session->driver.get(), ports_.workFolder.path(), state.fontName},
                                              [&state, weak = std::weak_ptr(session)] { onUnloaded(state, weak); });
    if (!session->browser) return false;
    ArchiveBrowser& browser = *session->browser;
    state.session = session;
    try {
        session->watch = ports_.windows.watch(browser.hWnd());
        if (!session->watch) throw std::bad_alloc();
        PlaceInHost(browser.hWnd(), host, true, ports_.windows);
        state.archiveFile = file;
        state.archiveFolder = folder;
        state.archiveKind = bit;
        browser.suspendPainting(true);
        browser.FillControl(L"\\");
        browser.suspendPainting(false);
        if (session->unloaded) return false;  // its user or the host closed it meanwhile
        state.busy = true;
        browser.showModeless();
        return !session->unloaded;
    } catch (...) {
        browser.unload();
        throw;
    }
}

void TovarOperations::unloadWindows() {
    if (ports_.state.unloading) return;
    const ScopedFlag unloading(ports_.state.unloading);
    closeSession(ports_.state);
    ports_.creation.close();
    ports_.configuration.close();
}

// The pack dialog offers what may be used, and the configuration changes it: they are never open at the same time.
bool TovarOperations::bringOpenDialogToFront() {
    if (ports_.state.creating) ports_.creation.bringToFront();
    if (ports_.state.configuring) ports_.configuration.bringToFront();
    return ports_.state.creating || ports_.state.configuring;
}

const std::shared_ptr<ArchiveDriver>& TovarOperations::driverOf(const KindRow& row) {
    std::shared_ptr<ArchiveDriver>& driver = drivers_[row.bit];
    if (!driver) driver = row.makeDriver(ports_.drivers);
    return driver;
}

void TovarOperations::tell(std::wstring_view file, std::wstring_view text, HostWindow* host) {
    const std::wstring title = L"Open " + SingleQuote(FileNamePart(file)) + L" by Vantrel";
    const WindowHandle owner = host == nullptr ? nullptr : host->hWnd();
    ports_.drivers.messages.show(ports_.windows.isWindow(owner) ? owner : nullptr, text, title,
                                 MessageIcon::Information);
}

}  // namespace tovar
