#pragma once
#include <cstdint>
#include <memory>
#include <span>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::tar {

/// How a file is compressed as a whole.
enum class Compression : std::uint8_t { kNone, kGzip, kCompress, kBzip2 };

/// A file's bytes from its start to its end, uncompressed on the way.
class ByteStream {
public:
    virtual ~ByteStream() = default;

    /// Gives the next piece; an empty one at the end.
    /// @param piece  valid until the next call
    /// @return kOk, or kCannotRead when the file ends too early or cannot be read, kFileCrc when its data is damaged,
    ///         kHeaderBroken, kEnoughMemory; an error stays
    virtual ReturnCode next(std::span<const char>& piece) noexcept = 0;

    /// Leaves out bytes where that is cheaper than reading them.
    /// @return how many were left out, at most `count`
    virtual std::uint64_t skip(std::uint64_t count) noexcept = 0;

    /// Bytes of the file that were read or left out so far.
    [[nodiscard]] virtual std::uint64_t consumed() const noexcept = 0;
};

/// Makes the stream of a file; the file must outlive it.
std::unique_ptr<ByteStream> makeStream(const InputFile& file, Compression compression);

}  // namespace archiver::tar
