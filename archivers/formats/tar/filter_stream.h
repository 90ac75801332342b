#pragma once
#include "archivers/formats/tar/archive_handle.h"
#include "archivers/formats/tar/byte_stream.h"
#include "archivers/formats/tar/file_stream.h"

namespace archiver::tar {

/// The contents of a bzip2 or compress file, through libarchive's filters.
///
/// A compress file cannot tell that it was cut or changed: it holds no checksum and no length.
/// A file that was packed twice by compress is refused with kNotSupport: the filters would unpack both layers at once.
class FilterStream final : public ByteStream {
public:
    FilterStream(const InputFile& file, Compression compression);

    ReturnCode next(std::span<const char>& piece) noexcept override;
    std::uint64_t skip(std::uint64_t) noexcept override { return 0; }
    [[nodiscard]] std::uint64_t consumed() const noexcept override { return input_.consumed(); }

private:
    ReturnCode open() noexcept;
    [[nodiscard]] ReturnCode failure() const noexcept;

    FileStream input_;
    StreamSource source_;
    Compression compression_;
    UniqueArchive handle_;
    bool opened_ = false;
    bool ended_ = false;
    ReturnCode error_ = kOk;
};

}  // namespace archiver::tar
