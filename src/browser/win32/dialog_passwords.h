#pragma once
#include <functional>
#include <string>

#include "drivers/password_source.h"

namespace tovar {

/// Asks for passwords with the password dialog.
class DialogPasswords final : public PasswordSource {
public:
    /// @param fontName  gives the face name that the host wants at the time; empty = none
    explicit DialogPasswords(std::function<std::wstring()> fontName) : fontName_(std::move(fontName)) {}

    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle owner, std::wstring_view archive) override;

private:
    std::function<std::wstring()> fontName_;
};

}  // namespace tovar
