#pragma once
#include <cstdint>
#include <stdexcept>
#include <string>

namespace tovar {

/// What cRegistry raises: a number and a source by which automation callers know it, and a description.
class RegistryError : public std::runtime_error {
public:
    static constexpr std::int32_t kNumber = 26001;

    explicit RegistryError(std::wstring description)
        : std::runtime_error("registry error"), description_(std::move(description)) {}

    [[nodiscard]] std::int32_t number() const noexcept { return kNumber; }
    [[nodiscard]] std::wstring source() const { return L"TovarEx.cRegistry"; }
    [[nodiscard]] const std::wstring& description() const noexcept { return description_; }

private:
    std::wstring description_;
};

}  // namespace tovar
