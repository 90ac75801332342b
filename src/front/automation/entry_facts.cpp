#include "front/automation/entry_facts.h"

#include <chrono>

namespace tovar {

std::wstring entryPath(const ArchiveDriver& driver, std::uint32_t index) {
    std::wstring path = driver.FilePath(index);
    if (path.starts_with(L'\\')) path.erase(0, 1);
    path += driver.FileName(index);
    if (!path.empty() && !path.ends_with(L'\\') && entryIsFolder(driver, index)) path += L'\\';
    return path;
}

std::wstring entryName(const ArchiveDriver& driver, std::uint32_t index) {
    std::wstring name = driver.FileName(index);
    if (!name.empty()) return name;
    name = driver.FilePath(index);
    while (name.ends_with(L'\\')) name.pop_back();
    return name.substr(name.find_last_of(L'\\') + 1);
}

bool entryIsFolder(const ArchiveDriver& driver, std::uint32_t index) {
    return driver.FileName(index).empty() || driver.FileAttr(index).starts_with(L'd');
}

std::optional<double> entryDate(const ArchiveDriver& driver, std::uint32_t index) {
    using namespace std::chrono;
    constexpr double kSecondsOfDay = 24 * 60 * 60;
    const auto date = driver.calendarDate(index);
    if (!date) return std::nullopt;
    const year_month_day day(year(date->year), month(static_cast<unsigned>(date->month)),
                             std::chrono::day(static_cast<unsigned>(date->day)));
    if (!day.ok()) return std::nullopt;
    constexpr sys_days kZero = year(1899) / December / 30;
    const double days = static_cast<double>((sys_days(day) - kZero).count());
    const auto time = driver.clockTime(index);
    if (!time) return days;
    return days + (time->hour * 3600 + time->minute * 60 + time->second * 2) / kSecondsOfDay;
}

}  // namespace tovar
