#include "archivers/convention/system.h"

#include <windows.h>

namespace archiver {

namespace {

Moment momentOf(const FILETIME& time) noexcept {
    return momentOfFileTime(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
}

}  // namespace

std::optional<Moment> utcOfLocal(DosStamp local) noexcept {
    FILETIME time;
    SYSTEMTIME fields;
    SYSTEMTIME utc;
    if (!::DosDateTimeToFileTime(local.date, local.time, &time) || !::FileTimeToSystemTime(&time, &fields) ||
        !::TzSpecificLocalTimeToSystemTime(nullptr, &fields, &utc) || !::SystemTimeToFileTime(&utc, &time)) {
        return std::nullopt;
    }
    return momentOf(time);
}

std::optional<Moment> lastWriteTime(const std::filesystem::path& file) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!::GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data)) {
        return std::nullopt;
    }
    return momentOf(data.ftLastWriteTime);
}

}  // namespace archiver
