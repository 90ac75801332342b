#include "archivers/formats/rar/volume_name.h"

#include <algorithm>
#include <string>

namespace archiver::rar {
namespace {

using Char = std::filesystem::path::value_type;
using Text = std::filesystem::path::string_type;

constexpr std::size_t kLastVolume = 100'000;

bool isDigit(Char character) noexcept { return character >= Char{'0'} && character <= Char{'9'}; }

Char lowerCase(Char character) noexcept {
    return character >= Char{'A'} && character <= Char{'Z'} ? static_cast<Char>(character + ('a' - 'A')) : character;
}

bool isRar(const Text& extension) {
    constexpr Char kRar[] = {'.', 'r', 'a', 'r'};
    return extension.size() == 4 && std::equal(extension.begin(), extension.end(), kRar,
                                               [](Char left, Char right) { return lowerCase(left) == right; });
}

/// Adds to a number in decimal digits; it grows when it has to.
void add(Text& digits, std::size_t count) {
    for (std::size_t at = digits.size(); count > 0; count /= 10) {
        if (at == 0) {
            digits.insert(digits.begin(), Char{'0'});
            ++at;
        }
        const auto sum = static_cast<std::size_t>(digits[--at] - Char{'0'}) + count % 10;
        digits[at] = static_cast<Char>(Char{'0'} + sum % 10);
        count += sum / 10 * 10;
    }
}

std::filesystem::path byNumber(const std::filesystem::path& first, std::size_t index) {
    Text stem = first.stem().native();
    const auto isOther = [](Char character) { return !isDigit(character); };
    const auto end = std::find_if(stem.rbegin(), stem.rend(), isDigit).base();
    if (end == stem.begin()) return {};
    const auto begin = std::find_if(std::make_reverse_iterator(end), stem.rend(), isOther).base();
    Text digits(begin, end);
    add(digits, index);
    stem = Text(stem.begin(), begin) + digits + Text(end, stem.end());
    std::filesystem::path name = first;
    const std::filesystem::path extension = first.extension();
    name.replace_filename(stem);
    // A self-extractor's further volumes are no programs.
    name += isRar(extension.native()) ? extension : std::filesystem::path(".rar");
    return name;
}

std::filesystem::path byExtension(const std::filesystem::path& first, std::size_t index) {
    const Text extension = first.extension().native();
    const bool upper = extension.size() > 1 && extension[1] >= Char{'A'} && extension[1] <= Char{'Z'};
    std::size_t number = 0;  // of the first one: ".rar" is 0, ".r00" is 1
    const bool numbered = extension.size() == 4 && isDigit(extension[2]) && isDigit(extension[3]);
    if (numbered && lowerCase(extension[1]) >= Char{'r'} && lowerCase(extension[1]) <= Char{'z'}) {
        number = static_cast<std::size_t>(lowerCase(extension[1]) - Char{'r'}) * 100 +
                 static_cast<std::size_t>(extension[2] - Char{'0'}) * 10 +
                 static_cast<std::size_t>(extension[3] - Char{'0'}) + 1;
    }
    number += index - 1;
    if (number >= 900) return {};
    const Text next = {Char{'.'}, static_cast<Char>((upper ? 'R' : 'r') + static_cast<int>(number / 100)),
                       static_cast<Char>('0' + static_cast<int>(number / 10 % 10)),
                       static_cast<Char>('0' + static_cast<int>(number % 10))};
    std::filesystem::path name = first;
    return name.replace_extension(next);
}

}  // namespace

std::filesystem::path volumePath(const std::filesystem::path& first, std::size_t index, bool newNames) {
    if (first.empty() || index > kLastVolume) return {};
    if (index == 0) return first;
    return newNames ? byNumber(first, index) : byExtension(first, index);
}

}  // namespace archiver::rar
