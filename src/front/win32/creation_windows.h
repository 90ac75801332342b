#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "browser/win32/progress_dialog.h"
#include "create/win32/comment_dialog.h"
#include "create/win32/pack_dialog.h"
#include "create/zip_engine.h"
#include "drivers/archiver_libraries.h"
#include "drivers/un_cab.h"
#include "drivers/un_lha.h"
#include "front/plugin_state.h"
#include "front/ports.h"
#include "shell/arc_progress.h"

namespace tovar {

/// Progress dialogs for creating archives. One that was made beforehand, and put into the host's window, is taken
/// first.
class HostedProgressDialogs final : public ProgressDialogs {
public:
    /// @param regional  outlives the object
    /// @param fontName  gives the face name that the host wants at the time; empty = none
    HostedProgressDialogs(const RegionalSettings& regional, std::function<std::wstring()> fontName)
        : regional_(regional), fontName_(std::move(fontName)) {}

    /// Makes a hidden dialog, which is there as long as what is returned, or until it has been shown and closed.
    /// @return null when none could be made
    [[nodiscard]] std::unique_ptr<ProgressWindow> prepare();

    [[nodiscard]] std::unique_ptr<ArcProgress> show(WindowHandle owner) override;

private:
    class Prepared;
    class Shown;

    const RegionalSettings& regional_;
    std::function<std::wstring()> fontName_;
    std::weak_ptr<fArcProgress> prepared_;
};

/// The windows that creating an archive shows, over the real desktop.
class WindowsCreationWindows final : public CreationWindows, private PackDrivers {
public:
    /// What the pack dialog works with; all of it outlives the object.
    struct Ports {
        PluginState& state;
        HostedProgressDialogs& progress;
        ZipEngine& zip;
        ArchiverLibraries& libraries;
        const RegionalSettings& regional;
        WorkFolder& workFolder;
        PathOperations& paths;
        FileSystem& files;
        SystemPaths& system;
        MessageBoxes& messages;
    };
    explicit WindowsCreationWindows(const Ports& ports) : ports_(ports) {}

    [[nodiscard]] std::unique_ptr<ProgressWindow> createProgress() override { return ports_.progress.prepare(); }
    void preparePackDialog(int argument, WindowHandle owner) override;
    void showPackDialog() override;
    void close() noexcept override;
    void bringToFront() noexcept override;

private:
    [[nodiscard]] CommonDriver& lha() override;
    [[nodiscard]] CommonDriver& cab() override;

    Ports ports_;
    std::unique_ptr<cUnLHA> lha_;
    std::unique_ptr<cUnCab> cab_;
    std::optional<PackJob> job_;
    std::unique_ptr<fArcPack> dialog_;
};

}  // namespace tovar
