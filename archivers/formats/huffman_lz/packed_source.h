#pragma once
#include <cstddef>
#include <cstdint>

#include "archivers/formats/input_file.h"

namespace archiver::huffman_lz {

/// The packed bytes of one member, or of a part of one, in order.
class PackedSource {
public:
    /// @param offset  of the first byte in the file, which outlives the source
    /// @param size    bytes, as the header claims
    PackedSource(const InputFile& file, std::uint64_t offset, std::uint64_t size) noexcept
        : file_(file), offset_(offset), left_(size) {}
    virtual ~PackedSource() = default;
    PackedSource(const PackedSource&) = delete;
    PackedSource& operator=(const PackedSource&) = delete;

    /// Bytes that are still to come, as the header claims.
    [[nodiscard]] std::uint64_t left() const noexcept { return left_; }

    /// Gives the next bytes.
    /// @return how many: less than `size` only at the end of the member or when reading failed
    virtual std::size_t read(unsigned char* into, std::size_t size) noexcept;

    /// Whether the file ended before the member, or the system reported an error.
    [[nodiscard]] bool failed() const noexcept { return failed_; }

private:
    const InputFile& file_;
    std::uint64_t offset_;
    std::uint64_t left_;
    bool failed_ = false;
};

}  // namespace archiver::huffman_lz
