#pragma once
#include <zlib.h>

#include <cstddef>
#include <memory>
#include <string>

#include "archivers/formats/tar/byte_stream.h"
#include "archivers/formats/tar/file_stream.h"

namespace archiver::tar {

/// What stands before the compressed data. Source: RFC 1952
struct GzipHeader {
    std::string name;            ///< bytes as stored; empty when there is none
    std::uint32_t modified = 0;  ///< seconds since 1970-01-01 UTC; 0 = not known
    std::uint8_t system = 255;   ///< 255 = not known
};

/// Reads the header.
/// @return false when it is none that can be read: a method other than deflate, reserved flags, cut short, or a name of
///         more than 64 KiB
bool readGzipHeader(const InputFile& file, GzipHeader& header);

/// The contents of a gzip file; several compressed members follow each other without a seam, foreign bytes behind them
/// are ignored.
///
/// zlib and not libarchive's filter, because that one does not look at the checksums. These are summed up here, by the
/// faster function of libdeflate.
class GzipStream final : public ByteStream {
public:
    explicit GzipStream(const InputFile& file);
    ~GzipStream() override;
    GzipStream(const GzipStream&) = delete;
    GzipStream& operator=(const GzipStream&) = delete;

    ReturnCode next(std::span<const char>& piece) noexcept override;
    std::uint64_t skip(std::uint64_t) noexcept override { return 0; }
    [[nodiscard]] std::uint64_t consumed() const noexcept override { return input_.consumed(); }

private:
    static constexpr std::size_t kPiece = std::size_t{256} * 1024;  // zlib copies 32 KiB aside for each

    void fill() noexcept;
    void refill() noexcept;
    void afterMember() noexcept;
    void startMember() noexcept;
    [[nodiscard]] ReturnCode checkMember() const noexcept;

    const InputFile& file_;
    FileStream input_;
    z_stream inflate_{};
    std::unique_ptr<char[]> buffer_;
    std::uint32_t crc_ = 0;   ///< of the current compressed member
    std::uint32_t size_ = 0;  ///< likewise, modulo 2^32
    bool inputEnded_ = false;
    bool ended_ = false;
    ReturnCode error_ = kOk;
};

}  // namespace archiver::tar
