#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "archivers/formats/cab/cabinet_layout.h"

namespace archiver::cab {

/// Makes one block of a folder's data as it stands in a cabinet: its head with the checksum, and behind it the packed
/// bytes. One thread at a time.
class BlockPacker {
public:
    BlockPacker();
    ~BlockPacker();
    BlockPacker(const BlockPacker&) = delete;
    BlockPacker& operator=(const BlockPacker&) = delete;

    /// @param content  1 to 32,768 bytes; all but a folder's last block have 32,768
    /// @param before  the content of the folder's block before; empty for the first: what it holds is said shorter
    /// @param block  receives the block
    /// @throws std::bad_alloc
    /// Source: Microsoft Cabinet Format, CFDATA; Microsoft ZIP compression: "CK" and a stream of RFC 1951 that ends
    /// with the block, its window being what the blocks before have left
    void pack(CabinetMethod method, std::span<const char> content, std::span<const char> before,
              std::vector<char>& block);

private:
    struct Deflater;
    struct ExactDeflater;
    std::unique_ptr<Deflater> deflater_;
    std::unique_ptr<ExactDeflater> exact_;
    std::vector<char> exactBytes_;
};

/// The checksum of a block: the exclusive or of all groups of four bytes, with a shorter group's bytes from the
/// highest.
/// @param seed  the sum of what is summed up before
[[nodiscard]] std::uint32_t blockChecksum(std::span<const char> bytes, std::uint32_t seed) noexcept;

}  // namespace archiver::cab
