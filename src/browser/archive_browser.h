#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "drivers/archive_driver.h"
#include "shell/window_handle.h"

namespace tovar {

/// What a browser window needs to know of the archive that it shows.
struct BrowserRequest {
    std::wstring archiveFile;         ///< full path
    ArchiveDriver* driver = nullptr;  ///< of the archive's kind; outlives the browser
    std::wstring workFolder;          ///< ends with "\"; empty when there is none
    std::wstring fontName;            ///< face name that the host asked for; empty = the system's own
};

/// The archive browser `fArcMain`, as its caller sees it. Created hidden and without a parent. No operation throws;
/// those on a window that is gone do nothing.
class ArchiveBrowser {
public:
    virtual ~ArchiveBrowser() = default;

    /// @return null once the window is gone
    [[nodiscard]] virtual WindowHandle hWnd() const = 0;

    /// Lists the archive anew, builds the folder tree and shows one folder; the root when there is no such folder.
    /// @param folderKey  "\" for the root, "\a\b\" for the folder b in the folder a
    /// @return false when the window is gone or is being filled already. A failed listing shows the driver's own
    ///         message and leaves an empty root.
    virtual bool FillControl(std::wstring_view folderKey) = 0;

    /// While suspended the window does not repaint; everything is painted anew afterwards.
    virtual void suspendPainting(bool suspended) = 0;

    virtual void showModeless() = 0;

    /// Destroys the window.
    virtual void unload() = 0;
};

/// Makes browser windows.
class BrowserFactory {
public:
    virtual ~BrowserFactory() = default;

    /// @param onUnloaded  called once, when the window is destroyed: by its user, by unload() or with its parent. The
    ///                    browser object must not be deleted in it.
    /// @return null when no window could be created
    [[nodiscard]] virtual std::unique_ptr<ArchiveBrowser> create(const BrowserRequest& request,
                                                                 std::function<void()> onUnloaded) = 0;
};

}  // namespace tovar
