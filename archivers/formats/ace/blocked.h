#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "archivers/formats/ace/lz77.h"
#include "archivers/formats/ace/picture.h"
#include "archivers/formats/ace/sound.h"

namespace archiver::ace {

/// Puts the addresses of program code back, which were made absolute: those behind the opcodes E8 and E9.
/// @param bytes   the next bytes, changed in place
/// @param offset  of the first one in the member
/// @param wide    whether E8 has a 32-bit address; else 16 bits, as E9 always has
/// @return how many are done; the rest, an opcode and up to three bytes, has to come again with more behind it
std::size_t restoreAddresses(std::span<char> bytes, std::uint64_t offset, bool wide) noexcept;

/// Turns a block of differences, plane by plane, into the bytes they were made of.
/// @param block   differences; their running sums afterwards
/// @param last    the sum so far, which goes on over blocks
/// @param planes  1 to the block's size
/// @param bytes   room for as many bytes
void restoreDeltas(std::span<char> block, std::uint8_t& last, std::size_t planes, std::span<char> bytes) noexcept;

/// Unpacks the blocked form: parts in different modes, each fit for one kind of data.
class Blocked {
public:
    /// Starts a member.
    void start() noexcept;

    /// Makes the next bytes.
    /// @param rest  bytes that the member still has to give, more than 0
    /// @return 1 to `rest` bytes, good until the next call; never a mode change
    Run decode(BitReader& reader, Dictionary& dictionary, std::uint64_t rest);

private:
    enum Mode : std::uint8_t { kLz77 = 0, kDelta = 1, kProgram = 2, kFirstSound = 3, kPicture = 7 };
    struct Instruction {
        std::uint8_t mode = kLz77;
        bool wide = false;         ///< program mode: 32-bit addresses
        std::uint32_t planes = 0;  ///< delta mode
        std::uint32_t length = 0;  ///< delta mode: bytes a block
    };

    static ReturnCode readInstruction(BitReader& reader, Instruction& instruction);
    ReturnCode enter(BitReader& reader, const Instruction& instruction);
    Run decodePart(BitReader& reader, Dictionary& dictionary, std::uint64_t rest);
    Run decodeProgram(BitReader& reader, Dictionary& dictionary, std::uint64_t rest);
    Run decodeDelta(BitReader& reader, Dictionary& dictionary);
    Run releaseHeld();

    Lz77 lz77_;
    std::unique_ptr<Sound> sound_;  ///< made when they are needed first
    std::unique_ptr<Picture> picture_;
    Instruction now_;
    std::optional<Instruction> later_;  ///< met inside a delta block; takes effect behind it
    bool inFront_ = false;              ///< a mode instruction comes next in the data
    std::uint64_t offset_ = 0;          ///< of the next byte in the member
    std::uint8_t lastSum_ = 0;          ///< of the delta mode
    std::vector<char> held_;            ///< an opcode at the end of a piece of program code, and what followed it
    std::vector<char> buffer_, block_;
};

}  // namespace archiver::ace
