#pragma once
#include <cstdint>
#include <functional>

#include "archivers/formats/rar/header_walk.h"

namespace archiver::rar {

/// Gives the next file whose bytes are wanted; false behind the last one.
using FileSource = std::function<bool(PackedFile& file)>;

/// Unpacks files that were packed one after the other with one dictionary.
class GroupDecoder {
public:
    virtual ~GroupDecoder() = default;

    /// Goes to the next file; unpacks on the way what its dictionary comes from.
    /// @param progress  is called with no bytes now and then; false stops
    /// @return kOk, kUserCancel, or what keeps this file and all behind it from being unpacked
    virtual ReturnCode next(const DataSink& progress) = 0;

    /// How many files were gone to.
    [[nodiscard]] virtual std::uint64_t count() const noexcept = 0;

    /// Hands the current file's bytes to the sink and checks them against its header.
    /// @return kOk, kFileCrc, kHuffmanCode when the packed bytes make no sense, kMethod, kUserCancel, kEnoughMemory, or
    ///         what reading them failed with
    virtual ReturnCode read(const FileHeader& header, const DataSink& sink) = 0;
};

}  // namespace archiver::rar
