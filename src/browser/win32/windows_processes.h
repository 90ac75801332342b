#pragma once
#include "browser/own_items.h"

namespace tovar {

/// Windows' processes, and its source of secrets.
class WindowsProcesses final : public Processes {
public:
    [[nodiscard]] std::uint32_t current() const override;
    [[nodiscard]] bool isRunning(std::uint32_t process) const override;
    [[nodiscard]] std::wstring unguessable() override;
};

}  // namespace tovar
