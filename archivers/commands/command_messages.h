#pragma once
#include <cstdint>
#include <string_view>

#include "archivers/packing/pack_events.h"

namespace archiver {

/// What a return code means, in few English words without a full stop, such as "the archive does not exist".
[[nodiscard]] std::string_view messageOf(std::int32_t code) noexcept;

/// Why a source is not packed as it should be, likewise.
[[nodiscard]] std::string_view messageOf(PackWarning warning) noexcept;

}  // namespace archiver
