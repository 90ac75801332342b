#pragma once
#include <cstdint>
#include <stdexcept>
#include <string>

namespace tovar {

/// An error number of the system: Win32 error code on Windows, errno elsewhere. 0 is success.
using SystemErrorCode = std::uint32_t;

/// A text has a character that the wanted 8-bit form cannot hold. The number is ERROR_NO_UNICODE_TRANSLATION of
/// Windows.
inline constexpr SystemErrorCode kNoUnicodeTranslation = 1113;

/// A system call failed; carries the system's number for it.
class SystemError : public std::runtime_error {
public:
    explicit SystemError(SystemErrorCode code)
        : std::runtime_error("system error " + std::to_string(code)), code_(code) {}

    [[nodiscard]] SystemErrorCode code() const noexcept { return code_; }

private:
    SystemErrorCode code_;
};

}  // namespace tovar
