#include "archivers/formats/zip/packed_source.h"

#include <algorithm>

namespace archiver::zip {

FileSource::FileSource(const InputFile& file, std::uint64_t offset, std::uint64_t size)
    : file_(file),
      offset_(offset),
      left_(size),
      buffer_(std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(std::min<std::uint64_t>(size, kPiece)))) {
}

ReturnCode FileSource::next(std::span<const char>& piece) {
    const std::span<char> wanted(buffer_.get(), static_cast<std::size_t>(std::min<std::uint64_t>(left_, kPiece)));
    piece = wanted;
    if (!file_.readAll(offset_, wanted)) return kCannotRead;
    offset_ += wanted.size();
    left_ -= wanted.size();
    return kOk;
}

}  // namespace archiver::zip
