#pragma once
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "shell/win32/form_fonts.h"
#include "shell/win32/window.h"

namespace tovar {

/// A dialog over a template in the component's own resources. It owns the only dialog procedure; derived classes answer
/// commands by a table of routes (message_map.h). Nothing thrown in a handler leaves the procedure.
class Dialog {
public:
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    /// Shows the dialog and returns when it is closed.
    /// @param owner     null = none
    /// @param fontName  face name that the host wants for all controls; empty = that of the template
    /// @return what the dialog was closed with; -1 when it could not be shown
    std::intptr_t showModal(HWND owner, WORD templateId, std::wstring_view fontName);

protected:
    Dialog() = default;
    /// Derived classes call destroy() in theirs, so that their handlers hear of it.
    virtual ~Dialog();

    /// Creates the dialog beside its owner and returns; it is hidden unless its template says otherwise, and takes no
    /// focus. Its keys work in message loops that know of it (runPendingMessages).
    /// @return false on failure
    bool create(HWND owner, WORD templateId, std::wstring_view fontName);
    /// Destroys a dialog made by create; nothing happens without one.
    void destroy() noexcept;

    [[nodiscard]] HWND hwnd() const noexcept { return hwnd_; }
    [[nodiscard]] HWND control(int id) const noexcept { return ::GetDlgItem(hwnd_, id); }

    /// The controls are there and have their font; the dialog is not yet shown.
    virtual void onLoad() {}
    /// @return whether the command was one of the dialog's
    virtual bool onCommand(WPARAM) { return false; }
    /// @return the answer to any other message, or nullopt for default handling
    virtual std::optional<INT_PTR> onMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }

private:
    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    INT_PTR answer(UINT message, WPARAM wParam, LPARAM lParam);

    HWND hwnd_ = nullptr;
    bool takesFocus_ = true;
    std::wstring fontName_;
    FormFonts fonts_;
};

}  // namespace tovar
