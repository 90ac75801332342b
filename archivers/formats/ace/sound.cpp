#include "archivers/formats/ace/sound.h"

#include <bit>
#include <cstdlib>

namespace archiver::ace {
namespace {

constexpr unsigned kModeChange = 288;
constexpr unsigned kFirstValue = 32;
constexpr std::array<std::uint8_t, Sound::kModes> kChannels = {1, 2, 3, 3};
constexpr std::uint8_t kChannelOfByte[Sound::kModes][4] = {{0, 0, 0, 0}, {0, 1, 0, 1}, {0, 1, 0, 2}, {1, 0, 2, 0}};

int asSigned(int value) noexcept { return static_cast<std::int8_t>(static_cast<std::uint8_t>(value & 0xFF)); }

/// Bits that the number's absolute value takes.
std::uint32_t bitsOf(int signedByte) noexcept {
    return static_cast<std::uint32_t>(std::bit_width(static_cast<unsigned>(std::abs(signedByte))));
}

}  // namespace

int SoundPredictor::formula() const noexcept {
    int sum = 8 * last_;
    for (std::size_t i = 0; i < kOrder; ++i) sum += coefficients_[i] * differences_[i];
    return sum >> 3 & 0xFF;
}

std::uint8_t SoundPredictor::prediction() const noexcept {
    return static_cast<std::uint8_t>((counters_[0] > counters_[1] ? last_ : formula()) & 0xFF);
}

void SoundPredictor::update(std::uint8_t sample) noexcept {
    const int now = asSigned(sample);
    ++bytes_;
    const int error = asSigned(formula() - now) * 8;
    for (std::size_t i = 0; i < kOrder; ++i) {
        errors_[2 * i] += static_cast<std::uint32_t>(std::abs(error - differences_[i]));
        errors_[2 * i + 1] += static_cast<std::uint32_t>(std::abs(error + differences_[i]));
    }
    errors_[2 * kOrder] += static_cast<std::uint32_t>(std::abs(error));

    const int difference = asSigned(now - last_);
    counters_[0] += bitsOf(error / 8);
    counters_[1] += bitsOf(asSigned(last_ - now));
    last_ = now;

    if (bytes_ % 32 == 0) adaptCoefficients();
    if (bytes_ % 256 == 0) {
        for (std::size_t i = 0; i < counters_.size(); ++i) {
            counters_[i] -= savedCounters_[i];
            savedCounters_[i] = counters_[i];
        }
    }
    differences_[3] = differences_[2];
    differences_[2] = differences_[1];
    differences_[1] = difference - differences_[0];
    differences_[0] = difference;
}

void SoundPredictor::adaptCoefficients() noexcept {
    constexpr int kLimit = 16;
    std::size_t best = 2 * kOrder;
    for (std::size_t i = 2 * kOrder; i-- > 0;) {
        if (errors_[i] <= errors_[best]) best = i;
    }
    errors_.fill(0);
    if (best == 2 * kOrder) return;
    int& coefficient = coefficients_[best / 2];
    if (best % 2 == 0) {
        if (coefficient >= -kLimit) --coefficient;
    } else {
        if (coefficient <= kLimit) ++coefficient;
    }
}

void Sound::start(unsigned mode) noexcept {
    mode_ = mode;
    position_ = 0;
    symbolsLeft_ = 0;
    emptyBlocks_ = 0;
    channels_ = {};
}

bool Sound::readBlock(BitReader& reader) {
    for (std::size_t i = 0; i < kChannels[mode_] * kTreesPerChannel; ++i) {
        if (!trees_[i].read(reader)) return false;
    }
    symbolsLeft_ = reader.take(15);
    emptyBlocks_ = symbolsLeft_ == 0 ? emptyBlocks_ + 1 : 0;
    return emptyBlocks_ <= kMostEmptyBlocks;
}

bool Sound::readSymbol(BitReader& reader, std::size_t tree, unsigned& symbol, Run& run) {
    while (symbolsLeft_ == 0) {
        if (!readBlock(reader)) {
            run.code = kHuffmanCode;
            return false;
        }
    }
    --symbolsLeft_;
    symbol = trees_[tree].take(reader);
    if (symbol < kModeChange) return true;
    if (symbol == kModeChange) {
        run.modeChange = true;
    } else {
        run.code = kHuffmanCode;
    }
    return false;
}

bool Sound::readDifference(BitReader& reader, std::size_t channel, std::uint8_t& difference, Run& run) {
    constexpr std::uint32_t kHighFrom = 40;
    Channel& from = channels_[channel];
    unsigned value = 0;
    if (from.state == State::kZeros) {
        if (--from.zeros == 0) from.state = State::kAfterZeros;
    } else if (from.state == State::kAfterZeros) {
        if (!readSymbol(reader, channel * kTreesPerChannel + 2, value, run)) return false;
        from.state = State::kValue;
    } else {
        unsigned symbol = 0;
        if (!readSymbol(reader, channel * kTreesPerChannel + (from.high ? 1 : 0), symbol, run)) return false;
        if (symbol >= kFirstValue) {
            value = symbol - kFirstValue;
            from.adapt = (from.adapt * 7 >> 3) + value;
            from.high = from.adapt > kHighFrom;
        } else {
            // A run of zeros; this is the first of them.
            from.zeros = symbol;
            from.state = symbol == 0 ? State::kAfterZeros : State::kZeros;
        }
    }
    difference = static_cast<std::uint8_t>((value % 2 == 0 ? value / 2 : 255 - value / 2) & 0xFF);
    return true;
}

Run Sound::decode(BitReader& reader, std::span<char> room) {
    Run run;
    std::size_t made = 0;
    while (made < room.size()) {
        const std::size_t channel = kChannelOfByte[mode_][position_ % 4];
        std::uint8_t difference = 0;
        if (!readDifference(reader, channel, difference, run)) break;
        SoundPredictor& predictor = channels_[channel].predictor;
        const auto sample = static_cast<std::uint8_t>((predictor.prediction() + difference) & 0xFF);
        predictor.update(sample);
        room[made++] = static_cast<char>(sample);
        ++position_;
    }
    if (run.code == kOk && reader.overrun()) run.code = kFileCrc;
    run.bytes = room.first(made);
    return run;
}

}  // namespace archiver::ace
