#include "archivers/convention/system.h"

#include <sys/stat.h>

#include <ctime>

namespace archiver {

std::optional<Moment> utcOfLocal(DosStamp local) noexcept {
    tm fields{};
    fields.tm_year = (local.date >> 9) + 80;
    fields.tm_mon = ((local.date >> 5) & 0x0F) - 1;
    fields.tm_mday = local.date & 0x1F;
    fields.tm_hour = local.time >> 11;
    fields.tm_min = (local.time >> 5) & 0x3F;
    fields.tm_sec = (local.time & 0x1F) * 2;
    fields.tm_isdst = -1;
    const tm asked = fields;
    const bool time = asked.tm_hour < 24 && asked.tm_min < 60 && asked.tm_sec < 60;
    const time_t seconds = mktime(&fields);
    // A date that does not exist comes back as another one.
    if (!time || asked.tm_mday != fields.tm_mday || asked.tm_mon != fields.tm_mon) {
        return std::nullopt;
    }
    return Moment{seconds, 0};
}

std::optional<Moment> lastWriteTime(const std::filesystem::path& file) noexcept {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Moment{status.st_mtim.tv_sec, static_cast<std::uint32_t>(status.st_mtim.tv_nsec)};
}

}  // namespace archiver
