#pragma once
#include <cstdint>

#include "archivers/convention/return_codes.h"

namespace archiver::unace {

/// What the library answers for a reader's or an unpacker's code.
/// @param passwordSet  an encrypted member that does not open tells a wrong password from none by it
[[nodiscard]] std::int32_t resultOf(ReturnCode code, bool passwordSet) noexcept;

}  // namespace archiver::unace
