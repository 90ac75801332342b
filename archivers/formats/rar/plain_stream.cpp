#include "archivers/formats/rar/plain_stream.h"

#include <new>
#include <utility>

#include "archivers/formats/rar/plain_headers.h"

namespace archiver::rar {

PlainStream::PlainStream(VolumeSet& volumes, bool solid, FileSource source)
    : volumes_(volumes), solid_(solid), source_(std::move(source)), bytes_(volumes) {}

ReturnCode PlainStream::next(std::span<const char>& piece) noexcept {
    piece = {};
    if (error_ != kOk) return error_;
    try {
        error_ = nextPiece(piece);
    } catch (const std::bad_alloc&) {
        error_ = kEnoughMemory;
    }
    if (error_ != kOk) piece = {};
    return error_;
}

ReturnCode PlainStream::nextPiece(std::span<const char>& piece) {
    if (const ReturnCode code = bytes_.next(piece); code != kOk || !piece.empty() || ended_) return code;
    header_ = first_ ? plainStart(solid_) : std::string();
    PackedFile file;
    if (source_(file)) {
        header_ += plainFile(file.header, solid_ && !first_);
        bytes_.open(std::move(file.parts));
    } else {
        ended_ = true;
        header_ += plainEnd();
    }
    first_ = false;
    piece = header_;
    return kOk;
}

/// What is left out is only ever the rest of a part.
std::uint64_t PlainStream::skip(std::uint64_t count) noexcept { return error_ == kOk ? bytes_.skip(count) : 0; }

}  // namespace archiver::rar
