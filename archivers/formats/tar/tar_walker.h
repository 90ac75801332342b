#pragma once
#include <archive_entry.h>

#include <memory>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/tar/archive_handle.h"
#include "archivers/formats/tar/byte_stream.h"

namespace archiver::tar {

/// Walks the entries of a tar stream: v7, ustar, pax and GNU, told apart by content.
class TarWalker {
public:
    /// @param nameCharset  of names that do not say theirs (those of pax headers are UTF-8)
    TarWalker(std::unique_ptr<ByteStream> stream, const char* nameCharset);

    /// Goes to the next entry.
    /// @return kOk, kNoMoreEntries, kHeaderBroken when no header stands where one should or the file ends inside an
    ///         entry, or what the stream reported; an end stays
    ReturnCode next();

    /// The current entry; valid until the next one.
    [[nodiscard]] struct archive_entry* entry() const noexcept { return entry_; }

    /// Whether libarchive had something to say about the current entry, such as a name that it could not convert.
    [[nodiscard]] bool warned() const noexcept { return warned_; }

    /// Bytes of the file that were read.
    [[nodiscard]] std::uint64_t consumed() const noexcept { return stream_->consumed(); }

    /// How many entries were gone to.
    [[nodiscard]] std::uint64_t count() const noexcept { return count_; }

    /// Hands the current entry's bytes to the sink, with zeros where a sparse file has none.
    /// @return kOk, kCannotRead when they end too early, kUserCancel, or what the stream reported
    ReturnCode read(const DataSink& sink);

    /// Reads a compressed file on to its end, where its checksums are.
    /// @return kOk, or what the stream reported
    ReturnCode finish();

private:
    [[nodiscard]] ReturnCode failure(ReturnCode otherwise) const noexcept;

    std::unique_ptr<ByteStream> stream_;
    StreamSource source_;
    UniqueArchive handle_;
    struct archive_entry* entry_ = nullptr;
    std::uint64_t count_ = 0;
    bool warned_ = false;
    ReturnCode ended_ = kOk;
};

}  // namespace archiver::tar
