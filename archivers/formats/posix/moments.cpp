#include "archivers/formats/moments.h"

namespace archiver {

std::optional<std::tm> localCalendar(std::int64_t seconds) noexcept {
    std::tm local{};
    const auto time = static_cast<std::time_t>(seconds);
    if (::localtime_r(&time, &local) == nullptr) return std::nullopt;
    return local;
}

}  // namespace archiver
