#include "archivers/unpacking/device_name.h"

#include <algorithm>

namespace archiver {
namespace {

/// @param capitals  ASCII capitals
bool isSpelled(std::string_view text, std::string_view capitals) noexcept {
    const auto capital = [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - ('a' - 'A')) : letter;
    };
    return std::ranges::equal(text, capitals, {}, capital);
}

/// One digit, plain or superscript as code page 1252 has them.
bool isPortNumber(std::string_view text) noexcept {
    if (text.size() == 1) return text[0] >= '0' && text[0] <= '9';
    return text == "\xC2\xB9" || text == "\xC2\xB2" || text == "\xC2\xB3";
}

}  // namespace

bool isDeviceName(std::string_view part) noexcept {
    std::string_view stem = part.substr(0, part.find_first_of(".:"));
    stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
    if (stem.size() < 3 || stem.size() > 7) return false;

    for (const std::string_view device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"}) {
        if (isSpelled(stem, device)) return true;
    }
    const std::string_view port = stem.substr(0, 3);
    return (isSpelled(port, "COM") || isSpelled(port, "LPT")) && isPortNumber(stem.substr(3));
}

}  // namespace archiver
