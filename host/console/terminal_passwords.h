#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "drivers/password_source.h"

namespace tovar::host {

/// The terminal of the process, whatever its input and output are.
class SecretInput {
public:
    virtual ~SecretInput() = default;
    /// Shows a question and reads one line that is not seen while it is typed.
    /// @param question  UTF-8, without control characters
    /// @return nullopt at the end of the input, when the user interrupts, and where there is no terminal
    [[nodiscard]] virtual std::optional<std::wstring> ask(std::string_view question) = 0;
};

/// The system's own; win32/ and posix/ each give theirs.
[[nodiscard]] std::unique_ptr<SecretInput> systemSecretInput();

/// Asks for passwords at the terminal. As in the archiver libraries, an owner that is null means that nobody is to be
/// asked.
class TerminalPasswords final : public PasswordSource {
public:
    explicit TerminalPasswords(std::unique_ptr<SecretInput> input) : input_(std::move(input)) {}

    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle owner, std::wstring_view archive) override;

    /// Asks for the password of an archive that is to be encrypted, twice, as nobody sees what is typed.
    /// @return nullopt also when it is empty, or the second one is not the first
    [[nodiscard]] std::optional<std::wstring> askNew(std::wstring_view archive);

private:
    std::unique_ptr<SecretInput> input_;
};

}  // namespace tovar::host
