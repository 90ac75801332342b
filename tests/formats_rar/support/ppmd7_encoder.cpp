#include "formats_rar/support/ppmd7_encoder.h"

#include <set>
#include <utility>

namespace archiver::test {

void Ppmd7Encoder::begin() {
    low_ = 0;
    range_ = 0xFFFFFFFF;
    bytes_.clear();
}

std::string Ppmd7Encoder::finish() {
    for (int shift = 24; shift >= 0; shift -= 8) bytes_ += static_cast<char>(low_ >> shift & 0xFF);
    return std::exchange(bytes_, {});
}

void Ppmd7Encoder::put(std::uint32_t start, std::uint32_t size, std::uint32_t total) {
    constexpr std::uint32_t kTop = 1U << 24;
    constexpr std::uint32_t kBottom = 1U << 15;
    range_ /= total;
    low_ += start * range_;
    range_ *= size;
    for (;;) {
        if ((low_ ^ (low_ + range_)) >= kTop) {
            if (range_ >= kBottom) return;
            range_ = (0U - low_) & (kBottom - 1);
        }
        bytes_ += static_cast<char>(low_ >> 24);
        range_ <<= 8;
        low_ <<= 8;
    }
}

void Ppmd7Encoder::encode(std::uint8_t symbol) {
    std::set<std::uint8_t> masked;
    if (countOf(context_) == 1) {
        std::uint16_t& probability = binaryProbability();
        const Ref state = onlyStateOf(context_);
        if (symbolOf(state) == symbol) {
            put(0, probability, kProbabilityScale);
            return updateBinary(probability);
        }
        put(probability, kProbabilityScale - probability, kProbabilityScale);
        updateBinaryEscape(probability);
        masked.insert(symbolOf(state));
    } else {
        std::uint32_t low = 0;
        for (unsigned index = 0; index < countOf(context_); ++index) {
            const Ref state = statesOf(context_) + index * kStateSize;
            if (symbolOf(state) == symbol) {
                put(low, frequencyOf(state), sumOf(context_));
                found_ = state;
                if (index == 0) return updateFirst();
                previousSuccess_ = 0;
                return updateOther();
            }
            low += frequencyOf(state);
            masked.insert(symbolOf(state));
        }
        previousSuccess_ = 0;
        highBits_ = highBitsOf_[symbolOf(found_)];
        put(low, sumOf(context_) - low, sumOf(context_));
    }
    for (;;) {
        const auto count = static_cast<unsigned>(masked.size());
        do {
            ++orderFall_;
            context_ = suffixOf(context_);
        } while (countOf(context_) == count);
        std::uint32_t escapeFrequency = 0;
        Escape& escape = escapeOf(count, escapeFrequency);
        std::uint32_t sum = 0, low = 0;
        Ref found = 0;
        for (unsigned index = 0; index < countOf(context_); ++index) {
            const Ref state = statesOf(context_) + index * kStateSize;
            if (!masked.insert(symbolOf(state)).second) continue;
            if (symbolOf(state) == symbol) {
                found = state;
                low = sum;
            }
            sum += frequencyOf(state);
        }
        if (found != 0) {
            put(low, frequencyOf(found), sum + escapeFrequency);
            escape.update();
            found_ = found;
            return updateAfterEscape();
        }
        put(sum, escapeFrequency, sum + escapeFrequency);
        escape.sum = static_cast<std::uint16_t>(escape.sum + sum + escapeFrequency);
    }
}

}  // namespace archiver::test
