#include "archivers/formats/rar/ppmd7_decoder.h"

namespace archiver::rar {
namespace {

constexpr std::uint32_t kTop = 1U << 24;
constexpr std::uint32_t kBottom = 1U << 15;

}  // namespace

void Ppmd7Decoder::begin() {
    low_ = 0;
    range_ = 0xFFFFFFFF;
    code_ = 0;
    for (int count = 0; count < 4; ++count) code_ = code_ << 8 | input_.takeByte();
    broken_ = code_ == 0xFFFFFFFF;
}

std::uint32_t Ppmd7Decoder::threshold(std::uint32_t total) noexcept {
    range_ /= total;
    if (range_ == 0) {
        broken_ = true;
        range_ = 1;
    }
    return (code_ - low_) / range_;
}

void Ppmd7Decoder::accept(std::uint32_t start, std::uint32_t size) {
    low_ += start * range_;
    range_ *= size;
    if (range_ == 0) {
        broken_ = true;
        return;
    }
    for (;;) {
        if ((low_ ^ (low_ + range_)) >= kTop) {
            if (range_ >= kBottom) return;
            range_ = (0U - low_) & (kBottom - 1);
            if (range_ == 0) {
                broken_ = true;
                return;
            }
        }
        code_ = code_ << 8 | input_.takeByte();
        range_ <<= 8;
        low_ <<= 8;
    }
}

int Ppmd7Decoder::symbol() {
    if (broken_) return -1;
    const int symbol = countOf(context_) == 1 ? symbolOfOne() : symbolOfMany();
    return broken_ ? -1 : symbol;
}

void Ppmd7Decoder::maskContext() noexcept {
    const Ref end = statesOf(context_) + countOf(context_) * kStateSize;
    for (Ref state = statesOf(context_); state != end; state += kStateSize) mask(state);
}

int Ppmd7Decoder::symbolOfMany() {
    const std::uint32_t sum = sumOf(context_);
    const std::uint32_t value = threshold(sum);
    Ref state = statesOf(context_);
    std::uint32_t high = frequencyOf(state);
    if (value < high) {
        accept(0, high);
        found_ = state;
        const int symbol = symbolOf(state);
        updateFirst();
        return symbol;
    }
    previousSuccess_ = 0;
    for (unsigned left = countOf(context_) - 1; left > 0; --left) {
        state += kStateSize;
        const std::uint32_t low = high;
        high += frequencyOf(state);
        if (value >= high) continue;
        accept(low, high - low);
        found_ = state;
        const int symbol = symbolOf(state);
        updateOther();
        return symbol;
    }
    if (value >= sum || high >= sum) {
        broken_ = true;
        return -1;
    }
    highBits_ = highBitsOf_[symbolOf(found_)];
    accept(high, sum - high);
    open_.fill(1);
    maskContext();
    return symbolOfSuffixes();
}

int Ppmd7Decoder::symbolOfOne() {
    std::uint16_t& probability = binaryProbability();
    const Ref state = onlyStateOf(context_);
    if (threshold(kProbabilityScale) < probability) {
        accept(0, probability);
        const int symbol = symbolOf(state);
        updateBinary(probability);
        return symbol;
    }
    accept(probability, kProbabilityScale - probability);
    updateBinaryEscape(probability);
    open_.fill(1);
    mask(state);
    return symbolOfSuffixes();
}

int Ppmd7Decoder::symbolOfSuffixes() {
    for (;;) {
        if (broken_) return -1;
        const unsigned masked = countOf(context_);
        do {
            ++orderFall_;
            if (suffixOf(context_) == 0) return -1;
            context_ = suffixOf(context_);
        } while (countOf(context_) == masked);

        // What is not ruled out yet; written without a branch, for there is no telling.
        std::array<Ref, 257> states;
        std::size_t count = 0;
        std::uint32_t sum = 0;
        const Ref end = statesOf(context_) + countOf(context_) * kStateSize;
        for (Ref state = statesOf(context_); state != end; state += kStateSize) {
            const std::uint32_t open = open_[symbolOf(state)];
            states[count] = state;
            count += open;
            sum += open * frequencyOf(state);
        }
        std::uint32_t escapeFrequency = 0;
        Escape& escape = escapeOf(masked, escapeFrequency);
        const std::uint32_t total = sum + escapeFrequency;
        const std::uint32_t value = threshold(total);
        if (value < sum) {
            std::size_t at = 0;
            std::uint32_t high = frequencyOf(states[0]);
            while (high <= value) high += frequencyOf(states[++at]);
            found_ = states[at];
            accept(high - frequencyOf(found_), frequencyOf(found_));
            escape.update();
            const int symbol = symbolOf(found_);
            updateAfterEscape();
            return symbol;
        }
        if (value >= total) {
            broken_ = true;
            return -1;
        }
        accept(sum, escapeFrequency);
        escape.sum = static_cast<std::uint16_t>(escape.sum + total);
        for (std::size_t at = 0; at < count; ++at) mask(states[at]);
    }
}

}  // namespace archiver::rar
