#include "browser/win32/browser_factory.h"

#include "browser/win32/archive_browser_window.h"
#include "browser/win32/system_file_types.h"
#include "shell/win32/message_breather.h"
#include "shell/win32/regional_settings.h"

namespace tovar {
namespace {

/// A browser window together with the desktop that it asks.
class DesktopBrowser final : public ArchiveBrowser {
public:
    DesktopBrowser(const BrowserRequest& request, const FileSystem& files, MessageBoxes& messages,
                   std::unique_ptr<BrowserActions> actions, std::function<void()> onUnloaded)
        : desktop_(request.workFolder),
          actions_(std::move(actions)),
          window_(request, {files, desktop_, messages, loadRegionalSettings(), actions_.get(), &breather_},
                  std::move(onUnloaded)) {}

    [[nodiscard]] WindowHandle hWnd() const override { return window_.hWnd(); }
    bool FillControl(std::wstring_view folderKey) override { return window_.FillControl(folderKey); }
    void suspendPainting(bool suspended) override { window_.suspendPainting(suspended); }
    void showModeless() override { window_.showModeless(); }
    void unload() override { window_.unload(); }

private:
    SystemFileTypes desktop_;
    MessageBreather breather_;
    std::unique_ptr<BrowserActions> actions_;
    fArcMain window_;
};

}  // namespace

std::unique_ptr<ArchiveBrowser> WindowsBrowserFactory::create(const BrowserRequest& request,
                                                              std::function<void()> onUnloaded) {
    auto actions = makeActions_ ? makeActions_(request) : nullptr;
    auto browser =
        std::make_unique<DesktopBrowser>(request, files_, messages_, std::move(actions), std::move(onUnloaded));
    if (browser->hWnd() == nullptr) return nullptr;
    return browser;
}

}  // namespace tovar
