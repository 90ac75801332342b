#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "shell/win32/ole_session.h"

namespace tovar {

/// Whose window files are dropped on.
class FileDropOwner {
public:
    virtual ~FileDropOwner() = default;
    /// @return whether files can be dropped now; asked again as the mouse moves
    [[nodiscard]] virtual bool takesFiles() const = 0;
    /// Files and folders were dropped. The program that they come from waits until this returns: the work with them is
    /// begun later.
    /// @param paths  full ones, at least one
    virtual void onFilesDropped(std::vector<std::wstring> paths) = 0;
};

/// Lets files be dropped on a window and on its children, by OLE and, for programs that do not know it, by the older
/// message. Files are only ever copied: a source that were told that they have been moved would delete them. What
/// cannot be taken is refused while it is dragged, which the pointer shows.
class FileDropTarget {
public:
    /// @param owner  outlives the object
    explicit FileDropTarget(FileDropOwner& owner) : owner_(owner) {}
    ~FileDropTarget() { stop(); }
    FileDropTarget(const FileDropTarget&) = delete;
    FileDropTarget& operator=(const FileDropTarget&) = delete;

    /// @param window  of this thread; hands each WM_DROPFILES to `onDropFiles`
    void start(HWND window);
    /// Call it while the window is there still.
    void stop() noexcept;

    /// Tells sources that know the older message alone whether the window takes files.
    void announce(bool takesFiles) noexcept;
    /// @param drop  of WM_DROPFILES; freed
    void onDropFiles(WPARAM drop);

private:
    class Target;

    FileDropOwner& owner_;
    HWND window_ = nullptr;
    std::optional<OleSession> ole_;
    Target* target_ = nullptr;
};

}  // namespace tovar
