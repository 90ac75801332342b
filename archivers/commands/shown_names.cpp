#include "archivers/commands/shown_names.h"

#include <vector>

#include "archivers/formats/utf8.h"

namespace archiver {
namespace {

constexpr std::string_view kEllipsis = "...";

bool misleads(char32_t character) noexcept {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) ||  // control characters
           character == 0x061C || character == 0x200E || character == 0x200F ||
           (character >= 0x2028 && character <= 0x202E) ||  // line ends, embeddings and overrides
           (character >= 0x2066 && character <= 0x2069);    // isolates
}

/// Where the text's characters begin, and its end.
std::vector<std::size_t> boundaries(std::string_view text) {
    std::vector<std::size_t> places{0};
    while (places.back() < text.size()) {
        places.push_back(places.back() + decodeCharacter(text.substr(places.back())).length);
    }
    return places;
}

std::string joined(std::string_view text, std::size_t head, std::size_t tail) {
    return std::string(text.substr(0, head)).append(kEllipsis).append(text.substr(tail));
}

/// The largest count up to `most` for which `holds` is true, which is true for 0 and false above some count.
template <class Holds>
std::size_t largest(std::size_t most, Holds holds) {
    std::size_t low = 0;
    while (low < most) {
        const std::size_t middle = low + (most - low + 1) / 2;
        if (holds(middle)) {
            low = middle;
        } else {
            most = middle - 1;
        }
    }
    return low;
}

}  // namespace

std::string shownName(std::string_view name) {
    std::string shown;
    while (!name.empty()) {
        const DecodedCharacter next = decodeCharacter(name);
        appendUtf8(!next.valid || misleads(next.value) ? kNoCharacter : next.value, shown);
        name.remove_prefix(next.length);
    }
    return shown;
}

std::string shortenMiddle(std::string_view text, const TextFits& fits) {
    if (fits(text)) return std::string(text);
    const std::vector<std::size_t> places = boundaries(text);
    const std::size_t count = places.size() - 1;

    // The separator at the very end, a folder's, does not begin a last part.
    const std::size_t separator = text.size() < 2 ? text.npos : text.find_last_of("/\\", text.size() - 2);
    if (separator != text.npos && separator > 0 && fits(joined(text, 0, separator))) {
        const std::size_t head = largest(count, [&](std::size_t characters) {
            return places[characters] <= separator && fits(joined(text, places[characters], separator));
        });
        return joined(text, places[head], separator);
    }
    const std::size_t kept = largest(count > 0 ? count - 1 : 0, [&](std::size_t characters) {
        return fits(joined(text, places[characters / 2], places[count - (characters - characters / 2)]));
    });
    return joined(text, places[kept / 2], places[count - (kept - kept / 2)]);
}

}  // namespace archiver
