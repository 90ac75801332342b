#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "archivers/convention/return_codes.h"
#include "archivers/formats/ace/bit_reader.h"
#include "archivers/formats/ace/code_table.h"
#include "archivers/formats/ace/dictionary.h"

namespace archiver::ace {

/// What one call of a decoder made.
struct Run {
    ReturnCode code = kOk;        ///< kHuffmanCode or kFileCrc for damaged data; nothing else counts then
    std::span<const char> bytes;  ///< what was made; empty only in front of a mode change
    bool modeChange = false;      ///< a mode instruction follows in the packed data
};

/// Blocks without a symbol that may follow each other. No packer writes one; a file full of them would cost seconds and
/// give nothing.
inline constexpr unsigned kMostEmptyBlocks = 64;

/// Unpacks the LZ77 form: blocks of literals and matches. Bytes are made in the dictionary itself.
class Lz77 {
public:
    /// Starts a member.
    void start() noexcept;

    /// Makes up to `most` bytes, which is more than 0.
    /// @return bytes in the dictionary, good until it takes more
    Run decode(BitReader& reader, Dictionary& dictionary, std::size_t most);

private:
    bool readBlock(BitReader& reader);

    CodeTable<11, 284> main_;
    CodeTable<11, 255> length_;
    std::uint32_t symbolsLeft_ = 0;
    unsigned emptyBlocks_ = 0;                ///< in a row
    std::array<std::uint32_t, 4> history_{};  ///< distance values, the latest first
    std::size_t pendingLength_ = 0;           ///< rest of a match that did not fit the last time
    std::size_t pendingDistance_ = 0;
};

}  // namespace archiver::ace
