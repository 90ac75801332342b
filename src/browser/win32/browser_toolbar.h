#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <memory>
#include <type_traits>

#include "shell/win32/handles.h"

namespace tovar {

using UniqueImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, CloseWith<&::ImageList_Destroy>>;

/// The browser window's toolbar. Its buttons send WM_COMMAND with their identifier (browser_commands.h).
class BrowserToolbar {
public:
    /// @return false on failure
    bool create(HWND parent);
    [[nodiscard]] HWND hwnd() const noexcept { return toolbar_; }

    /// Draws the buttons' pictures for a scale, in dots per inch.
    void setScale(int dpi);
    /// The toolbar has another font.
    void fit(int dpi);
    void enable(int button, bool enabled);
    /// @return what the buttons need, in pixels
    [[nodiscard]] SIZE size() const;

    /// TTN_GETDISPINFOW: says what a button does.
    static void onHint(NMTTDISPINFOW& question);

private:
    HWND toolbar_ = nullptr;
    UniqueImageList pictures_;
    int pictureSize_ = 0;
};

}  // namespace tovar
