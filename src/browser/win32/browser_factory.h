#pragma once
#include "browser/archive_browser.h"
#include "shell/file_system.h"
#include "shell/message_boxes.h"

namespace tovar {

/// Makes real browser windows, with the user's regional settings and the desktop's icons.
class WindowsBrowserFactory final : public BrowserFactory {
public:
    /// The ports must outlive the factory and its windows.
    WindowsBrowserFactory(const FileSystem& files, MessageBoxes& messages) : files_(files), messages_(messages) {}

    [[nodiscard]] std::unique_ptr<ArchiveBrowser> create(const BrowserRequest& request,
                                                         std::function<void()> onUnloaded) override;

private:
    const FileSystem& files_;
    MessageBoxes& messages_;
};

}  // namespace tovar
