#pragma once
#include <string>
#include <string_view>

namespace archiver::test {

/// The file that a uuencoded text holds.
/// Source: POSIX, uuencode
std::string uudecode(std::string_view text);

}  // namespace archiver::test
