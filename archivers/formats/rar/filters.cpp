#include "archivers/formats/rar/filters.h"

#include <array>
#include <cstdlib>

#include "archivers/formats/little_endian.h"

namespace archiver::rar {
namespace {

/// What filters that need a second copy of the bytes can have.
constexpr std::size_t kMostOfTwo = Filter::kMostBytes / 2;

using Bytes = std::vector<std::uint8_t>;

/// Bytes as they come: all of the first channel, all of the second one, and so on.
bool undoDelta(std::uint32_t channels, Bytes& bytes) {
    if (bytes.size() > kMostOfTwo) return false;
    Bytes result(bytes.size());
    auto source = bytes.cbegin();
    for (std::size_t channel = 0; channel < channels && channel < result.size(); ++channel) {
        std::uint8_t last = 0;
        for (std::size_t at = channel; at < result.size(); at += channels) {
            last = static_cast<std::uint8_t>(last - *source++);
            result[at] = last;
        }
    }
    bytes.swap(result);
    return channels > 0;
}

/// The targets of calls (and jumps) in programs for x86: relative again.
void undoCalls(bool jumps, std::uint32_t offset, Bytes& bytes) {
    constexpr std::uint32_t kFileSize = 0x1000000;
    for (std::size_t at = 0; at + 4 < bytes.size(); ++at) {
        if (bytes[at] != 0xE8 && !(jumps && bytes[at] == 0xE9)) continue;
        char* const field = reinterpret_cast<char*>(bytes.data() + at + 1);
        const std::uint32_t position = offset + static_cast<std::uint32_t>(at) + 1;
        const std::uint32_t address = little_endian::load32(field);
        if ((address & 0x80000000) != 0) {
            if (position >= 0U - address) little_endian::store32(field, address + kFileSize);
        } else if (address < kFileSize) {
            little_endian::store32(field, address - position);
        }
        at += 4;
    }
}

/// A picture of three bytes a pixel, each predicted from those on its left, above, and between.
bool undoPicture(std::uint32_t stride, std::uint32_t firstRed, Bytes& bytes) {
    if (bytes.size() > kMostOfTwo || stride <= 3 || stride > bytes.size() || firstRed > 2) return false;
    Bytes result(bytes.size());
    auto source = bytes.cbegin();
    for (std::size_t channel = 0; channel < 3; ++channel) {
        std::uint8_t last = 0;
        for (std::size_t at = channel; at < result.size(); at += 3) {
            if (at >= stride) {
                const int between = result[at - stride];
                const int above = result[at - stride + 3];
                const int toLeft = std::abs(above - between);
                const int toAbove = std::abs(last - between);
                const int toBetween = std::abs(above - between + last - between);
                if (toLeft > toAbove || toLeft > toBetween)
                    last = static_cast<std::uint8_t>(toAbove <= toBetween ? above : between);
            }
            last = static_cast<std::uint8_t>(last - *source++);
            result[at] = last;
        }
    }
    for (std::size_t at = firstRed; at + 2 < result.size(); at += 3) {
        result[at] = static_cast<std::uint8_t>(result[at] + result[at + 1]);
        result[at + 2] = static_cast<std::uint8_t>(result[at + 2] + result[at + 1]);
    }
    bytes.swap(result);
    return true;
}

/// One channel of a sound: each byte is predicted from the last ones, with weights that learn.
class Channel {
public:
    std::uint8_t next(std::uint8_t packed) {
        steps_[2] = steps_[1];
        steps_[1] = lastStep_ - steps_[0];
        steps_[0] = lastStep_;
        int prediction = 8 * last_;
        for (std::size_t index = 0; index < 3; ++index) prediction += weights_[index] * steps_[index];
        const int difference = static_cast<std::int8_t>(packed);
        const auto byte = static_cast<std::uint8_t>((static_cast<unsigned>(prediction) >> 3) - packed);
        lastStep_ = static_cast<std::int8_t>(byte - last_);
        last_ = byte;
        learn(difference * 8);
        return byte;
    }

private:
    void learn(int error) {
        errors_[0] += std::abs(error);
        for (std::size_t index = 0; index < 3; ++index) {
            errors_[2 * index + 1] += std::abs(error - steps_[index]);
            errors_[2 * index + 2] += std::abs(error + steps_[index]);
        }
        if (count_++ % 32 != 0) return;
        std::size_t best = 0;
        for (std::size_t index = 1; index < errors_.size(); ++index) {
            if (errors_[index] < errors_[best]) best = index;
        }
        errors_.fill(0);
        if (best == 0) return;
        int& weight = weights_[(best - 1) / 2];
        if (best % 2 != 0) {
            if (weight >= -16) --weight;
        } else if (weight < 16) {
            ++weight;
        }
    }

    std::array<int, 3> weights_{}, steps_{};
    std::array<int, 7> errors_{};
    int lastStep_ = 0;
    unsigned count_ = 0;
    std::uint8_t last_ = 0;
};

bool undoSound(std::uint32_t channels, Bytes& bytes) {
    if (bytes.size() > kMostOfTwo) return false;
    Bytes result(bytes.size());
    auto source = bytes.cbegin();
    for (std::size_t channel = 0; channel < channels && channel < result.size(); ++channel) {
        Channel state;
        for (std::size_t at = channel; at < result.size(); at += channels) result[at] = state.next(*source++);
    }
    bytes.swap(result);
    return channels > 0;
}

}  // namespace

bool undoFilter(const Filter& filter, std::uint32_t offset, std::vector<std::uint8_t>& bytes) {
    switch (filter.kind) {
        case FilterKind::kDelta:
            return undoDelta(filter.first, bytes);
        case FilterKind::kCalls:
        case FilterKind::kCallsAndJumps:
            undoCalls(filter.kind == FilterKind::kCallsAndJumps, offset, bytes);
            return true;
        case FilterKind::kPicture:
            return undoPicture(filter.first, filter.second, bytes);
        case FilterKind::kSound:
            return undoSound(filter.first, bytes);
        case FilterKind::kUnknown:
            break;
    }
    return false;
}

}  // namespace archiver::rar
