#pragma once
#include <functional>
#include <string>
#include <string_view>

/// How names from archives, which may hold anything, are shown to a user. Texts are UTF-8.
namespace archiver {

/// The name without what would make it look like another one or break its line: control characters, line ends and
/// marks that turn the direction of writing become U+FFFD, as do bytes that form no character.
/// Source: Unicode Standard Annex 9 (directional formatting characters)
std::string shownName(std::string_view name);

/// Whether a text has room where it is shown.
using TextFits = std::function<bool(std::string_view text)>;

/// Shortens a text in its middle until it fits: "C:\folder\...\name.txt". The last part of a path stays whole where it
/// fits together with an ellipsis. Characters are never parted; "..." alone is the shortest result.
std::string shortenMiddle(std::string_view text, const TextFits& fits);

}  // namespace archiver
