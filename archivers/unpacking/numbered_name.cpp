#include "archivers/unpacking/numbered_name.h"

#include <cstddef>

namespace archiver {
namespace {

constexpr std::size_t kLongestPart = 255;   // bytes, POSIX; no more in UTF-16 units, Windows
constexpr std::size_t kLongestEnding = 32;  // what is longer is no ending but a sentence with a full stop in it

/// Where the ending with its "." starts; the end where there is none, as in ".profile".
std::size_t endingOf(std::string_view part) {
    const std::size_t dot = part.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || part.size() - dot > kLongestEnding) return part.size();
    return dot;
}

}  // namespace

std::string numberedName(std::string_view name, std::uint32_t number) {
    const std::size_t slash = name.rfind('/');
    const std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
    const std::string_view part = name.substr(start);
    const std::string_view ending = part.substr(endingOf(part));
    const std::string mark = " (" + std::to_string(number) + ")";
    std::string_view stem = part.substr(0, part.size() - ending.size());
    if (stem.size() + mark.size() + ending.size() > kLongestPart) {
        std::size_t cut = kLongestPart - mark.size() - ending.size();
        while (cut > 0 && (static_cast<unsigned char>(stem[cut]) & 0xC0) == 0x80) --cut;
        stem = stem.substr(0, cut);
    }
    std::string numbered(name.substr(0, start));
    numbered.append(stem).append(mark).append(ending);
    return numbered;
}

}  // namespace archiver
