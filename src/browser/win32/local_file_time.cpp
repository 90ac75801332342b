#include "browser/win32/local_file_time.h"

#include <windows.h>

namespace tovar {

std::uint64_t fileTimeOfLocal(const CalendarDate& date, const ClockTime& time) noexcept {
    SYSTEMTIME local{}, utc{};
    local.wYear = static_cast<WORD>(date.year);
    local.wMonth = static_cast<WORD>(date.month);
    local.wDay = static_cast<WORD>(date.day);
    local.wHour = static_cast<WORD>(time.hour);
    local.wMinute = static_cast<WORD>(time.minute);
    local.wSecond = static_cast<WORD>(time.second);
    FILETIME result{};
    if (!::TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc) || !::SystemTimeToFileTime(&utc, &result)) return 0;
    return std::uint64_t{result.dwHighDateTime} << 32 | result.dwLowDateTime;
}

}  // namespace tovar
