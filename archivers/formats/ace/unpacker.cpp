#include "archivers/formats/ace/unpacker.h"

#include <algorithm>
#include <utility>

#include "archivers/formats/ace/checksum.h"

namespace archiver::ace {

MemberUnpacker::MemberUnpacker(Decoders& decoders, VolumeChain& chain, const Part& part,
                               std::shared_ptr<const Cipher> cipher, bool keep)
    : decoders_(decoders),
      data_(chain, part, std::move(cipher)),
      reader_(data_),
      method_(static_cast<Method>(part.header.method)),
      keep_(keep),
      rest_(part.header.originalSize),
      checksum_(kEmptyChecksum) {
    if (method_ == kLz77Method) decoders_.lz77.start();
    if (method_ == kBlockedMethod) decoders_.blocked.start();
}

ReturnCode MemberUnpacker::next(std::span<const char>& piece) {
    if (rest_ == 0) return finish();
    ReturnCode code = decode(piece);
    // Damage that shows when the data comes to an end too early has its cause there.
    if (data_.error() != kOk && code != kOk) code = data_.error();
    if (code != kOk) return code;
    rest_ -= piece.size();
    checksum_ = checksum(piece, checksum_);
    return kOk;
}

ReturnCode MemberUnpacker::decode(std::span<const char>& piece) {
    constexpr std::uint64_t kMost = 64U << 10;
    if (method_ == kStored) return readStored(piece);
    Run run = method_ == kLz77Method ? decoders_.lz77.decode(reader_, decoders_.dictionary,
                                                             static_cast<std::size_t>(std::min(rest_, kMost)))
                                     : decoders_.blocked.decode(reader_, decoders_.dictionary, rest_);
    if (run.modeChange && run.code == kOk) run.code = kFileCrc;  // there are no modes in plain LZ77
    piece = run.bytes;
    return run.code;
}

ReturnCode MemberUnpacker::readStored(std::span<const char>& piece) {
    constexpr std::uint64_t kMost = 64U << 10;
    // Whole cipher blocks, also for the last bytes.
    const std::uint64_t wanted =
        std::min((rest_ + Decryption::kBlock - 1) / Decryption::kBlock * Decryption::kBlock, kMost);
    buffer_.resize(static_cast<std::size_t>(wanted));
    const std::size_t filled = data_.fill(buffer_);
    if (filled == 0) return kFileCrc;
    piece = std::span<const char>(buffer_).first(static_cast<std::size_t>(std::min<std::uint64_t>(rest_, filled)));
    if (keep_) decoders_.dictionary.append(piece);
    return kOk;
}

ReturnCode MemberUnpacker::finish() {
    const ReturnCode code = data_.goToLast();
    const FileHeader& last = data_.part().header;
    // Whatever was cut off behind it, a member with the right checksum is whole.
    if (!last.has(file_flag::kInNextVolume) && checksum_ == last.checksum) return kNoMoreEntries;
    return code == kOk ? kFileCrc : code;
}

}  // namespace archiver::ace
