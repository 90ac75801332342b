#include "archivers/formats/huffman_lz/bit_reader.h"

#include <algorithm>
#include <cstring>

namespace archiver::huffman_lz {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
/// Bytes that a few fills in a row may read: two of 8 bytes, or four of 4.
constexpr std::size_t kReach = 16;
/// Zero bytes behind the last byte.
constexpr std::size_t kPadding = 32;

}  // namespace

BitReader::BitReader() : buffer_(std::make_unique<unsigned char[]>(kBufferSize + kPadding)) {}

void BitReader::start(PackedSource& source) noexcept {
    source_ = &source;
    end_ = buffer_.get();
    // An empty buffer; the cursor stands before the last place for fills only once bytes were loaded.
    cursor_ = {0, 0, end_, end_};
    ended_ = false;
    failed_ = false;
    load();
}

bool BitReader::takenBehindEnd() const noexcept {
    // More than the last codes can lack, less than it takes to make up a block.
    constexpr std::ptrdiff_t kTolerated = 16;
    const std::ptrdiff_t left = (end_ - kPadding - cursor_.at) * 8 + static_cast<std::ptrdiff_t>(cursor_.count);
    return left < -kTolerated;
}

bool BitReader::load() noexcept {
    if (failed_) return false;
    const auto rest = static_cast<std::size_t>(end_ - cursor_.at);
    if (ended_ && rest < kReach) {
        failed_ = true;
        return false;
    }
    unsigned char* const begin = buffer_.get();
    if (rest > 0) std::memmove(begin, cursor_.at, rest);
    std::size_t filled = rest;
    if (!ended_) {
        filled += source_->read(begin + rest, kBufferSize - rest);
        if (source_->left() == 0 || source_->failed()) {
            ended_ = true;
            std::memset(begin + filled, 0, kPadding);
            filled += kPadding;
        }
    }
    cursor_.at = begin;
    end_ = begin + filled;
    cursor_.lastFill = end_ - kReach;
    return true;
}

}  // namespace archiver::huffman_lz
