#pragma once
#include "host/console/terminal_passwords.h"

namespace tovar::host {

/// A terminal by its file descriptor, which outlives the object.
class PosixSecretInput final : public SecretInput {
public:
    explicit PosixSecretInput(int descriptor) noexcept : descriptor_(descriptor) {}
    [[nodiscard]] std::optional<std::wstring> ask(std::string_view question) override;

private:
    int descriptor_;
};

}  // namespace tovar::host
