#pragma once
#include "shell/program_launcher.h"

namespace tovar {

/// Asks Windows' shell.
class WindowsPrograms final : public DesktopPrograms {
public:
    [[nodiscard]] bool hasProgramFor(const std::wstring& path) const override;
    bool open(const std::wstring& path) override;
};

}  // namespace tovar
