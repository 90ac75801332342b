#pragma once
#include <functional>
#include <string>

#include "shell/arc_progress.h"
#include "shell/regional.h"

namespace tovar {

/// Shows progress in `fArcProgress`.
class WindowsProgressDialogs final : public ProgressDialogs {
public:
    /// @param regional  outlives this object
    /// @param fontName  gives the face name that the host wants at the time; empty = none
    WindowsProgressDialogs(const RegionalSettings& regional, std::function<std::wstring()> fontName)
        : regional_(regional), fontName_(std::move(fontName)) {}

    [[nodiscard]] std::unique_ptr<ArcProgress> show(WindowHandle owner) override;

private:
    const RegionalSettings& regional_;
    std::function<std::wstring()> fontName_;
};

}  // namespace tovar
