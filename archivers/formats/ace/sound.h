#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "archivers/formats/ace/code_table.h"
#include "archivers/formats/ace/lz77.h"

namespace archiver::ace {

/// One channel's guess at its next sample, which learns from each sample that comes.
class SoundPredictor {
public:
    /// The guess at the next sample.
    [[nodiscard]] std::uint8_t prediction() const noexcept;

    /// Learns the sample that came.
    void update(std::uint8_t sample) noexcept;

private:
    static constexpr std::size_t kOrder = 4;

    [[nodiscard]] int formula() const noexcept;
    void adaptCoefficients() noexcept;

    int last_ = 0;
    std::array<int, kOrder> differences_{};  ///< of recent samples, the latest first
    std::array<int, kOrder> coefficients_{};
    /// How far off each choice was: plus and minus each difference by turns, then as it is.
    std::array<std::uint32_t, 2 * kOrder + 1> errors_{};
    std::uint32_t bytes_ = 0;
    std::array<std::uint32_t, 2> counters_{}, savedCounters_{};  ///< of the formula and of repeating the last sample
};

/// Unpacks the sound modes: samples as differences from a prediction, in one to three channels.
class Sound {
public:
    static constexpr unsigned kModes = 4;

    /// Starts with fresh state.
    /// @param mode  0 for 8 bit, 1 for 16 bit, 2 and 3 for the two kinds of 32 bit
    void start(unsigned mode) noexcept;

    /// Begins a run: the next byte is one of the first channel.
    void restartChannels() noexcept { position_ = 0; }

    /// Makes bytes until the room is full or a mode instruction follows.
    Run decode(BitReader& reader, std::span<char> room);

private:
    static constexpr std::size_t kMostChannels = 3;
    static constexpr std::size_t kTreesPerChannel = 3;

    /// What a channel reads next.
    enum class State : std::uint8_t { kValue, kAfterZeros, kZeros };
    struct Channel {
        SoundPredictor predictor;
        State state = State::kValue;
        bool high = false;  ///< values are large lately: they have a tree of their own
        std::uint32_t adapt = 0;
        std::uint32_t zeros = 0;  ///< left of a run
    };

    bool readBlock(BitReader& reader);
    /// @return false when there is none: a mode instruction, or bits that are no code
    bool readSymbol(BitReader& reader, std::size_t tree, unsigned& symbol, Run& run);
    bool readDifference(BitReader& reader, std::size_t channel, std::uint8_t& difference, Run& run);

    std::array<CodeTable<10, 289>, kMostChannels * kTreesPerChannel> trees_;
    std::array<Channel, kMostChannels> channels_;
    std::uint32_t symbolsLeft_ = 0;
    unsigned emptyBlocks_ = 0;  ///< in a row
    unsigned mode_ = 0;
    std::uint32_t position_ = 0;
};

}  // namespace archiver::ace
