#pragma once
#include <cstdint>
#include <optional>

#include "archivers/convention/abi.h"
#include "archivers/formats/archive_reader.h"

namespace archiver {

/// All bits set, the error value of the functions that give a DWORD.
inline constexpr std::uint32_t kNoDword = 0xFFFFFFFF;

/// Seconds since 1970 for a DWORD: 0 for what is earlier, the last second before kNoDword for what is later.
[[nodiscard]] constexpr std::uint32_t secondsOf(Moment moment) noexcept {
    if (moment.seconds < 0) {
        return 0;
    }
    return moment.seconds >= kNoDword ? kNoDword - 1 : static_cast<std::uint32_t>(moment.seconds);
}

/// @return nullopt for a moment that FILETIME can not hold: before 1601, or beyond 63 bits
[[nodiscard]] constexpr std::optional<FileTime> fileTimeOf(Moment moment) noexcept {
    constexpr std::int64_t stepsPerSecond = 10'000'000;
    constexpr std::int64_t secondsFrom1601 = 11'644'473'600;
    constexpr std::int64_t last = INT64_MAX / stepsPerSecond - secondsFrom1601 - 1;
    if (moment.seconds < -secondsFrom1601 || moment.seconds > last) {
        return std::nullopt;
    }
    const auto steps =
        static_cast<std::uint64_t>((moment.seconds + secondsFrom1601) * stepsPerSecond + moment.nanoseconds / 100);
    return FileTime{static_cast<std::uint32_t>(steps), static_cast<std::uint32_t>(steps >> 32)};
}

}  // namespace archiver
