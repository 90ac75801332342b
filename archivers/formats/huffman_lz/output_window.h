#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>

#include "archivers/formats/archive_reader.h"

namespace archiver::huffman_lz {

/// What differs between the formats whose bytes pass through a window.
struct WindowKind {
    /// Adds bytes to a checksum that starts with 0.
    using Checksum = std::uint32_t (*)(std::uint32_t sum, const void* bytes, std::size_t size) noexcept;

    std::size_t history;  ///< bytes that matches may reach back
    Checksum checksum;
    std::optional<unsigned char> before;  ///< what matches find before the start; without it they may not reach there
};

/// Where unpacked bytes come together: a straight run of memory that holds what matches may refer to and what comes
/// next. Full runs go to the sink and into the checksum; the newest bytes are kept in front.
class OutputWindow {
public:
    /// Bytes that one run gives to the sink.
    static constexpr std::size_t kRun = std::size_t{128} * 1024;
    /// Bytes that may be written behind `limit`: a literal, a match, and what copying in steps writes too much.
    static constexpr std::size_t kSlack = 512;

    /// Begins a part.
    /// @param size  bytes that it unpacks to
    /// @param sink  outlives the part
    void start(std::uint64_t size, const WindowKind& kind, const DataSink& sink);

    [[nodiscard]] bool complete() const noexcept { return left_ == 0; }
    /// The oldest byte that a match may refer to.
    [[nodiscard]] const unsigned char* oldest() const noexcept { return buffer_.get(); }
    [[nodiscard]] unsigned char* at() const noexcept { return at_; }
    /// Where writing pauses until the next `commit`.
    [[nodiscard]] unsigned char* limit() const noexcept { return limit_; }

    /// Tells how far was written. Bytes beyond the part's size are dropped.
    /// @return false when the sink wants no more
    bool commit(unsigned char* at) {
        at_ = at;
        return at < limit_ || give();
    }

    /// Gives what was written up to `at`, where the part's data ends in an error.
    void abandon(unsigned char* at) {
        at_ = at;
        give();
    }

    /// Of all bytes so far.
    [[nodiscard]] std::uint32_t checksum() const noexcept { return sum_; }

private:
    bool give();
    void setLimit() noexcept;

    std::unique_ptr<unsigned char[]> buffer_;
    std::size_t capacity_ = 0;  ///< history that the buffer has room for
    std::size_t history_ = 0;
    WindowKind::Checksum checksum_ = nullptr;
    const DataSink* sink_ = nullptr;
    unsigned char* at_ = nullptr;     ///< where the next byte goes
    unsigned char* given_ = nullptr;  ///< what stands before it went to the sink
    unsigned char* limit_ = nullptr;
    std::uint64_t left_ = 0;  ///< bytes from `given_` to the part's end
    std::uint32_t sum_ = 0;
};

/// Copies a match. May write up to 15 bytes more than `length`.
/// @param distance  1 or more; all of it lies in the window
/// @return behind the match
inline unsigned char* copyMatch(unsigned char* at, std::size_t distance, std::size_t length) noexcept {
    const unsigned char* from = at - distance;
    unsigned char* const end = at + length;
    if (distance >= 16) {
        do {
            std::memcpy(at, from, 16);
            at += 16;
            from += 16;
        } while (at < end);
    } else if (distance == 1) {
        std::memset(at, *from, length);
    } else if (distance >= 8) {
        do {
            std::memcpy(at, from, 8);
            at += 8;
            from += 8;
        } while (at < end);
    } else {
        while (at < end) *at++ = *from++;
    }
    return end;
}

}  // namespace archiver::huffman_lz
