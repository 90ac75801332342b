#pragma once
#include <memory>

#include "host/console/progress_line.h"
#include "shell/arc_progress.h"

namespace tovar::host {

/// Shows how far the zip engine is in a line of the terminal, where somebody looks on.
class ZipProgress final : public ProgressDialogs {
public:
    explicit ZipProgress(ConsoleOutput& output) : output_(output) {}
    [[nodiscard]] std::unique_ptr<ArcProgress> show(WindowHandle owner) override;

private:
    ConsoleOutput& output_;
};

}  // namespace tovar::host
