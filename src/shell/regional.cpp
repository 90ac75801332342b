#include "shell/regional.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace tovar {
namespace {

// The digits of a number, on the stack: lists show these texts for every member of an archive, and std::to_wstring,
// which goes through the formatted output of the C library, takes ten times as long.
class Digits {
public:
    static constexpr std::size_t kMost = std::numeric_limits<std::uint64_t>::digits10 + 1;

    explicit Digits(std::uint64_t number) {
        for (; number != 0; number /= 10) characters_[--start_] = static_cast<wchar_t>(L'0' + number % 10);
    }
    Digits(const Digits&) = delete;
    Digits& operator=(const Digits&) = delete;

    // Nothing for 0.
    [[nodiscard]] std::wstring_view text() const { return {characters_.data() + start_, kMost - start_}; }

private:
    std::array<wchar_t, kMost> characters_{};
    std::size_t start_ = kMost;
};

void appendDecimal(std::wstring& text, std::uint64_t number, std::size_t width = 1) {
    const Digits digits(number);
    if (digits.text().size() < width) text.append(width - digits.text().size(), L'0');
    text += digits.text();
}

void appendPadded(std::wstring& text, int number, std::size_t width) {
    if (number < 0) text += L'-';
    appendDecimal(text, static_cast<std::uint64_t>(std::abs(static_cast<std::int64_t>(number))), width);
}

std::wstring padded(int number, std::size_t width) {
    std::wstring text;
    appendPadded(text, number, width);
    return text;
}

std::wstring joined(int first, int second, int third, const std::wstring& separator) {
    std::wstring text;
    text.reserve(6 + 2 * separator.size());
    appendPadded(text, first, 2);
    text += separator;
    appendPadded(text, second, 2);
    text += separator;
    appendPadded(text, third, 2);
    return text;
}

int yearOfCentury(int year) { return std::abs(year % 100); }

// Sizes of the digit groups from the right; "3;0" goes on in threes, "3" has one group and then no more.
class GroupSizes {
public:
    explicit GroupSizes(std::wstring_view grouping) {
        for (const wchar_t each : grouping) {
            if (each >= L'1' && each <= L'9' && count_ < sizes_.size()) {
                sizes_[count_++] = static_cast<std::uint8_t>(each - L'0');
            }
        }
        repeatsLast_ = grouping.ends_with(L'0') && count_ > 0;
    }

    // Of the n-th group; everything that is left when there is no such group.
    [[nodiscard]] std::size_t at(std::size_t group) const {
        if (group < count_) return sizes_[group];
        return repeatsLast_ ? sizes_[count_ - 1] : std::wstring::npos;
    }

private:
    std::array<std::uint8_t, Digits::kMost> sizes_{};
    std::size_t count_ = 0;
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
    const Digits decimal(number);
    std::wstring_view digits = decimal.text();
    std::size_t separators = 0;
    for (std::size_t left = digits.size(); left > sizes.at(separators); ++separators) left -= sizes.at(separators);

    std::wstring text(digits.size() + separators * regional.groupSeparator.size(), L'\0');
    auto end = text.end();  // what stands behind it is done
    for (std::size_t group = 0; group < separators; ++group) {
        end = std::copy_backward(digits.end() - static_cast<std::ptrdiff_t>(sizes.at(group)), digits.end(), end);
        end = std::ranges::copy_backward(regional.groupSeparator, end).out;
        digits.remove_suffix(sizes.at(group));
    }
    std::ranges::copy_backward(digits, end);
    return text;
}

std::wstring tenthsText(std::int32_t tenths, const RegionalSettings& regional) {
    const std::int64_t magnitude = std::abs(static_cast<std::int64_t>(tenths));
    std::wstring text = tenths < 0 ? L"-" : L"";
    appendDecimal(text, static_cast<std::uint64_t>(magnitude / 10));
    text += regional.decimalSeparator;
    appendDecimal(text, static_cast<std::uint64_t>(magnitude % 10));
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
    return padded(time.hour, 2) + regional.timeSeparator + padded(time.minute, 2);
}

std::wstring yearMonthDayText(const CalendarDate& date, const RegionalSettings& regional) {
    return joined(yearOfCentury(date.year), date.month, date.day, regional.dateSeparator);
}

std::wstring hourMinuteSecondText(const ClockTime& time, const RegionalSettings& regional) {
    return joined(time.hour, time.minute, time.second, regional.timeSeparator);
}

}  // namespace tovar
