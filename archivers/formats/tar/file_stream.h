#pragma once
#include <cstddef>
#include <memory>

#include "archivers/formats/tar/byte_stream.h"

namespace archiver::tar {

/// A file as it is.
class FileStream final : public ByteStream {
public:
    explicit FileStream(const InputFile& file) : file_(file), buffer_(std::make_unique_for_overwrite<char[]>(kPiece)) {}

    ReturnCode next(std::span<const char>& piece) noexcept override;
    std::uint64_t skip(std::uint64_t count) noexcept override;
    [[nodiscard]] std::uint64_t consumed() const noexcept override { return position_; }

private:
    static constexpr std::size_t kPiece = std::size_t{64} * 1024;

    const InputFile& file_;
    std::unique_ptr<char[]> buffer_;
    std::uint64_t position_ = 0;
};

}  // namespace archiver::tar
