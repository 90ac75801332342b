#include "archivers/commands/amount_texts.h"

#include <cstdio>
#include <ctime>
#include <iterator>

#include "archivers/formats/moments.h"

namespace archiver {
namespace {

constexpr const char* kUnits[] = {"bytes", "KB", "MB", "GB", "TB", "PB", "EB"};

std::string withThousands(std::uint64_t number) {
    const std::string digits = std::to_string(number);
    std::string text;
    for (std::size_t place = 0; place < digits.size(); ++place) {
        if (place > 0 && (digits.size() - place) % 3 == 0) text += ',';
        text += digits[place];
    }
    return text;
}

std::string counted(std::uint64_t count, const char* unit) {
    return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
}

}  // namespace

std::string sizeText(std::uint64_t bytes) {
    if (bytes == 1) return "1 byte";
    std::size_t unit = 0;
    while (unit + 1 < std::size(kUnits) && bytes >> 10 * (unit + 1) != 0) ++unit;
    const std::uint64_t size = std::uint64_t{1} << 10 * unit;
    const std::uint64_t whole = bytes / size;
    std::uint64_t rest = bytes % size;
    std::string text = withThousands(whole);
    const int decimals = unit == 0 || whole >= 100 ? 0 : whole >= 10 ? 1 : 2;
    for (int decimal = 0; decimal < decimals; ++decimal) {
        rest *= 10;  // below 2^64, as the largest unit is 2^60
        if (decimal == 0) text += '.';
        text += static_cast<char>('0' + rest / size);
        rest %= size;
    }
    return text + " " + kUnits[unit];
}

std::string exactSizeText(std::uint64_t bytes) {
    if (bytes < 1024) return sizeText(bytes);
    return withThousands(bytes) + " bytes (" + sizeText(bytes) + ")";
}

std::string rateText(std::uint64_t bytesPerSecond) { return sizeText(bytesPerSecond) + "/s"; }

std::string durationText(std::uint64_t seconds) {
    constexpr std::uint64_t kMinute = 60;
    constexpr std::uint64_t kHour = 60 * kMinute;
    if (seconds == 0) return "less than a second";
    if (seconds < kMinute) return counted(seconds, "second");
    if (seconds >= 24 * kHour) return "more than a day";

    const bool hours = seconds >= kHour;
    const std::uint64_t larger = seconds / (hours ? kHour : kMinute);
    const std::uint64_t smaller = hours ? seconds % kHour / kMinute : seconds % kMinute;
    std::string text = counted(larger, hours ? "hour" : "minute");
    const bool coarse = !hours && larger >= 10;
    if (smaller > 0 && !coarse) text.append(1, ' ').append(counted(smaller, hours ? "minute" : "second"));
    return text;
}

std::string timeText(const std::optional<Moment>& moment) {
    const std::optional<std::tm> local = moment ? localCalendar(moment->seconds) : std::nullopt;
    if (!local) return "unknown";
    char text[80];
    std::snprintf(text, sizeof text, "%04lld-%02d-%02d %02d:%02d:%02d", local->tm_year + 1900LL, local->tm_mon + 1,
                  local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec);
    return text;
}

}  // namespace archiver
