#pragma once
#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <memory>

/// The model of PPMd, variant H.
///
/// A port of Ppmd7.c (2010-03-12, Igor Pavlov, public domain), which is based on PPMd var.H (2001, Dmitry Shkarin,
/// public domain), as libarchive has it. Contexts and states lie in one block of memory and are told by their offsets
/// in it, so that the same bytes come out whatever the size of a pointer. How memory is given out and taken back
/// decides when the model starts anew, and so is part of the format.
namespace archiver::rar {

class Ppmd7Model {
public:
    static constexpr unsigned kMostOrder = 64;

    /// Gets the memory, or keeps it when it has that size; then `start` is needed.
    /// @param size  bytes; a multiple of 1 MiB
    /// @return false when there is not enough
    bool allocate(std::uint32_t size) noexcept;

    /// Gives the memory back.
    void release() noexcept;

    /// Whether it can be used.
    [[nodiscard]] bool started() const noexcept { return started_; }

    /// Forgets everything.
    /// @param order  2 to kMostOrder
    void start(unsigned order) noexcept;

protected:
    using Ref = std::uint32_t;  ///< an offset in the memory; 0 is nothing

    static constexpr unsigned kProbabilityBits = 14;
    static constexpr std::uint32_t kProbabilityScale = 1U << kProbabilityBits;

    /// How likely an escape is, among contexts that are alike.
    struct Escape {
        std::uint16_t sum = 0;
        std::uint8_t shift = 0;
        std::uint8_t count = 0;
        void update() noexcept;
    };

    Ppmd7Model() noexcept;
    ~Ppmd7Model() = default;

    // A state: symbol (1 byte), frequency (1), successor (4).
    static constexpr Ref kStateSize = 6;
    [[nodiscard]] std::uint8_t symbolOf(Ref state) const noexcept { return *at(state, kStateSize); }
    [[nodiscard]] std::uint8_t frequencyOf(Ref state) const noexcept { return at(state, kStateSize)[1]; }
    void setFrequency(Ref state, unsigned value) noexcept {
        at(state, kStateSize)[1] = static_cast<std::uint8_t>(value);
    }
    [[nodiscard]] Ref successorOf(Ref state) const noexcept { return load<Ref>(state + 2); }

    // A context: number of states (2 bytes), sum of frequencies (2), states (4), suffix (4). When it has one state
    // only, that stands in place of sum and states.
    [[nodiscard]] unsigned countOf(Ref context) const noexcept { return load<std::uint16_t>(context); }
    [[nodiscard]] unsigned sumOf(Ref context) const noexcept { return load<std::uint16_t>(context + 2); }
    [[nodiscard]] Ref statesOf(Ref context) const noexcept { return load<Ref>(context + 4); }
    [[nodiscard]] Ref suffixOf(Ref context) const noexcept { return load<Ref>(context + 8); }
    static Ref onlyStateOf(Ref context) noexcept { return context + 2; }

    /// The probability that the only state of the current context comes next; notes its `highBits_`.
    std::uint16_t& binaryProbability() noexcept;
    /// What estimates an escape from the current context.
    /// @param masked     symbols that were ruled out by longer contexts
    /// @param frequency  of the escape
    Escape& escapeOf(unsigned masked, std::uint32_t& frequency) noexcept;

    /// Takes note of a symbol that came: the first of the context, another one, the only one, one after an escape.
    void updateFirst() noexcept;
    void updateOther() noexcept;
    void updateBinary(std::uint16_t& probability) noexcept;
    void updateAfterEscape() noexcept;
    /// Takes note of an escape from a context with one state.
    void updateBinaryEscape(std::uint16_t& probability) noexcept;

    Ref context_ = 0;  ///< the current one
    Ref found_ = 0;    ///< the state of the last symbol
    unsigned orderFall_ = 0;
    unsigned previousSuccess_ = 0;
    unsigned highBits_ = 0;
    std::array<std::uint8_t, 256> highBitsOf_{};

private:
    static constexpr Ref kUnit = 12;
    static constexpr unsigned kIndexes = 38;

