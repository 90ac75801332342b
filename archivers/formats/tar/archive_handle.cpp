#include "archivers/formats/tar/archive_handle.h"

#include <cerrno>

namespace archiver::tar {

int StreamSource::open(struct archive* handle) noexcept {
    return ::archive_read_open2(handle, this, nullptr, &StreamSource::readBlock, &StreamSource::skipBytes, nullptr);
}

la_ssize_t StreamSource::readBlock(struct archive* handle, void* user, const void** block) noexcept {
    auto& self = *static_cast<StreamSource*>(user);
    std::span<const char> piece;
    if (const ReturnCode code = self.stream_.next(piece); code != kOk) {
        self.error_ = code;
        ::archive_set_error(handle, EIO, "The file could not be read");
        return ARCHIVE_FATAL;
    }
    self.ended_ = piece.empty();
    *block = piece.data();
    return static_cast<la_ssize_t>(piece.size());
}

la_int64_t StreamSource::skipBytes(struct archive* /*handle*/, void* user, la_int64_t count) noexcept {
    if (count <= 0) return 0;
    return static_cast<la_int64_t>(static_cast<StreamSource*>(user)->stream_.skip(static_cast<std::uint64_t>(count)));
}

}  // namespace archiver::tar
