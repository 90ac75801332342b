#include "archivers/formats/moments.h"

#include <time.h>

namespace archiver {

std::optional<std::tm> localCalendar(std::int64_t seconds) noexcept {
    std::tm local{};
    const __time64_t time = seconds;
    if (::_localtime64_s(&local, &time) != 0) return std::nullopt;
    return local;
}

}  // namespace archiver
