#include "archivers/convention/system.h"

#include <windows.h>

namespace archiver {

namespace {

constexpr DosMoment kEarliest{0x0021, 0x0000};  // 1980-01-01 00:00:00
constexpr DosMoment kLast{0xFF9F, 0xBF7D};      // 2107-12-31 23:59:58

constexpr std::int64_t kStepsPerSecond = 10'000'000;
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;

FILETIME join(std::int64_t steps) noexcept {
    return {static_cast<DWORD>(steps & 0xFFFFFFFF), static_cast<DWORD>(steps >> 32)};
}

std::optional<Moment> momentOf(const FILETIME& time) noexcept {
    const std::int64_t steps = static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    return Moment{steps / kStepsPerSecond - kSecondsTo1970, static_cast<std::uint32_t>(steps % kStepsPerSecond * 100)};
}

}  // namespace

std::optional<Moment> utcOfLocal(DosMoment local) noexcept {
    FILETIME time;
    SYSTEMTIME fields;
    SYSTEMTIME utc;
    if (!::DosDateTimeToFileTime(local.date, local.time, &time) || !::FileTimeToSystemTime(&time, &fields) ||
        !::TzSpecificLocalTimeToSystemTime(nullptr, &fields, &utc) || !::SystemTimeToFileTime(&utc, &time)) {
        return std::nullopt;
    }
    return momentOf(time);
}

DosMoment localOfUtc(Moment moment) noexcept {
    constexpr std::int64_t year1980 = 315'532'800;
    constexpr std::int64_t year2108 = 4'354'819'200;
    constexpr std::int64_t day = 86'400;
    if (moment.seconds < year1980 - day) {
        return kEarliest;
    }
    if (moment.seconds > year2108 + day) {
        return kLast;
    }
    const FILETIME time = join((moment.seconds + kSecondsTo1970) * kStepsPerSecond);
    SYSTEMTIME utc;
    SYSTEMTIME fields;
    if (!::FileTimeToSystemTime(&time, &utc) || !::SystemTimeToTzSpecificLocalTime(nullptr, &utc, &fields) ||
        fields.wYear < 1980) {
        return kEarliest;
    }
    if (fields.wYear > 2107) {
        return kLast;
    }
    return {static_cast<std::uint16_t>((fields.wYear - 1980) << 9 | fields.wMonth << 5 | fields.wDay),
            static_cast<std::uint16_t>(fields.wHour << 11 | fields.wMinute << 5 | fields.wSecond / 2)};
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
