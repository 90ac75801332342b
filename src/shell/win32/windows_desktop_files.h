#pragma once
#include "shell/file_operations.h"

namespace tovar {

/// Windows' shell.
class WindowsDesktopFiles final : public DesktopFiles {
public:
    Result run(const FileOperation& operation) override;
};

}  // namespace tovar
