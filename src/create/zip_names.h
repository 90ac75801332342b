#pragma once
#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "archivers/convention/zip_abi.h"

namespace tovar {

/// The name list of one call of the zip library.
class ZipNames {
public:
    /// Names of one call: all slots but the one of the repeated first name.
    static constexpr std::size_t kMost = archiver::zip_abi::kNameSlots - 1;

    /// @param archive  its file name; 8-bit texts that outlive the list, as the names do
    /// @param names    at most kMost are taken
    ZipNames(const std::string& archive, std::span<const std::string> names);

    /// The command record: n names give a count of n + 1, with the first one in the slots 0 and 1; none a count of 0.
    [[nodiscard]] archiver::zip_abi::Command record() const noexcept { return {count_, archive_, slots_.data()}; }

private:
    const char* archive_;
    std::int32_t count_ = 0;
    std::array<const char*, archiver::zip_abi::kNameSlots> slots_{};
};

}  // namespace tovar
