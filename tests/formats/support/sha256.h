#pragma once
#include <string>
#include <string_view>

namespace archiver::test {

/// SHA-256 in lower-case hexadecimal digits. Source: FIPS 180-4
std::string sha256(std::string_view bytes);

}  // namespace archiver::test
