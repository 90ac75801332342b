#pragma once
#include <windows.h>

namespace tovar {

/// While it lives, windows of the common controls are created in their newer version (6), which follows the desktop's
/// visual style, whatever the host's program says. The manifest for it is resource 2 of the own module; without it, or
/// without such controls, nothing changes.
class VisualStyles {
public:
    VisualStyles() noexcept;
    ~VisualStyles();
    VisualStyles(const VisualStyles&) = delete;
    VisualStyles& operator=(const VisualStyles&) = delete;

    [[nodiscard]] bool active() const noexcept { return active_; }

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

}  // namespace tovar
