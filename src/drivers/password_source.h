#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "shell/window_handle.h"

namespace tovar {

/// Asks the user for the password of an archive.
class PasswordSource {
public:
    virtual ~PasswordSource() = default;
    /// @return nullopt when there is none to be had. Who asks overwrites the text in memory after use.
    [[nodiscard]] virtual std::optional<std::wstring> ask(WindowHandle owner, std::wstring_view archive) = 0;
};

/// Has none.
class NoPasswords final : public PasswordSource {
public:
    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle, std::wstring_view) override { return std::nullopt; }
};

}  // namespace tovar
