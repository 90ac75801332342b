#pragma once
#include <array>
#include <cstdint>
#include <deque>
#include <vector>

#include "archivers/formats/rar/bit_input.h"
#include "archivers/formats/rar/block_codes.h"
#include "archivers/formats/rar/filter_records.h"
#include "archivers/formats/rar/ppmd7_decoder.h"
#include "archivers/formats/rar/window.h"

namespace archiver::rar {

/// Unpacks what RAR 2.9 to 4 packed: blocks of literals and matches in prefix codes or of PPMd, and filters over both.
/// Window, codes, model and programs of filters last from one file to the next, for those that were packed solid.
/// Source: the public sources of libarchive
class OldUnpacker {
public:
    /// @param source  outlives this
    explicit OldUnpacker(PackedBytes& source) : bits_(source), ppmd_(bits_) {}

    /// Begins with a file; the source was opened for it.
    /// @param solid  it is packed with what the file before left
    /// @param size   its bytes
    void begin(bool solid, std::uint64_t size);

    /// Unpacks the current file's bytes, or what is left of them since the sink said stop.
    /// @return kOk, kHuffmanCode when the packed bytes make no sense, kMethod for a filter that is not known,
    ///         kUserCancel, kEnoughMemory, or what the source reported
    ReturnCode unpack(const DataSink& sink);

    /// Reads what stands behind the current file's last byte and matters for the next one only.
    ReturnCode finish();

private:
    enum class BlockKind : std::uint8_t { kCodes, kPpmd };

    [[nodiscard]] ReturnCode damage() const noexcept;
    ReturnCode flush(const DataSink& sink);
    ReturnCode flushPlain(std::uint64_t end, const DataSink& sink);
    ReturnCode undoFilters();
    [[nodiscard]] std::uint64_t stop() const noexcept;
    ReturnCode decode(std::uint64_t stop);
    ReturnCode decodeCodes(std::uint64_t stop);
    ReturnCode decodePpmd(std::uint64_t stop);
    ReturnCode startBlock();
    ReturnCode startPpmd();
    ReturnCode control(std::uint32_t symbol);
    ReturnCode endOfBlock();
    ReturnCode escape(std::uint32_t code);
    template <class TakeByte>
    ReturnCode readFilter(const TakeByte& takeByte);
    ReturnCode addFilter(const Filter& filter);
    std::uint32_t takeLength(std::uint32_t symbol);
    [[nodiscard]] bool takeDistance(std::uint32_t& distance);
    bool copy(std::uint32_t distance, std::uint32_t length);

    BitInput bits_;
    Window window_;
    BlockCodes codes_;
    Ppmd7Decoder ppmd_;
    FilterRecords records_;
    std::deque<Filter> filters_;          ///< still to be undone, by their place
    std::vector<std::uint8_t> filtered_;  ///< bytes of the last one
    std::size_t filteredGiven_ = 0;       ///< of those
    BlockKind kind_ = BlockKind::kCodes;
    bool needsBlock_ = true;                     ///< a block's start comes next
    bool fileEnded_ = true;                      ///< the mark of the file's end was read
    std::uint64_t fileBegin_ = 0, fileEnd_ = 0;  ///< positions in the window
    std::uint64_t given_ = 0;                    ///< up to there the sink has it
    std::array<std::uint32_t, 4> distances_{};
    std::uint32_t lastDistance_ = 0, lastLength_ = 0;
    std::uint32_t lowDistance_ = 0, lowDistanceRepeats_ = 0;
    std::uint8_t ppmdEscape_ = 2;
};

}  // namespace archiver::rar
