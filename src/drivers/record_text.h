#pragma once
#include <cstddef>
#include <cstring>
#include <string_view>

namespace tovar {

/// A text of a library's record: it ends with its field where the library wrote no NUL.
template <std::size_t Size>
std::string_view fieldText(const char (&field)[Size]) {
    const void* const end = std::memchr(field, '\0', Size);
    return {field, end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - field) : Size};
}

}  // namespace tovar
