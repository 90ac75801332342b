#pragma once
#include <string>
#include <string_view>

namespace archiver {

/// UTF-16 of UTF-8; bytes that form no character become U+FFFD.
std::wstring wideOf(std::string_view utf8);

}  // namespace archiver
