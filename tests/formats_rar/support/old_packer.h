#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats_rar/support/bit_output.h"
#include "formats_rar/support/ppmd7_encoder.h"

namespace archiver::test {

/// A filter as it stands among packed data.
struct OldFilter {
    std::optional<std::uint32_t> number = {};  ///< of its program from 1 on; 0 forgets all, and gives the first one
    std::uint32_t ahead = 0;                   ///< bytes up to its place
    std::optional<std::uint32_t> length = {};
    std::vector<std::pair<int, std::uint32_t>> registers = {};  ///< by number, in their order
    std::string program = {};                                   ///< of a new one
    std::string data = {};
};

/// Programs that are none, with the size and the checksum of the real ones.
inline constexpr std::size_t kDeltaSize = 0x1D, kCallsSize = 0x35, kJumpsSize = 0x39, kPictureSize = 0x95,
                             kSoundSize = 0xD8;
std::string standIn(std::size_t size);

/// Packs as archivers of RAR 2.9 to 4 do, step by step as a test wants it, and keeps the content beside it. Written
/// from what the format's public readers expect.
class OldPacker {
public:
    /// The start of a block with codes, in which the long ones have so many bits.
    /// @param longest  9, or 15 for codes of very different lengths
    OldPacker& codes(int longest = 9);
    /// Likewise, with the codes of the last one: told as no change.
    OldPacker& sameCodes();
    /// The start of a PPMd block with a new model.
    OldPacker& ppmd(unsigned order, unsigned megabytes, std::optional<std::uint8_t> escape = {});
    /// Likewise, with the model of the last one.
    OldPacker& samePpmd();

    // In both kinds of block.
    OldPacker& text(std::string_view bytes);
    OldPacker& filter(const OldFilter& filter);
    /// The end of a block, with another one behind it.
    OldPacker& endBlock();
    /// The end of the file.
    /// @param goesOn  the next file uses the same codes and begins with no block
    OldPacker& endFile(bool goesOn = false);

    // In a block with codes.
    /// @param repeatLow  gives the last 4 bits of the distance by the code for "16 times as before"
    OldPacker& match(std::uint32_t distance, std::uint32_t length, bool repeatLow = false);
    OldPacker& matchAgain();
    /// @param index  which of the last four distances
    OldPacker& matchAtLast(std::size_t index, std::uint32_t length);
    OldPacker& shortMatch(std::uint32_t distance);

    // In a PPMd block.
    OldPacker& ppmdMatch(std::uint32_t distance, std::uint32_t length);
    OldPacker& ppmdRun(std::uint32_t length);
    OldPacker& ppmdCode(std::uint8_t code);

    /// Any symbol of the main code, and any bits.
    OldPacker& symbol(std::uint32_t symbol);
    OldPacker& bits(std::uint32_t value, int count);

    /// The packed bytes and the content since the last call.
    std::string packed();
    std::string content();

private:
    struct Code {
        std::vector<int> lengths;
        std::vector<std::uint32_t> codes;
    };
    static Code codeOf(std::vector<int> lengths);
    void put(const Code& code, std::uint32_t symbol) { bits_.put(code.codes[symbol], code.lengths[symbol]); }
    void putLengths(const std::vector<int>& changes, bool runs);
    void copy(std::uint32_t distance, std::uint32_t length);

    BitOutput bits_;
    Ppmd7Encoder model_;
    bool inPpmd_ = false;
    std::uint8_t escape_ = 2;
    Code main_, distance_, low_, length_;
    std::string history_;
    std::size_t begin_ = 0;  ///< of the content since the last call
    std::array<std::uint32_t, 4> distances_{};
    std::uint32_t lastDistance_ = 0, lastLength_ = 0;
    std::uint32_t lastLow_ = 0;
    int lowRepeats_ = 0;
};

}  // namespace archiver::test
