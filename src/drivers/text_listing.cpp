#include "drivers/text_listing.h"

#include <algorithm>
#include <limits>

namespace tovar {
namespace {

constexpr int kHeadingLines = 2;
constexpr int kMostLines = 256;
constexpr std::wstring_view kClosing = L"--------------";
constexpr std::wstring_view kBlanks = L" \t\r";

constexpr std::size_t at(ListedField field) { return static_cast<std::size_t>(field); }

/// Cuts the text behind its last column off.
/// @return the column; empty when there is none
std::wstring_view takeLastColumn(std::wstring_view& rest) {
    const std::size_t end = rest.find_last_not_of(kBlanks);
    if (end == rest.npos) {
        rest = {};
        return {};
    }
    const std::size_t before = rest.find_last_of(kBlanks, end);
    const std::size_t start = before == rest.npos ? 0 : before + 1;
    const std::wstring_view column = rest.substr(start, end + 1 - start);
    rest = rest.substr(0, start);
    return column;
}

std::wstring_view trimmed(std::wstring_view text) {
    const std::size_t start = text.find_first_not_of(kBlanks);
    return start == text.npos ? std::wstring_view() : text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

bool isDigit(wchar_t character) { return character >= L'0' && character <= L'9'; }

/// A number of digits, grouped or not; 0 for anything else.
std::uint64_t numberOf(std::wstring_view text) {
    std::uint64_t number = 0;
    for (const wchar_t character : text) {
        if (character == L',' || character == L'.') continue;
        if (!isDigit(character) || number > std::numeric_limits<std::uint64_t>::max() / 10 - 1) return 0;
        number = number * 10 + static_cast<std::uint64_t>(character - L'0');
    }
    return number;
}

/// "42.5%" in tenths.
std::int16_t perMilleOf(std::wstring_view text) {
    const std::size_t point = std::min(text.find_first_of(L".,"), text.size());
    const std::uint64_t whole = numberOf(text.substr(0, std::min(point, text.find(L'%'))));
    const wchar_t tenth = point + 1 < text.size() ? text[point + 1] : L'0';
    if (whole > 3000) return 0;
    return static_cast<std::int16_t>(whole * 10 + (isDigit(tenth) ? static_cast<std::uint64_t>(tenth - L'0') : 0));
}

struct ThreeNumbers {
    std::uint32_t first, second, third;
};

/// Three numbers of at most four digits between separators.
std::optional<ThreeNumbers> threeNumbers(std::wstring_view text, std::wstring_view separators) {
    std::uint32_t numbers[3] = {};
    std::size_t digits[3] = {};
    std::size_t part = 0;
    for (const wchar_t character : text) {
        if (isDigit(character)) {
            if (++digits[part] > 4) return std::nullopt;
            numbers[part] = numbers[part] * 10 + static_cast<std::uint32_t>(character - L'0');
        } else if (separators.find(character) == separators.npos || ++part > 2) {
            return std::nullopt;
        }
    }
    if (part != 2 || std::ranges::count(digits, 0U) != 0) return std::nullopt;
    return ThreeNumbers{numbers[0], numbers[1], numbers[2]};
}

/// "13:50:34"; the word counts steps of two seconds. 0 for what is no time.
std::uint16_t dosTimeOf(std::wstring_view text) {
    const auto time = threeNumbers(text, L":");
    if (!time || time->first > 23 || time->second > 59 || time->third > 59) return 0;
    return static_cast<std::uint16_t>(time->first << 11 | time->second << 5 | time->third / 2);
}

std::uint32_t hexadecimalOf(std::wstring_view text) {
    std::uint32_t number = 0;
    if (text.size() > 8) return 0;
    for (const wchar_t character : text) {
        const std::size_t digit = std::wstring_view(L"0123456789abcdefABCDEF").find(character);
        if (digit == std::wstring_view::npos) return 0;
        number = number << 4 | static_cast<std::uint32_t>(digit < 16 ? digit : digit - 6);
    }
    return number;
}

void readLine(std::wstring_view line, EntryTable& entries, ListedTexts& texts) {
    ListedFields fields;
    for (std::size_t field = kListedFields; field-- > 0;) fields[field] = takeLastColumn(line);
    const std::wstring_view name = trimmed(line);
    if (name.empty()) return;
    EntryRecord record;
    record.original = numberOf(fields[at(ListedField::Original)]);
    record.packed = numberOf(fields[at(ListedField::Packed)]);
    record.ratio = perMilleOf(fields[at(ListedField::Ratio)]);
    record.date = dosDateOfText(fields[at(ListedField::Date)]).value_or(0);
    record.time = dosTimeOf(fields[at(ListedField::Time)]);
    record.crc = hexadecimalOf(fields[at(ListedField::Crc)]);
    texts.push_back(std::move(fields));
    try {
        const ListedFields& kept = texts.back();
        entries.add(record, name, kept[at(ListedField::Attributes)], kept[at(ListedField::Type)]);
    } catch (...) {
        texts.pop_back();  // both have the same members, also when memory runs out
        throw;
    }
}

}  // namespace

std::optional<std::uint16_t> dosDateOfText(std::wstring_view text) {
    const auto date = threeNumbers(text, L"-/.");
    if (!date) return std::nullopt;
    std::uint32_t year = date->first;
    if (year < 80) year += 100;
    if (year < 1000) year += 1900;
    if (year < 1980 || year > 2107 || date->second > 15 || date->third > 31) return std::nullopt;
    return static_cast<std::uint16_t>((year - 1980) << 9 | date->second << 5 | date->third);
}

bool readTextListing(std::wstring_view output, EntryTable& entries, ListedTexts& texts) {
    for (int line = 0; !output.empty() && line < kHeadingLines + kMostLines + 1; ++line) {
        const std::size_t end = std::min(output.find(L'\n'), output.size());
        const std::wstring_view text = output.substr(0, end);
        output.remove_prefix(std::min(end + 1, output.size()));
        if (line < kHeadingLines) continue;
        if (text.starts_with(kClosing)) return true;
        // The line behind the last one is looked at for the closing line only.
        if (line < kHeadingLines + kMostLines) readLine(text, entries, texts);
    }
    return false;
}

}  // namespace tovar
