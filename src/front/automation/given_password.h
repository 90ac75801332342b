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
        given_ = true;
    }
    void forget() noexcept {
        wipe(password_);
        given_ = once_ = false;
    }
    /// It is given once: a driver that asks again has found it wrong, and would ask for ever.
    void giveOnce(std::wstring password) {
        give(std::move(password));
        once_ = true;
    }
    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle, std::wstring_view) override {
        if (!given_) return std::nullopt;
        std::wstring password = password_;
        if (once_) forget();
        return password;
    }

private:
    std::wstring password_;
    bool given_ = false;
    bool once_ = false;
};

}  // namespace tovar
