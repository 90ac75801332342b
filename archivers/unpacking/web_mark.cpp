#include "archivers/unpacking/web_mark.h"

#include <algorithm>
#include <optional>

namespace archiver {
namespace {

constexpr std::size_t kLongestAddress = 2083;

char smallLetter(char letter) noexcept {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool equalsIgnoringCase(std::string_view text, std::string_view other) noexcept {
    return std::ranges::equal(text, other, {}, smallLetter, smallLetter);
}

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::string_view nextLine(std::string_view& text) noexcept {
    const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return line;
}

bool isAddress(std::string_view text) noexcept {
    return !text.empty() && text.size() <= kLongestAddress && std::ranges::none_of(text, [](char each) {
        const auto byte = static_cast<unsigned char>(each);
        return byte < 0x20 || byte == 0x7F;
    });
}

/// The fields of a mark; as in every such text, the first of two lines with one key counts.
struct Fields {
    std::optional<std::string_view> zone, referrer, host;
};

Fields fieldsOf(std::string_view text) noexcept {
    Fields fields;
    bool inSection = false;
    while (!text.empty()) {
        const std::string_view line = trimmed(nextLine(text));
        if (line.starts_with('[')) inSection = equalsIgnoringCase(line, "[ZoneTransfer]");
        const std::size_t equals = line.find('=');
        if (!inSection || equals == line.npos) continue;
        const std::string_view key = trimmed(line.substr(0, equals));
        const std::string_view value = trimmed(line.substr(equals + 1));
        const auto take = [&](std::string_view name, std::optional<std::string_view>& field) {
            if (!field && equalsIgnoringCase(key, name)) field = value;
        };
        take("ZoneId", fields.zone);
        take("ReferrerUrl", fields.referrer);
        take("HostUrl", fields.host);
    }
    return fields;
}

}  // namespace

std::string passedWebMark(std::string_view archiveMark) {
    const Fields fields = fieldsOf(archiveMark.substr(0, kLongestWebMark));
    // 3 is the internet, 4 what is restricted; there are no others beyond 0 to 2.
    if (fields.zone != "3" && fields.zone != "4") return {};
    std::string mark = "[ZoneTransfer]\r\nZoneId=";
    mark.append(*fields.zone).append("\r\n");
    const auto pass = [&](std::string_view key, const std::optional<std::string_view>& address) {
        if (address && isAddress(*address)) mark.append(key).append("=").append(*address).append("\r\n");
    };
    pass("ReferrerUrl", fields.referrer);
    pass("HostUrl", fields.host);
    return mark;
}

}  // namespace archiver
