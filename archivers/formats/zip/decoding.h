#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/zip/packed_source.h"

namespace archiver::zip {

/// Hands a member's bytes on, and compares them with what the directory says of them.
class CheckedSink {
public:
    /// @param hasCrc  false for members whose checksum was left out
    CheckedSink(std::uint64_t originalSize, std::uint32_t crc, bool hasCrc, const DataSink& sink) noexcept
        : originalSize_(originalSize), crc_(crc), hasCrc_(hasCrc), sink_(sink) {}

    /// @return kOk, kFileCrc when there are more bytes than were promised, kUserCancel
    ReturnCode write(std::span<const char> bytes);

    /// To be called behind the last byte.
    /// @return kOk, kCannotRead when there are fewer bytes than were promised, kFileCrc
    [[nodiscard]] ReturnCode finish() const noexcept;

private:
    std::uint64_t originalSize_;
    std::uint32_t crc_;
    bool hasCrc_;
    const DataSink& sink_;
    std::uint64_t total_ = 0;
    std::uint32_t actualCrc_ = 0;
};

/// Whether members of the method are unpacked: stored, deflated, bzip2.
bool canDecode(std::uint16_t method) noexcept;

/// Unpacks a member in pieces, whatever its size, and takes its source to the end.
/// @param method  one that `canDecode`
/// @return kOk, kCannotRead when the data ends too early, kFileCrc when it is damaged, kUserCancel, kEnoughMemory, or
///         what the source reported
ReturnCode decode(std::uint16_t method, PackedSource& source, CheckedSink& sink);

}  // namespace archiver::zip
