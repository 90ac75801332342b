#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "archivers/convention/text_codec.h"

namespace archiver {

/// The text that a command gives its caller, written to the caller's buffer at once: what does not fit is not kept, so
/// a listing of any length costs no memory. The buffer holds a NUL-terminated text at all times.
class CommandOutput {
public:
    /// @param buffer  null, or of `size` bytes; without a buffer nothing is written
    CommandOutput(const TextCodec& codec, char* buffer, std::uint32_t size) noexcept;

    /// Appends a text in the caller's code page, up to the last whole character that fits.
    void text(std::string_view utf8) noexcept;
    /// Appends bytes as they are.
    void bytes(const char* bytes, std::size_t count) noexcept;

    /// Whether nothing more will be kept.
    [[nodiscard]] bool full() const noexcept { return room_ == 0; }
    /// Whether nothing was appended, be it kept or not.
    [[nodiscard]] bool unused() const noexcept { return unused_; }

private:
    const TextCodec& codec_;
    char* next_;
    std::size_t room_;  ///< without the NUL
    bool unused_ = true;
};

}  // namespace archiver
