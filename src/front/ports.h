#pragma once
#include <memory>

#include "shell/message_pump.h"
#include "shell/window_handle.h"

namespace tovar {

/// Shapes of the mouse pointer, numbered as hosts number them.
enum class PointerShape { Default = 0, Hourglass = 11 };

/// The mouse pointer over the windows of the user-interface thread.
class MousePointer {
public:
    virtual ~MousePointer() = default;
    virtual void show(PointerShape shape) = 0;
};

/// The progress window; destroyed with the object.
class ProgressWindow {
public:
    virtual ~ProgressWindow() = default;
    [[nodiscard]] virtual WindowHandle hWnd() const = 0;
};

/// The windows that creating an archive shows.
class CreationWindows {
public:
    virtual ~CreationWindows() = default;
    /// @return a hidden window; null when none could be created
    [[nodiscard]] virtual std::unique_ptr<ProgressWindow> createProgress() = 0;
    /// Makes the pack dialog ready.
    /// @param owner  of its windows; null = none
    virtual void preparePackDialog(int argument, WindowHandle owner) = 0;
    /// Shows the pack dialog, which does the work; returns when it is closed.
    virtual void showPackDialog() = 0;
    /// Closes the pack dialog, if there is one, as Cancel does.
    virtual void close() noexcept = 0;
    virtual void bringToFront() noexcept = 0;
};

/// The configuration dialog.
class ConfigurationWindow {
public:
    virtual ~ConfigurationWindow() = default;
    /// Returns when the dialog is closed.
    virtual void showModal() = 0;
    /// Closes the dialog, if there is one, as Cancel does.
    virtual void close() noexcept = 0;
    virtual void bringToFront() noexcept = 0;
};

}  // namespace tovar
