#pragma once
#include <cstdint>
#include <memory>

#include "archivers/formats/rar/file_header.h"
#include "archivers/formats/tar/archive_handle.h"

namespace archiver::rar {

/// Unpacks the files of a plain archive, one after the other.
class Decoder {
public:
    Decoder(std::unique_ptr<tar::ByteStream> stream, Generation generation);

    /// Goes to the next file; unpacks on the way what its dictionary comes from.
    /// @return kOk, kHuffmanCode, kEnoughMemory, or what the stream reported
    ReturnCode next();

    /// How many files were gone to.
    [[nodiscard]] std::uint64_t count() const noexcept { return count_; }

    /// Hands the current file's bytes to the sink and checks them against its header.
    /// @return kOk, kFileCrc, kHuffmanCode when the packed bytes make no sense, kUserCancel, kEnoughMemory, or what the
    ///         stream reported
    ReturnCode read(const FileHeader& header, const DataSink& sink);

private:
    [[nodiscard]] ReturnCode failure() const noexcept;

    std::unique_ptr<tar::ByteStream> stream_;
    tar::StreamSource source_;
    tar::UniqueArchive handle_;
    std::uint64_t count_ = 0;
    bool opened_ = false;
};

}  // namespace archiver::rar
