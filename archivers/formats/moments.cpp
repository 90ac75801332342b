#include "archivers/formats/moments.h"

namespace archiver {
namespace {

constexpr DosStamp kEarliest{(1 << 5) | 1, 0};
constexpr DosStamp kLatest{(127 << 9) | (12 << 5) | 31, (23 << 11) | (59 << 5) | 29};

}  // namespace

DosStamp dosStampOf(const Moment& moment) noexcept {
    // A day more than any time zone can shift: what lies outside needs no calendar, and some calendars refuse it.
    constexpr std::int64_t kDayBefore1980 = 315532800 - 86400;
    constexpr std::int64_t kDayAfter2107 = 4354819200 + 86400;
    if (moment.seconds < kDayBefore1980) return kEarliest;
    if (moment.seconds > kDayAfter2107) return kLatest;

    const std::optional<std::tm> local = localCalendar(moment.seconds);
    if (!local || local->tm_year < 80) return kEarliest;
    if (local->tm_year > 80 + 127) return kLatest;
    const int second = local->tm_sec > 59 ? 59 : local->tm_sec;  // a leap second has no word of its own
    return {static_cast<std::uint16_t>((local->tm_year - 80) << 9 | (local->tm_mon + 1) << 5 | local->tm_mday),
            static_cast<std::uint16_t>(local->tm_hour << 11 | local->tm_min << 5 | second / 2)};
}

std::optional<Moment> momentOfDosStamp(const DosStamp& stamp) noexcept {
    std::tm local{};
    local.tm_sec = (stamp.time & 0x1F) * 2;
    local.tm_min = stamp.time >> 5 & 0x3F;
    local.tm_hour = stamp.time >> 11;
    local.tm_mday = stamp.date & 0x1F;
    local.tm_mon = (stamp.date >> 5 & 0x0F) - 1;
    local.tm_year = (stamp.date >> 9) + 80;
    local.tm_isdst = -1;
    if (local.tm_mday == 0 || local.tm_mon < 0 || local.tm_mon > 11 || local.tm_hour > 23 || local.tm_min > 59 ||
        local.tm_sec > 59) {
        return std::nullopt;
    }
    const std::time_t time = std::mktime(&local);
    if (time == static_cast<std::time_t>(-1)) return std::nullopt;
    return Moment{static_cast<std::int64_t>(time), 0};
}

Moment momentOfFileTime(std::uint64_t fileTime) noexcept {
    constexpr std::uint64_t kStepsPerSecond = 10'000'000;
    constexpr std::int64_t kFrom1601To1970 = 11'644'473'600;
    return {static_cast<std::int64_t>(fileTime / kStepsPerSecond) - kFrom1601To1970,
            static_cast<std::uint32_t>(fileTime % kStepsPerSecond * 100)};
}

}  // namespace archiver
