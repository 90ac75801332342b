#include "archivers/formats/zip/unpack.h"

#include <algorithm>
#include <memory>
#include <new>
#include <optional>

#include "archivers/formats/zip/decoding.h"
#include "archivers/formats/zip/decryption.h"
#include "archivers/formats/zip/packed_source.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {

/// A member's place in the file, and what of it was read on the way there.
struct Unpacker::Located {
    std::uint64_t packed = 0;  ///< where its packed bytes start
    std::unique_ptr<char[]> bytes;
    std::span<const char> data;  ///< all packed bytes, when they were wanted
};

ReturnCode Unpacker::prepare() {
    if (prepared_) return kOk;
    const ReturnCode code = order_.build(file_, place_);
    prepared_ = code == kOk;
    return code;
}

ReturnCode Unpacker::unpack(const PackedMember& member, std::span<const std::string> passwords, const DataSink& sink) {
    const MemberData& data = member.data;
    if (data.encryption == Encryption::kOther || !canDecode(data.method)) return kMethod;
    if (data.encryption != Encryption::kNone && passwords.empty()) return kPasswordFile;

    const InMemoryUnpacker::Share share = inMemory_.reserve(data);
    const bool inMemory = static_cast<bool>(share);
    Located located;
    ReturnCode code = locate(member, inMemory ? static_cast<std::size_t>(data.packedSize) : 0, located);
    if (code != kOk) return code;
    code = unpackLocated(member, located, inMemory, passwords, sink);
    consumed_ += data.packedSize;
    return code;
}

ReturnCode Unpacker::unpackLocated(const PackedMember& member, const Located& located, bool inMemory,
                                   std::span<const std::string> passwords, const DataSink& sink) {
    const MemberData& data = member.data;
    if (inMemory) {
        if (const auto code = inMemory_.unpack(located.data, data, sink)) return *code;
    }
    const bool hasCrc = data.encryption != Encryption::kAes || data.aes.version == 1;
    CheckedSink checked(data.originalSize, data.crc, hasCrc, sink);
    if (data.packedSize == 0 && data.originalSize == 0) return checked.finish();  // whatever its method is
    if (data.encryption != Encryption::kNone) {
        const DecryptedSource decrypted = decrypt(file_, located.packed, data, passwords);
        if (!decrypted.source) return decrypted.code;
        return decode(data.method, *decrypted.source, checked);
    }
    FileSource source(file_, located.packed, data.packedSize);
    return decode(data.method, source, checked);
}

/// Header and data of a small member come with one call of the system.
ReturnCode Unpacker::locate(const PackedMember& member, std::size_t dataWanted, Located& located) const {
    constexpr std::size_t kUsualExtra = 64;
    const std::uint64_t header = member.data.localOffset + place_.shift;
    const std::optional<std::uint64_t> end = order_.endOf(header);
    if (!end || header >= file_.size() || file_.size() - header < kLocalSize) return kHeaderBroken;

    std::size_t size = kLocalSize + member.storedName.size() + kUsualExtra + dataWanted;
    const auto readMore = [&](std::size_t wanted) {
        const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, file_.size() - header));
        located.bytes.reset(new char[there]);
        size = there;
        return file_.readAll(header, {located.bytes.get(), there});
    };
    if (!readMore(size)) return kCannotRead;
    const auto headerSize = localHeaderSize({located.bytes.get(), size});
    if (!headerSize) return kHeaderBroken;
    located.packed = header + *headerSize;
    if (located.packed > file_.size() || file_.size() - located.packed < member.data.packedSize) return kCannotRead;
    if (*end < located.packed || *end - located.packed < member.data.packedSize) return kHeaderBroken;
    if (*headerSize + dataWanted > size && !readMore(*headerSize + dataWanted)) return kCannotRead;
    if (!agrees(parseLocalHeader({located.bytes.get(), *headerSize}), member)) return kHeaderBroken;
    located.data = {located.bytes.get() + *headerSize, dataWanted};
    return kOk;
}

}  // namespace archiver::zip
