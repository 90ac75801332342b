#include "archivers/commands/text_columns.h"

#include <algorithm>

#include "archivers/commands/command_paths.h"
#include "archivers/convention/entry_record.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

std::size_t charactersIn(std::string_view utf8) noexcept {
    std::size_t count = 0;
    for (; !utf8.empty(); ++count) utf8.remove_prefix(decodeCharacter(utf8).length);
    return count;
}

std::string blanksFor(std::string_view utf8, std::size_t width) {
    return std::string(width - std::min(width, charactersIn(utf8)), ' ');
}

std::string twoDigits(unsigned value) {
    return {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
}

}  // namespace

std::string padRight(std::string_view utf8, std::size_t width) { return std::string(utf8) + blanksFor(utf8, width); }

std::string padLeft(std::string_view utf8, std::size_t width) { return blanksFor(utf8, width) + std::string(utf8); }

std::string padLeft(std::uint64_t number, std::size_t width) { return padLeft(std::to_string(number), width); }

std::string listedName(std::string_view utf8Name) {
    std::string name(utf8Name);
    const auto isControl = [](char character) { return (character >= 0 && character < ' ') || character == 0x7F; };
    std::replace_if(name.begin(), name.end(), isControl, '_');
    return name;
}

std::string madeFolder(const MemberReport& report, const std::filesystem::path& target) {
    if (report.member.kind == MemberKind::kFolder) return report.member.name;
    std::string name = utf8Of(report.file.lexically_relative(target));
    std::replace(name.begin(), name.end(), '\\', '/');
    return name + '/';
}

std::string_view firstCharacters(std::string_view utf8, std::size_t count) noexcept {
    std::size_t length = 0;
    for (; count > 0 && length < utf8.size(); --count) length += decodeCharacter(utf8.substr(length)).length;
    return utf8.substr(0, length);
}

std::string hexadecimal(std::uint32_t value, std::size_t digits) {
    std::string text;
    for (; value != 0 || text.size() < digits; value >>= 4) text.push_back("0123456789abcdef"[value & 0xF]);
    std::reverse(text.begin(), text.end());
    return text;
}

std::string dosDateText(std::uint16_t date) {
    const unsigned year = (date >> 9) + 80U;
    return twoDigits(year % 100) + '-' + twoDigits((date >> 5) & 0x0F) + '-' + twoDigits(date & 0x1F);
}

std::string dosTimeText(std::uint16_t time) {
    return twoDigits(time >> 11) + ':' + twoDigits((time >> 5) & 0x3F) + ':' + twoDigits((time & 0x1F) * 2U);
}

std::string attributeText(std::uint8_t bits, AttributeStyle style) {
    char field[8];
    fillAttributes(bits, style, field);
    return field;
}

std::string_view lastPart(std::string_view utf8Name) noexcept {
    constexpr std::string_view separators = "/\\";
    utf8Name = utf8Name.substr(0, utf8Name.find_last_not_of(separators) + 1);
    return utf8Name.substr(utf8Name.find_last_of(separators) + 1);
}

std::uint32_t perMille(std::uint64_t part, std::uint64_t whole) noexcept {
    constexpr std::uint64_t highest = 9999;
    if (whole == 0) return 0;
    while (part > UINT64_MAX / 1000) {  // claims of exabytes: the lowest bits do not show
        part >>= 1;
        whole >>= 1;
    }
    return static_cast<std::uint32_t>(whole == 0 ? highest : std::min(part * 1000 / whole, highest));
}

}  // namespace archiver
