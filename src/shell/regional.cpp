#include "shell/regional.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace tovar {
namespace {

std::wstring padded(int number, std::size_t width) {
    std::wstring text = std::to_wstring(number);
    if (text.size() < width) text.insert(0, width - text.size(), L'0');
    return text;
}

std::wstring twoDigits(int number) { return padded(number, 2); }

int yearOfCentury(int year) { return std::abs(year % 100); }

// Sizes of the digit groups from the right; "3;0" goes on in threes, "3" has one group and then no more.
class GroupSizes {
public:
    explicit GroupSizes(std::wstring_view grouping) {
        for (const wchar_t each : grouping) {
            if (each >= L'1' && each <= L'9') sizes_.push_back(static_cast<std::size_t>(each - L'0'));
        }
        repeatsLast_ = grouping.ends_with(L'0') && !sizes_.empty();
    }

    // Of the n-th group; everything that is left when there is no such group.
    [[nodiscard]] std::size_t at(std::size_t group) const {
        if (group < sizes_.size()) return sizes_[group];
        return repeatsLast_ ? sizes_.back() : std::wstring::npos;
    }

private:
    std::vector<std::size_t> sizes_;
    bool repeatsLast_ = false;
};

// From Monday, 0. Zeller's congruence.
std::size_t weekdayOf(const CalendarDate& date) {
    const int month = date.month < 3 ? date.month + 12 : date.month;
    const int year = date.month < 3 ? date.year - 1 : date.year;
    const int sinceSaturday = date.day + 13 * (month + 1) / 5 + year + year / 4 - year / 100 + year / 400;
    return static_cast<std::size_t>(((sinceSaturday + 5) % 7 + 7) % 7);
}

bool isCalendarDate(const CalendarDate& date) {
    return date.year >= 0 && date.year <= 9999 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= 31;
}

// One run of equal letters in a picture, such as "yyyy".
std::wstring fieldText(wchar_t letter, std::size_t length, const CalendarDate& date, const RegionalSettings& regional) {
    const bool hasNames = isCalendarDate(date);
    const auto month = static_cast<std::size_t>(date.month) - 1;
    switch (letter) {
        case L'd':
            if (length <= 2 || !hasNames) return padded(date.day, length < 2 ? 1 : 2);
            return length == 3 ? regional.shortWeekdays[weekdayOf(date)] : regional.weekdays[weekdayOf(date)];
        case L'M':
            if (length <= 2 || !hasNames) return padded(date.month, length < 2 ? 1 : 2);
            return length == 3 ? regional.shortMonths[month] : regional.months[month];
        case L'y':
            return length <= 2 ? padded(yearOfCentury(date.year), length) : padded(date.year, 4);
        default:  // g: the era, which the common calendar does not write
            return {};
    }
}

// Copies a text between apostrophes, two of which stand for one; answers where the picture goes on.
std::size_t copyQuoted(std::wstring_view picture, std::size_t position, std::wstring& text) {
    while (++position < picture.size()) {
        if (picture[position] == L'\'') {
            if (!picture.substr(position + 1).starts_with(L'\'')) return position + 1;
            ++position;
        }
        text += picture[position];
    }
    return position;
}

}  // namespace

std::wstring groupedNumber(std::uint64_t number, const RegionalSettings& regional) {
    if (number == 0) return {};
    const GroupSizes sizes(regional.grouping);
    std::wstring text = std::to_wstring(number);
    std::size_t left = text.size();
    for (std::size_t group = 0; left > sizes.at(group); ++group) {
        left -= sizes.at(group);
        text.insert(left, regional.groupSeparator);
    }
    return text;
}

std::wstring tenthsText(std::int32_t tenths, const RegionalSettings& regional) {
    const std::int64_t magnitude = std::abs(static_cast<std::int64_t>(tenths));
    std::wstring text = tenths < 0 ? L"-" : L"";
    text += std::to_wstring(magnitude / 10);
    text += regional.decimalSeparator;
    text += std::to_wstring(magnitude % 10);
    return text;
}

std::wstring shortDateText(const CalendarDate& date, const RegionalSettings& regional) {
    const std::wstring_view picture = regional.shortDate;
    std::wstring text;
    for (std::size_t position = 0; position < picture.size();) {
        const wchar_t letter = picture[position];
        if (letter == L'\'') {
            position = copyQuoted(picture, position, text);
            continue;
        }
        const std::size_t end = std::min(picture.find_first_not_of(letter, position), picture.size());
        if (letter == L'd' || letter == L'M' || letter == L'y' || letter == L'g') {
            text += fieldText(letter, end - position, date, regional);
        } else {
            text += picture.substr(position, end - position);
        }
        position = end;
    }
    return text;
}

std::wstring shortTimeText(const ClockTime& time, const RegionalSettings& regional) {
    return twoDigits(time.hour) + regional.timeSeparator + twoDigits(time.minute);
}

std::wstring yearMonthDayText(const CalendarDate& date, const RegionalSettings& regional) {
    return twoDigits(yearOfCentury(date.year)) + regional.dateSeparator + twoDigits(date.month) +
           regional.dateSeparator + twoDigits(date.day);
}

std::wstring hourMinuteSecondText(const ClockTime& time, const RegionalSettings& regional) {
    return twoDigits(time.hour) + regional.timeSeparator + twoDigits(time.minute) + regional.timeSeparator +
           twoDigits(time.second);
}

}  // namespace tovar
