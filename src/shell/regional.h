#pragma once
#include <array>
#include <cstdint>
#include <string>

namespace tovar {

/// Calendar date; month 1-12, day 1-31.
struct CalendarDate {
    int year = 0, month = 0, day = 0;
};

/// Time of day; hour 0-23, minute and second 0-59.
struct ClockTime {
    int hour = 0, minute = 0, second = 0;
};

/// The user's regional settings as far as texts need them. Defaults are those of English (United States).
struct RegionalSettings {
    std::wstring groupSeparator = L",";
    std::wstring grouping = L"3;0";  ///< sizes of the digit groups, as LOCALE_SGROUPING writes them
    std::wstring decimalSeparator = L".";
    std::wstring dateSeparator = L"/";
    std::wstring timeSeparator = L":";
    std::wstring shortDate = L"M/d/yyyy";  ///< picture, as LOCALE_SSHORTDATE writes it

    // Names for the pictures that some users choose; months from January, weekdays from Monday.
    std::array<std::wstring, 12> months = {L"January", L"February", L"March",     L"April",   L"May",      L"June",
                                           L"July",    L"August",   L"September", L"October", L"November", L"December"};
    std::array<std::wstring, 12> shortMonths = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                                L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
    std::array<std::wstring, 7> weekdays = {L"Monday", L"Tuesday",  L"Wednesday", L"Thursday",
                                            L"Friday", L"Saturday", L"Sunday"};
    std::array<std::wstring, 7> shortWeekdays = {L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat", L"Sun"};
};

/// "#,###": digits in groups; nothing at all for 0.
[[nodiscard]] std::wstring groupedNumber(std::uint64_t number, const RegionalSettings& regional);

/// "0.0" of tenths, such as 425 -> "42.5", -5 -> "-0.5".
[[nodiscard]] std::wstring tenthsText(std::int32_t tenths, const RegionalSettings& regional);

/// "short date": by the user's own picture. d, dd, M, MM, y, yy and yyyy are numbers, ddd to MMMM names; text between
/// apostrophes and everything else stands as it is. A month or day out of range is written as the number it is.
[[nodiscard]] std::wstring shortDateText(const CalendarDate& date, const RegionalSettings& regional);

/// "short time": hours and minutes, two digits each, in the 24-hour form.
[[nodiscard]] std::wstring shortTimeText(const ClockTime& time, const RegionalSettings& regional);

/// "yy/mm/dd": two digits each, joined by the date separator; of the year the last two.
[[nodiscard]] std::wstring yearMonthDayText(const CalendarDate& date, const RegionalSettings& regional);

/// "hh:nn:ss": two digits each, joined by the time separator.
[[nodiscard]] std::wstring hourMinuteSecondText(const ClockTime& time, const RegionalSettings& regional);

}  // namespace tovar
