#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "drivers/password_source.h"
#include "shell/secret_text.h"

namespace tovar {

/// A password that was given before, and is overwritten in memory when the object goes.
class GivenPassword final : public PasswordSource {
public:
    GivenPassword() = default;
    ~GivenPassword() override { forget(); }
    GivenPassword(const GivenPassword&) = delete;
    GivenPassword& operator=(const GivenPassword&) = delete;

    void give(std::wstring password) {
        forget();
        password_ = std::move(password);
    }
    void forget() noexcept {
        if (password_) wipe(*password_);
        password_.reset();
    }
    /// From now on it is given once: a driver that asks again has found it wrong, and would ask for ever.
    void giveOnce(std::wstring password) {
        give(std::move(password));
        once_ = true;
    }
    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle, std::wstring_view) override {
        if (!once_) return password_;
        return std::exchange(password_, std::nullopt);
    }

private:
    std::optional<std::wstring> password_;
    bool once_ = false;
};

}  // namespace tovar
