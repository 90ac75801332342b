#pragma once
#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace archiver::testing {

/// A host's window with a child that owns the library's windows, and an edit control that has the focus.
class HostWindow {
public:
    /// @param place  of the window on the screen
    explicit HostWindow(const RECT& place = {100, 100, 900, 700});
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    [[nodiscard]] HWND window() const { return window_; }
    [[nodiscard]] HWND child() const { return child_; }
    [[nodiscard]] HWND edit() const { return edit_; }

    /// How often the window was told a message.
    [[nodiscard]] int told(UINT message) const;
    /// What the window answers to a message; nothing but its number is looked at.
    void answer(UINT message, LRESULT result) { answers_[message] = result; }

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr, child_ = nullptr, edit_ = nullptr;
    std::map<UINT, int> told_;
    std::map<UINT, LRESULT> answers_;
};

/// The visible dialog of this thread that is in front; null when there is none.
HWND frontDialog();

std::wstring textOf(HWND window);

/// The texts of a window's visible children, in the order of the tabulator key.
std::vector<std::wstring> childTexts(HWND window);

/// The first child with that text; null when there is none.
HWND childWithText(HWND window, const std::wstring& text);

/// Posts a key as if it were pressed in the window that has the focus in the front dialog.
void pressKey(WPARAM key);

/// Takes all messages of this thread but those that end it.
void runMessages();

/// Waits for the next dialog of this thread and then acts on it, within the dialog's own message loop. A dialog that
/// is still there long after that is a failure, and is cancelled.
class OnDialog {
public:
    explicit OnDialog(std::function<void(HWND dialog)> act);
    ~OnDialog();
    OnDialog(const OnDialog&) = delete;
    OnDialog& operator=(const OnDialog&) = delete;

private:
    static void CALLBACK tick(HWND window, UINT message, UINT_PTR id, DWORD time);

    std::function<void(HWND dialog)> act_;
    HWND dialog_ = nullptr;
    int ticksSince_ = 0;
    UINT_PTR timer_;
};

}  // namespace archiver::testing