    [[nodiscard]] std::uint8_t* at(Ref ref, [[maybe_unused]] std::uint32_t bytes) const noexcept {
        assert(ref >= kBegin && ref + bytes <= kBegin + size_ + kUnit);
        return bytes_ + ref;
    }
    template <class Number>
    [[nodiscard]] Number load(Ref ref) const noexcept {
        Number value;
        std::memcpy(&value, at(ref, sizeof(value)), sizeof(value));
        return value;
    }
    template <class Number>
    void store(Ref ref, Number value) noexcept {
        std::memcpy(at(ref, sizeof(value)), &value, sizeof(value));
    }
    void setSymbol(Ref state, std::uint8_t value) noexcept { *at(state, kStateSize) = value; }
    void setSuccessor(Ref state, Ref value) noexcept { store(state + 2, value); }
    void setCount(Ref context, unsigned value) noexcept { store(context, static_cast<std::uint16_t>(value)); }
    void setSum(Ref context, unsigned value) noexcept { store(context + 2, static_cast<std::uint16_t>(value)); }
    void setStates(Ref context, Ref value) noexcept { store(context + 4, value); }
    void setSuffix(Ref context, Ref value) noexcept { store(context + 8, value); }
    void copyState(Ref to, Ref from) noexcept { std::memmove(at(to, kStateSize), at(from, kStateSize), kStateSize); }
    void swapStates(Ref one, Ref other) noexcept;
    /// Moves a state to the front of those from `first` on.
    void moveUp(Ref state, Ref first) noexcept;
    [[nodiscard]] Ref stateOf(Ref context, std::uint8_t symbol) const noexcept;

    // Memory in units of 12 bytes; blocks of 38 sizes, which an index tells.
    [[nodiscard]] unsigned indexOf(unsigned units) const noexcept { return indexOfUnits_[units - 1]; }
    void insertBlock(Ref block, unsigned index) noexcept;
    Ref removeBlock(unsigned index) noexcept;
    void splitBlock(Ref block, unsigned oldIndex, unsigned newIndex) noexcept;
    void glueBlocks() noexcept;
    Ref allocateRare(unsigned index) noexcept;
    Ref allocateUnits(unsigned index) noexcept;
    Ref allocateContext() noexcept;
    Ref shrinkUnits(Ref block, unsigned oldUnits, unsigned newUnits) noexcept;

    void startAnew() noexcept;
    Ref createSuccessors(bool skip) noexcept;
    bool addSymbol(Ref context, std::uint32_t others, unsigned count, Ref successor) noexcept;
    void countInSuffix() noexcept;
    void updateModel() noexcept;
    void rescale() noexcept;
    void nextContext() noexcept;

    static constexpr Ref kBegin = 4;

    std::unique_ptr<std::uint8_t[]> memory_;
    std::uint8_t* bytes_ = nullptr;  ///< the same
    std::uint32_t size_ = 0;
    bool started_ = false;
    unsigned order_ = 0;
    Ref longestContext_ = 0;
    unsigned initialEscape_ = 0;
    std::int32_t runLength_ = 0, initialRunLength_ = 0;
    std::uint32_t glueCount_ = 0;
    Ref text_ = 0, unitsStart_ = 0, lowUnit_ = 0, highUnit_ = 0;
    std::array<std::uint8_t, kIndexes> unitsOfIndex_{};
    std::array<std::uint8_t, 128> indexOfUnits_{};
    std::array<Ref, kIndexes> free_{};
    std::array<std::uint8_t, 256> escapeIndex_{}, binaryIndex_{};
    Escape certainEscape_;
    std::array<std::array<Escape, 16>, 25> escapes_{};
    std::array<std::array<std::uint16_t, 64>, 128> binary_{};
};

}  // namespace archiver::rar
