#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::zip {

/// A member's packed bytes, from first to last.
class PackedSource {
public:
    virtual ~PackedSource() = default;

    /// Gives the next piece; an empty one at the end.
    /// @param piece  valid until the next call
    /// @return kOk, kCannotRead, or kFileCrc when an authentication code behind the bytes is not theirs
    virtual ReturnCode next(std::span<const char>& piece) = 0;
};

/// They lie in the file as they are.
class FileSource final : public PackedSource {
public:
    FileSource(const InputFile& file, std::uint64_t offset, std::uint64_t size);

    ReturnCode next(std::span<const char>& piece) override;

private:
    static constexpr std::size_t kPiece = std::size_t{256} * 1024;

    const InputFile& file_;
    std::uint64_t offset_;
    std::uint64_t left_;
    std::unique_ptr<char[]> buffer_;
};

}  // namespace archiver::zip
