#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace archiver {

/// "docs/a.txt" with 2: "docs/a (2).txt". The number comes in front of the last part's ending; a name that is too long
/// for a file system with it loses letters in front of the number, whole ones.
/// @param name  UTF-8 with "/" between its parts
std::string numberedName(std::string_view name, std::uint32_t number);

}  // namespace archiver
