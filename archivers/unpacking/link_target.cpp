#include "archivers/unpacking/link_target.h"

#include <cstddef>
#include <vector>

namespace archiver {
namespace {

constexpr std::string_view kSeparators = "/\\";

bool isAbsolute(std::string_view target, NameRules rules) {
    if (kSeparators.find(target.front()) != std::string_view::npos) return true;
    if (rules == NameRules::kPosix || target.size() < 2 || target[1] != ':') return false;
    const char letter = static_cast<char>(target[0] | 0x20);
    return letter >= 'a' && letter <= 'z';
}

/// The parts of a name, separators of both kinds between them; empty ones and "." left out.
std::vector<std::string_view> partsOf(std::string_view name) {
    std::vector<std::string_view> parts;
    while (!name.empty()) {
        const std::size_t end = name.find_first_of(kSeparators);
        const std::string_view part = name.substr(0, end);
        if (!part.empty() && part != ".") parts.push_back(part);
        name = end == std::string_view::npos ? std::string_view() : name.substr(end + 1);
    }
    return parts;
}

std::string joined(const std::vector<std::string_view>& parts) {
    std::string name;
    for (const std::string_view part : parts) {
        if (!name.empty()) name += '/';
        name += part;
    }
    return name;
}

}  // namespace

std::optional<std::string> nameLinkedTo(std::string_view linkName, std::string_view target, NameRules rules) {
    if (target.empty() || isAbsolute(target, rules)) return std::nullopt;
    std::vector<std::string_view> way = partsOf(linkName);
    if (!way.empty()) way.pop_back();
    for (const std::string_view part : partsOf(target)) {
        if (part != "..") {
            way.push_back(part);
        } else if (way.empty()) {
            return std::nullopt;
        } else {
            way.pop_back();
        }
    }
    return joined(way);
}

std::string relativeWay(std::string_view linkName, std::string_view place) {
    std::vector<std::string_view> from = partsOf(linkName);
    if (!from.empty()) from.pop_back();
    const std::vector<std::string_view> to = partsOf(place);
    std::size_t common = 0;
    while (common < from.size() && common < to.size() && from[common] == to[common]) ++common;
    std::vector<std::string_view> way(from.size() - common, "..");
    way.insert(way.end(), to.begin() + static_cast<std::ptrdiff_t>(common), to.end());
    return way.empty() ? "." : joined(way);
}

}  // namespace archiver
