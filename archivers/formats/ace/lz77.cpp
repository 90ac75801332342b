#include "archivers/formats/ace/lz77.h"

#include <algorithm>

namespace archiver::ace {
namespace {

constexpr unsigned kFirstHistory = 256;
constexpr unsigned kFirstDistance = 260;
constexpr unsigned kModeChange = 283;
constexpr unsigned kLongestLength = 255;

}  // namespace

void Lz77::start() noexcept {
    symbolsLeft_ = 0;
    emptyBlocks_ = 0;
    history_.fill(0);
    pendingLength_ = 0;
}

bool Lz77::readBlock(BitReader& reader) {
    if (!main_.read(reader) || !length_.read(reader)) return false;
    symbolsLeft_ = reader.take(15);
    emptyBlocks_ = symbolsLeft_ == 0 ? emptyBlocks_ + 1 : 0;
    return emptyBlocks_ <= kMostEmptyBlocks;
}

Run Lz77::decode(BitReader& reader, Dictionary& dictionary, std::size_t most) {
    const std::span<char> room = dictionary.room(most);
    char* const start = room.data();
    char* const end = start + room.size();
    char* out = start;
    const std::uint64_t written = dictionary.written();
    ReturnCode code = kOk;
    bool modeChange = false;

    const auto copy = [&](std::size_t distance, std::size_t length) {
        const std::size_t now = std::min(length, static_cast<std::size_t>(end - out));
        dictionary.copy(out, distance, now);
        out += now;
        pendingLength_ = length - now;
        pendingDistance_ = distance;
    };
    if (pendingLength_ != 0) copy(pendingDistance_, pendingLength_);

    while (out != end && code == kOk && !modeChange) {
        if (symbolsLeft_ == 0) {
            if (!readBlock(reader)) code = kHuffmanCode;
            continue;
        }
        BitWindow window = reader.window();
        std::uint32_t symbolsLeft = symbolsLeft_;
        do {
            --symbolsLeft;
            BitReader::refill(reader, window);
            const unsigned symbol = main_.take(window);
            if (symbol < kFirstHistory) {
                *out++ = static_cast<char>(symbol);
                continue;
            }
            std::uint32_t distance;  // one less than the bytes to go back
            std::size_t length;
            if (symbol < kFirstDistance) {
                const unsigned place = symbol - kFirstHistory;
                distance = history_[place];
                for (unsigned i = place; i > 0; --i) history_[i] = history_[i - 1];
                length = place < 2 ? 2 : 3;
            } else if (symbol < kModeChange) {
                const unsigned width = symbol - kFirstDistance;
                distance = width;
                if (width >= 2) {
                    distance = 1U << (width - 1) | window.peek(width - 1);
                    window.skip(width - 1);
                    BitReader::refill(reader, window);
                }
                for (unsigned i = 3; i > 0; --i) history_[i] = history_[i - 1];
                length = distance <= 255 ? 2 : distance <= 8191 ? 3 : 4;
            } else {
                modeChange = symbol == kModeChange;
                if (!modeChange) code = kHuffmanCode;
                break;
            }
            history_[0] = distance;
            const unsigned more = length_.take(window);
            if (more > kLongestLength) {
                code = kHuffmanCode;
                break;
            }
            if (distance >= written + static_cast<std::uint64_t>(out - start)) {
                code = kFileCrc;
                break;
            }
            copy(std::size_t{distance} + 1, length + more);
        } while (symbolsLeft != 0 && out != end);
        reader.setWindow(window);
        symbolsLeft_ = symbolsLeft;
    }
    if (code == kOk && reader.overrun()) code = kFileCrc;
    const auto made = static_cast<std::size_t>(out - start);
    dictionary.commit(made);
    return {code, room.first(made), modeChange};
}

}  // namespace archiver::ace
