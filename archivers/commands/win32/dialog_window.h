#pragma once
#include <windows.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/commands/win32/screen_metrics.h"

namespace archiver {

/// A dialog made in code, as a library that is part of another module has no resources of its own to count on. It
/// follows the user's message font and the resolution, stands over its owner and within the owner's monitor.
/// Lives on its maker's stack; its thread is the maker's.
class DialogWindow {
public:
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;
    virtual ~DialogWindow() { destroy(); }

    [[nodiscard]] HWND window() const noexcept { return window_; }

protected:
    explicit DialogWindow(std::string_view title);

    /// Shows the dialog until it ends; the top-level window of `owner` is disabled meanwhile.
    /// @return what `end` was given; 0 when the thread's messages end, the owner goes, or there is no window
    INT_PTR runModal(HWND owner) noexcept;

    /// Makes the dialog, not shown.
    bool create(HWND owner) noexcept;
    void destroy() noexcept;
    void end(INT_PTR result) noexcept;

    /// Makes the controls, in the order of the tabulator key.
    virtual void build() = 0;
    /// Places the controls.
    /// @param widest  pixels that the client area may have at most
    /// @return size of the client area in pixels
    virtual SIZE arrange(const DialogUnits& units, int widest) = 0;
    /// A control tells something. @return false to leave it to the dialog's own ways
    virtual bool onCommand(WORD control, WORD notification) = 0;
    /// The window goes, its controls are still there.
    virtual void onDestroy() {}

    HWND add(const wchar_t* className, std::string_view text, DWORD style, WORD id = 0, DWORD extendedStyle = 0);
    HWND addLabel(std::string_view text) { return add(L"STATIC", text, SS_LEFT); }
    /// A label of the user's data, in which "&" is nothing special.
    HWND addData(std::string_view text) { return add(L"STATIC", text, SS_LEFTNOWORDWRAP | SS_NOPREFIX); }
    HWND addHeading(std::string_view text);
    /// A name that is shortened in its middle when it is wider than the control.
    HWND addName(std::string_view text);
    HWND addButton(std::string_view text, WORD id, DWORD style = BS_PUSHBUTTON);
    HWND addIcon(const wchar_t* name);

    void setText(HWND control, std::string_view text);
    void setName(HWND control, std::string_view text);

    static void place(HWND control, int x, int y, int width, int height) noexcept;
    /// @return size of the control's text in one line, in pixels
    [[nodiscard]] SIZE textSize(HWND control) const noexcept;
    [[nodiscard]] int widestText(std::initializer_list<HWND> controls) const noexcept;
    /// Places buttons at the right, in as many rows as they need.
    /// @return the bottom of the last row
    int placeButtons(const DialogUnits& units, const std::vector<HWND>& buttons, int y, int width) const noexcept;
    [[nodiscard]] int buttonsWidth(const DialogUnits& units, const std::vector<HWND>& buttons) const noexcept;

private:
    struct Name {
        HWND control;
        std::string text;
    };

    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    INT_PTR answer(UINT message, WPARAM wParam, LPARAM lParam);
    void load();
    /// Fonts, places and size for the resolution that the window has now.
    SIZE layOut();
    void centre(SIZE size) noexcept;
    void shorten(const Name& name);
    [[nodiscard]] bool isHeading(HWND control) const noexcept { return control == heading_; }

    std::wstring title_;
    INT_PTR result_ = 0;
    bool modal_ = false;
    HWND owner_ = nullptr;
    HWND window_ = nullptr;
    HWND heading_ = nullptr;
    HWND iconControl_ = nullptr;
    const wchar_t* iconName_ = nullptr;
    std::vector<HWND> controls_;
    std::vector<Name> names_;
    UniqueFont font_, boldFont_;
    UniqueIcon icon_;
};

/// The module that this code is part of, which is not the host's.
HINSTANCE ownModule() noexcept;

}  // namespace archiver
