#pragma once
#include <cstdint>
#include <string_view>

namespace archiver {

/// What a return code means, in few English words without a full stop, such as "the archive does not exist".
[[nodiscard]] std::string_view messageOf(std::int32_t code) noexcept;

}  // namespace archiver
