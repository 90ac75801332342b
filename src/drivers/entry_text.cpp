#include "drivers/entry_text.h"

namespace tovar {
namespace {

constexpr int kDosEpoch = 1980;
constexpr int kStoredEpoch = 1900;

struct DosDate {
    int year, month, day;
};

DosDate dosDateOf(std::uint16_t word) noexcept { return {kDosEpoch + (word >> 9), (word >> 5) & 0x0F, word & 0x1F}; }

struct DosTime {
    int hour, minute, twoSeconds;
};

DosTime dosTimeOf(std::uint16_t word) noexcept { return {word >> 11, (word >> 5) & 0x3F, word & 0x1F}; }

int daysIn(int year, int month) noexcept {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return month == 2 && leap ? 29 : kDays[month - 1];
}

// 0 to 99
void appendTwoDigits(std::wstring& text, int number) {
    text += static_cast<wchar_t>(L'0' + number / 10);
    text += static_cast<wchar_t>(L'0' + number % 10);
}

}  // namespace

std::wstring ratioText(std::int16_t perMille, const RegionalSettings& regional) {
    return tenthsText(perMille, regional) + L'%';
}

std::optional<CalendarDate> calendarDateOf(std::uint16_t dosDate) noexcept {
    const auto [year, month, day] = dosDateOf(dosDate);
    if (month < 1 || month > 12 || day < 1 || day > daysIn(year, month)) {
        return std::nullopt;
    }
    return CalendarDate{year, month, day};
}

std::optional<ClockTime> clockTimeOf(std::uint16_t dosTime) noexcept {
    const auto [hour, minute, twoSeconds] = dosTimeOf(dosTime);
    if (hour > 23 || minute > 59 || twoSeconds > 29) {
        return std::nullopt;
    }
    return ClockTime{hour, minute, twoSeconds};
}

std::wstring storedDateText(std::uint16_t dosDate) {
    const auto [year, month, day] = dosDateOf(dosDate);
    std::wstring text = std::to_wstring(year - kStoredEpoch);
    text += L'-';
    appendTwoDigits(text, month);
    text += L'-';
    appendTwoDigits(text, day);
    return text;
}

std::wstring dateText(std::uint16_t dosDate, const RegionalSettings& regional) {
    const std::optional<CalendarDate> date = calendarDateOf(dosDate);
    return date ? yearMonthDayText(*date, regional) : storedDateText(dosDate);
}

std::wstring timeText(std::uint16_t dosTime) {
    const auto [hour, minute, twoSeconds] = dosTimeOf(dosTime);
    std::wstring text;
    text.reserve(8);
    appendTwoDigits(text, hour);
    text += L':';
    appendTwoDigits(text, minute);
    text += L':';
    appendTwoDigits(text, twoSeconds);
    return text;
}

std::wstring crcText(std::uint32_t crc) {
    std::wstring text;
    for (int shift = 12; shift >= 0; shift -= 4) {
        text += L"0123456789ABCDEF"[(crc >> shift) & 0x0F];
    }
    return text;
}

}  // namespace tovar
