#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/unpacking/unpack_events.h"

namespace archiver {

/// The passwords of an archive: the given one, the one that worked last, those that are asked for.
class PasswordAttempts {
public:
    /// @param given  UTF-8; empty for none
    PasswordAttempts(std::string_view given, UnpackEvents& events) : given_(given), events_(events) {}

    /// The one that has opened a member; nullopt while none has.
    [[nodiscard]] const std::optional<std::string>& opened() const noexcept { return opened_; }

    /// Tries one after the other until the member opens, fails for another reason, or there are no more.
    /// @param attempt  unpacks the member with a password
    /// @return what the last attempt came to; kPasswordFile when all were wrong
    ReturnCode open(const Member& member, const std::function<ReturnCode(const std::string& password)>& attempt);

private:
    [[nodiscard]] bool isWrong(ReturnCode code) const noexcept;

    std::string given_;
    UnpackEvents& events_;
    std::optional<std::string> opened_;
    bool mayAsk_ = true;
};

}  // namespace archiver
