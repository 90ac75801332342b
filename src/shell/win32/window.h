#pragma once
#include <windows.h>

#include <optional>
#include <string>

namespace tovar {

/// A window of a class of the component's own. The system's window and the object live apart: the window may be
/// destroyed with its parent, and the object goes on without one. Nothing thrown in a handler leaves the procedure.
class Window {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// @return null before create and once the window is gone
    [[nodiscard]] HWND hwnd() const noexcept { return hwnd_; }

protected:
    struct Description {
        std::wstring className;
        DWORD style = 0, extendedStyle = 0;
        SIZE size{};  ///< pixels; the system chooses when it is empty
        HWND parent = nullptr;
        UINT classStyle = 0;
    };

    Window() = default;
    /// Derived classes call destroy() in theirs, so that their handlers hear of it.
    virtual ~Window();

    /// Creates the window, hidden. Its class is registered for the component's module and taken back with the last
    /// window.
    /// @return false on failure
    bool create(const Description& description);
    void destroy() noexcept;

    /// @return the answer, or nullopt for default handling
    virtual std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    /// The window is gone; hwnd() is null. The object must not be deleted here.
    virtual void onGone() {}

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND hwnd_ = nullptr;
    std::wstring className_;
};

/// @return the text of a window or control
[[nodiscard]] std::wstring textOf(HWND window);

}  // namespace tovar
