#pragma once
#include "shell/file_clipboard.h"

namespace tovar {

/// Windows' clipboard.
class WindowsClipboard final : public Clipboard {
public:
    [[nodiscard]] bool hasFiles() const override;
    [[nodiscard]] bool open() override;
    void close() noexcept override;
    bool empty() override;
    bool putFiles(std::string_view block) override;
    [[nodiscard]] std::optional<std::string> takeFiles() override;
};

}  // namespace tovar
