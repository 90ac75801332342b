#include "browser/member_texts.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tovar {
namespace {

constexpr std::size_t kSizeWidth = 10;  ///< characters
constexpr std::size_t kRatioWidth = 6;

/// Right-justified in a fixed width; of a longer text its last characters. Such texts sort like their numbers.
std::wstring rightJustified(std::wstring_view text, std::size_t width) {
    std::wstring padded(width, L' ');
    padded += text;
    return padded.substr(padded.size() - width);
}

std::uint64_t sizeOf(const EntryRecord& record, ColumnKey column) {
    return column == ColumnKey::Packed ? record.packed : record.original;
}

}  // namespace

MemberTexts::MemberTexts(const ArchiveDriver& driver, KnownFileTypes& types, RegionalSettings regional)
    : driver_(driver),
      types_(types),
      regional_(std::move(regional)),
      wholeYears_(regional_),
      sizeKeys_(regional_, kSizeWidth),
      checksumDigits_(driver.description().columns.crcDigits) {
    wholeYears_.shortDate = withWholeYears(regional_.shortDate);
}

std::wstring MemberTexts::shortText(std::uint32_t entry, ColumnKey column) const {
    switch (column) {
        case ColumnKey::Name:
            return driver_.FileName(entry);
        case ColumnKey::Original:
        case ColumnKey::Packed:
            return shortSize(entry, column);
        case ColumnKey::Ratio:
            return rightJustified(driver_.FileRatio(entry), kRatioWidth);
        case ColumnKey::FileType:
            return types_.ofFile(driver_.FileName(entry)).name;
        case ColumnKey::Modified:
            return shortDate(entry) + L' ' + shortTime(entry);
        case ColumnKey::Attr:
            return driver_.FileAttr(entry);
        case ColumnKey::Type:
            return driver_.FileType(entry);
        case ColumnKey::Crc:
            return driver_.FileCRC(entry);
    }
    return {};
}

std::wstring MemberTexts::exactText(std::uint32_t entry, ColumnKey column) const {
    switch (column) {
        case ColumnKey::Original:
        case ColumnKey::Packed:
            return exactSize(entry, column);
        case ColumnKey::Ratio:
            return driver_.FileRatio(entry);
        case ColumnKey::Modified:
            return exactModified(entry);
        case ColumnKey::Crc:
            return exactChecksum(entry);
        default:
            return shortText(entry, column);
    }
}

bool MemberTexts::hasValue(ColumnKey column) noexcept {
    return column == ColumnKey::Original || column == ColumnKey::Packed || column == ColumnKey::Ratio ||
           column == ColumnKey::Modified || column == ColumnKey::Crc;
}

std::uint64_t MemberTexts::exactValue(std::uint32_t entry, ColumnKey column) const {
    const EntryRecord& record = driver_.entries().record(entry);
    switch (column) {
        case ColumnKey::Original:
        case ColumnKey::Packed:
            return sizeOf(record, column);
        case ColumnKey::Ratio:
            return static_cast<std::uint64_t>(record.ratio + 0x8000);
        case ColumnKey::Modified:
            if (!driver_.calendarDate(entry)) return 0;
            return std::uint64_t{record.date} << 17 | (driver_.clockTime(entry) ? record.time + 1U : 0U);
        case ColumnKey::Crc:
            return hasChecksum(record.crc) ? record.crc + std::uint64_t{1} : 0;
        default:
            return 0;
    }
}

std::wstring MemberTexts::shortSize(std::uint32_t entry, ColumnKey column) const {
    if (driver_.textsFollowRecords()) {
        return rightJustified(groupedNumber(sizeOf(driver_.entries().record(entry), column), regional_), kSizeWidth);
    }
    return rightJustified(column == ColumnKey::Packed ? driver_.FilePacked(entry) : driver_.FileOriginal(entry),
                          kSizeWidth);
}

std::wstring MemberTexts::exactSize(std::uint32_t entry, ColumnKey column) const {
    const std::uint64_t size = sizeOf(driver_.entries().record(entry), column);
    return size == 0 ? L"0" : groupedNumber(size, regional_);
}

std::wstring MemberTexts::shortDate(std::uint32_t entry) const {
    const auto date = driver_.calendarDate(entry);
    return date ? shortDateText(*date, regional_) : driver_.FileDate(entry);
}

std::wstring MemberTexts::shortTime(std::uint32_t entry) const {
    const auto time = driver_.clockTime(entry);
    return time ? shortTimeText(*time, regional_) : driver_.FILETIME(entry);
}

std::wstring MemberTexts::exactModified(std::uint32_t entry) const {
    const EntryRecord& record = driver_.entries().record(entry);
    const auto date = driver_.calendarDate(entry);
    auto time = driver_.clockTime(entry);
    if (record.date == 0 && record.time == 0 && driver_.textsFollowRecords()) return {};
    // Even seconds only: what a library lists of a member counts steps of two. Some could give the odd one as well, by
    // a function that would have to be asked for every member while the archive is listed, for a view that few look at.
    if (time) time->second *= 2;
    return (date ? shortDateText(*date, wholeYears_) : driver_.FileDate(entry)) + L' ' +
           (time ? hourMinuteSecondText(*time, regional_) : driver_.FILETIME(entry));
}

std::wstring MemberTexts::exactChecksum(std::uint32_t entry) const {
    const std::uint32_t crc = driver_.entries().record(entry).crc;
    if (!hasChecksum(crc)) return {};
    const std::size_t digits = crc > 0xFFFF ? 8 : checksumDigits_;
    std::wstring text;
    for (std::size_t digit = digits; digit-- > 0;) text += L"0123456789ABCDEF"[crc >> 4 * digit & 0x0F];
    return text;
}

std::wstring withWholeYears(std::wstring_view picture) {
    std::wstring whole;
    bool quoted = false;
    for (std::size_t position = 0; position < picture.size();) {
        const wchar_t letter = picture[position];
        if (letter != L'y' || quoted) {
            if (letter == L'\'') quoted = !quoted;
            whole += letter;
            ++position;
            continue;
        }
        whole += L"yyyy";
        position = std::min(picture.find_first_not_of(L'y', position), picture.size());
    }
    return whole;
}

}  // namespace tovar
