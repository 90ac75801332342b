#pragma once
#include <functional>
#include <memory>

#include "browser/archive_browser.h"
#include "browser/browser_actions.h"
#include "shell/file_system.h"
#include "shell/message_boxes.h"

namespace tovar {

/// Makes what the commands of one browser do.
using MakeBrowserActions = std::function<std::unique_ptr<BrowserActions>(const BrowserRequest& request)>;

/// Makes real browser windows, with the user's regional settings and the desktop's icons.
class WindowsBrowserFactory final : public BrowserFactory {
public:
    /// The ports must outlive the factory and its windows.
    /// @param makeActions  without it the windows show archives and do nothing with them
    WindowsBrowserFactory(const FileSystem& files, MessageBoxes& messages, MakeBrowserActions makeActions = {})
        : files_(files), messages_(messages), makeActions_(std::move(makeActions)) {}

    [[nodiscard]] std::unique_ptr<ArchiveBrowser> create(const BrowserRequest& request,
                                                         std::function<void()> onUnloaded) override;

private:
    const FileSystem& files_;
    MessageBoxes& messages_;
    MakeBrowserActions makeActions_;
};

}  // namespace tovar
