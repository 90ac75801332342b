#include "shell/win32/regional_settings.h"

#include <windows.h>

#include <array>

namespace tovar {
namespace {

// The longest of the texts, a picture or name, has 80 characters.
void load(LCTYPE type, std::wstring& text) {
    std::array<wchar_t, 128> buffer{};
    const int length = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer.data(), static_cast<int>(buffer.size()));
    if (length > 0) text = buffer.data();
}

}  // namespace

RegionalSettings loadRegionalSettings() {
    RegionalSettings settings;
    load(LOCALE_STHOUSAND, settings.groupSeparator);
    load(LOCALE_SGROUPING, settings.grouping);
    load(LOCALE_SDECIMAL, settings.decimalSeparator);
    load(LOCALE_SDATE, settings.dateSeparator);
    load(LOCALE_STIME, settings.timeSeparator);
    load(LOCALE_SSHORTDATE, settings.shortDate);
    // Names of months and weekdays have consecutive numbers; weekdays begin with Monday.
    for (std::size_t month = 0; month < settings.months.size(); ++month) {
        load(LOCALE_SMONTHNAME1 + static_cast<LCTYPE>(month), settings.months[month]);
        load(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month), settings.shortMonths[month]);
    }
    for (std::size_t day = 0; day < settings.weekdays.size(); ++day) {
        load(LOCALE_SDAYNAME1 + static_cast<LCTYPE>(day), settings.weekdays[day]);
        load(LOCALE_SABBREVDAYNAME1 + static_cast<LCTYPE>(day), settings.shortWeekdays[day]);
    }
    return settings;
}

}  // namespace tovar
