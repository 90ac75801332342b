#include "archivers/convention/command_output.h"

#include <algorithm>
#include <cstring>

namespace archiver {

CommandOutput::CommandOutput(const TextCodec& codec, char* buffer, std::uint32_t size) noexcept
    : codec_(codec), next_(buffer), room_(buffer == nullptr || size == 0 ? 0 : size - 1) {
    if (buffer != nullptr && size > 0) *buffer = '\0';
}

void CommandOutput::text(std::string_view utf8) noexcept {
    unused_ = unused_ && utf8.empty();
    if (full() || utf8.empty()) return;
    const TextCodec::Written written = codec_.encode(utf8, next_, room_ + 1);
    next_ += written.length;
    // What follows a text that was cut would be taken for its end.
    room_ = written.whole ? room_ - written.length : 0;
}

void CommandOutput::bytes(const char* bytes, std::size_t count) noexcept {
    unused_ = unused_ && count == 0;
    if (full()) return;
    const std::size_t kept = std::min(count, room_);
    std::memcpy(next_, bytes, kept);
    next_ += kept;
    *next_ = '\0';
    room_ -= kept;
}

}  // namespace archiver
