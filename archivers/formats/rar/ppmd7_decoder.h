#pragma once
#include "archivers/formats/rar/bit_input.h"
#include "archivers/formats/rar/ppmd7.h"

namespace archiver::rar {

/// Decodes symbols that were packed with PPMd, variant H, and a range coder without carries.
/// Source: Ppmd7.c and what libarchive adds to it for RAR, public domain; see ppmd7.h
class Ppmd7Decoder : public Ppmd7Model {
public:
    /// @param input  outlives this
    explicit Ppmd7Decoder(BitInput& input) : input_(input) {}

    /// Begins with the range coder's bytes; the model stays as it is.
    void begin();

    /// @return -1 when the packed bytes make no sense; no more is to be asked for then
    int symbol();

private:
    std::uint32_t threshold(std::uint32_t total) noexcept;
    void accept(std::uint32_t start, std::uint32_t size);
    int symbolOfMany();
    int symbolOfOne();
    int symbolOfSuffixes();
    void mask(Ref state) noexcept { open_[symbolOf(state)] = 0; }
    void maskContext() noexcept;

    BitInput& input_;
    std::uint32_t low_ = 0, range_ = 0, code_ = 0;
    std::array<std::uint8_t, 256> open_{};  ///< 0 for symbols that longer contexts ruled out, else 1
    bool broken_ = false;
};

}  // namespace archiver::rar
