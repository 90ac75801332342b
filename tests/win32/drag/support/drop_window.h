#pragma once
#include <windows.h>
// windows.h first
#include <objidl.h>

#include <filesystem>
#include <set>

#include "shell/win32/handles.h"

namespace tovar::test {

/// What a window does with what is dropped on it.
enum class Taking {
    Folder,   ///< copies the files into its folder and tells the shell of them, as a folder's window does
    Streams,  ///< writes the streams into its folder
    Both,     ///< one after the other
    Path,     ///< takes the list of files and does nothing with them
};

/// A window on the screen that takes drops. OLE has to be ready on its thread.
class DropWindow {
public:
    DropWindow(std::filesystem::path folder, Taking taking, POINT place);
    ~DropWindow();
    DropWindow(const DropWindow&) = delete;
    DropWindow& operator=(const DropWindow&) = delete;

    /// On the screen.
    [[nodiscard]] POINT middle() const;
    [[nodiscard]] bool isReady() const { return ready_; }
    /// How often something was dropped.
    [[nodiscard]] int drops() const;

private:
    UniqueWindow window_;
    class Target;
    Target* target_;
    bool ready_ = false;
};

}  // namespace tovar::test
