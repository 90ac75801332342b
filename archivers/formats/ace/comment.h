#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace archiver::ace {

/// Unpacks a comment of an archive or a member.
/// @return bytes as they were before, at most 32,767; nullopt when the data is damaged
std::optional<std::string> unpackComment(std::string_view packed);

}  // namespace archiver::ace
