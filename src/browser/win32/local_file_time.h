#pragma once
#include <cstdint>

#include "shell/regional.h"

namespace tovar {

/// @return steps of 100 nanoseconds since 1601, UTC, of a local time by the rules of its own season; 0 for none
[[nodiscard]] std::uint64_t fileTimeOfLocal(const CalendarDate& date, const ClockTime& time) noexcept;

}  // namespace tovar
