#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace archiver {

/// @param text  UTF-8 that has been checked, with "/" between its parts
inline std::filesystem::path pathOfUtf8(std::string_view text) {
    return {std::u8string_view(reinterpret_cast<const char8_t*>(text.data()), text.size())};
}

}  // namespace archiver
