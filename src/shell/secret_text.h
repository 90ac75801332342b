#pragma once
#include <string>

namespace tovar {

/// Overwrites all that the text's buffer holds, beyond its end too, and empties it. Not left out by the compiler,
/// though nobody reads the buffer afterwards.
template <class Character>
void wipe(std::basic_string<Character>& text) noexcept {
    text.resize(text.capacity());  // within the buffer: nothing is moved
    for (volatile Character& each : text) each = Character{};
    text.clear();
}

/// Wipes a text when it goes.
template <class Character>
class WipedAtEnd {
public:
    explicit WipedAtEnd(std::basic_string<Character>& text) noexcept : text_(text) {}
    ~WipedAtEnd() { wipe(text_); }
    WipedAtEnd(const WipedAtEnd&) = delete;
    WipedAtEnd& operator=(const WipedAtEnd&) = delete;

private:
    std::basic_string<Character>& text_;
};

}  // namespace tovar
