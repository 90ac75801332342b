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

char32_t foldCase(char32_t character) noexcept {
    if (character < 0x80) {
        return character >= U'a' && character <= U'z' ? character - (U'a' - U'A') : character;
    }
    if (character >= 0x10000) {
        return character;  // the system has no case for these one by one
    }
    const auto unit = static_cast<wchar_t>(character);
    wchar_t upper = unit;
    return ::LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, &unit, 1, &upper, 1) == 1 ? upper : unit;
}

}  // namespace archiver
