#pragma once
#include <cstddef>
#include <string>

namespace archiver {

/// Overwrites memory; not left out by the compiler, though nobody reads it afterwards.
inline void wipe(void* memory, std::size_t bytes) noexcept {
    for (volatile char* place = static_cast<char*>(memory); bytes > 0; --bytes) *place++ = 0;
}

/// Overwrites all that the text's buffer holds, beyond its end too, and empties it.
template <class Character>
void wipe(std::basic_string<Character>& text) noexcept {
    text.resize(text.capacity());
    wipe(text.data(), text.size() * sizeof(Character));
    text.clear();
}

}  // namespace archiver
