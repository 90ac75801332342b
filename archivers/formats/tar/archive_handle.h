#pragma once
#include <archive.h>

#include <memory>

#include "archivers/formats/tar/byte_stream.h"

namespace archiver::tar {

struct FreeArchive {
    void operator()(struct archive* handle) const noexcept { ::archive_read_free(handle); }
};

/// libarchive's reading handle.
using UniqueArchive = std::unique_ptr<struct archive, FreeArchive>;

/// Lets libarchive read a stream, and keeps what the stream reported.
class StreamSource {
public:
    explicit StreamSource(ByteStream& stream) noexcept : stream_(stream) {}

    /// @return libarchive's code
    int open(struct archive* handle) noexcept;

    /// What the stream reported; kOk when nothing went wrong there.
    [[nodiscard]] ReturnCode error() const noexcept { return error_; }

    /// Whether libarchive has seen the stream's end.
    [[nodiscard]] bool ended() const noexcept { return ended_; }

private:
    static la_ssize_t readBlock(struct archive* handle, void* user, const void** block) noexcept;
    static la_int64_t skipBytes(struct archive* handle, void* user, la_int64_t count) noexcept;

    ByteStream& stream_;
    ReturnCode error_ = kOk;
    bool ended_ = false;
};

}  // namespace archiver::tar
