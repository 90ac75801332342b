#include "archivers/formats/zip/end_record.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {
namespace {

using little_endian::load16;
using little_endian::load32;
using little_endian::load64;

constexpr std::uint64_t kForeignBytes = std::uint64_t{1} << 20;  ///< that may follow an archive
constexpr int kMostCandidates = 256;                             ///< a file of nothing but signatures is no archive

/// What the end records together claim.
struct Claims {
    std::uint64_t directorySize = 0;
    std::uint64_t directoryOffset = 0;
    std::uint64_t entries = 0;
    std::uint64_t limit = 0;  ///< file offset of the first of them
    bool oneOfSeveral = false;
};

bool startsWith(const InputFile& file, std::uint64_t offset, std::uint32_t signature) {
    std::array<char, 4> bytes{};
    return file.readAll(offset, bytes) && load32(bytes.data()) == signature;
}

/// @return the record's offset when a Zip64 end record stands there and ends no later than `limit`
bool isZip64End(const InputFile& file, std::uint64_t offset, std::uint64_t limit,
                std::array<char, kZip64EndSize>& record) {
    return offset <= limit && limit - offset >= kZip64EndSize && file.readAll(offset, record) &&
           load32(record.data()) == kZip64EndSignature && load64(record.data() + 4) >= kZip64EndSize - 12;
}

/// Takes what the classic record has no room for from the Zip64 record, if there is one.
void applyZip64(const InputFile& file, std::uint64_t endOffset, const char* end, Claims& claims) {
    std::array<char, kZip64LocatorSize> locator{};
    if (endOffset < kZip64LocatorSize || !file.readAll(endOffset - kZip64LocatorSize, locator) ||
        load32(locator.data()) != kZip64LocatorSignature) {
        return;
    }
    // The record stands directly before its locator, unless it carries more than we know. The locator's own offset
    // comes second: it is wrong when bytes were put in front of the archive.
    const std::uint64_t locatorOffset = endOffset - kZip64LocatorSize;
    std::array<char, kZip64EndSize> record{};
    std::uint64_t recordOffset = locatorOffset < kZip64EndSize ? locatorOffset : locatorOffset - kZip64EndSize;
    if (!isZip64End(file, recordOffset, locatorOffset, record)) {
        recordOffset = load64(locator.data() + 8);
        if (!isZip64End(file, recordOffset, locatorOffset, record)) return;
    }
    claims.limit = recordOffset;
    const auto pick16 = [&](std::size_t field, std::uint64_t wide) {
        return load16(end + field) == 0xFFFF ? wide : load16(end + field);
    };
    const auto pick32 = [&](std::size_t field, std::uint64_t wide) {
        return load32(end + field) == 0xFFFFFFFF ? wide : load32(end + field);
    };
    claims.oneOfSeveral = pick16(4, load32(record.data() + 16)) != 0 || pick16(6, load32(record.data() + 20)) != 0;
    claims.entries = pick16(10, load64(record.data() + 32));
    claims.directorySize = pick32(12, load64(record.data() + 40));
    claims.directoryOffset = pick32(16, load64(record.data() + 48));
}

/// Finds the directory that the records claim. Directly before them it is right whatever bytes stand in front of the
/// archive; the offset comes second, for archives with something between directory and records.
std::optional<DirectoryPlace> locate(const InputFile& file, const Claims& claims) {
    const std::uint64_t limit = claims.limit;
    const bool empty = claims.entries == 0 && claims.directorySize == 0;
    if (claims.directorySize <= limit) {
        const std::uint64_t start = limit - claims.directorySize;
        if (empty || (claims.directorySize >= 4 && startsWith(file, start, kCentralSignature))) {
            return DirectoryPlace{start, limit, limit, start - claims.directoryOffset};
        }
    }
    const std::uint64_t start = claims.directoryOffset;
    if (start < limit && limit - start >= 4 && startsWith(file, start, kCentralSignature)) {
        return DirectoryPlace{start, start + std::min(claims.directorySize, limit - start), limit, 0};
    }
    return std::nullopt;
}

/// Judges one place where the end record's signature stands.
/// @param end  the record's bytes
DirectoryResult judge(const InputFile& file, std::uint64_t endOffset, const char* end) {
    Claims claims{.directorySize = load32(end + 12),
                  .directoryOffset = load32(end + 16),
                  .entries = load16(end + 10),
                  .limit = endOffset,
                  .oneOfSeveral = load16(end + 4) != 0 || load16(end + 6) != 0};
    applyZip64(file, endOffset, end, claims);
    if (claims.oneOfSeveral) return {kNotSupport, {}};
    auto place = locate(file, claims);
    if (!place) return {kHeaderBroken, {}};
    // An archive that lost its end can hold another one whole: a stored member. That one's directory is not ours.
    const bool foreignBytesFollow = endOffset + kEndSize + load16(end + 20) != file.size();
    if (foreignBytesFollow && place->shift != 0 && startsWith(file, 0, kLocalSignature)) return {kHeaderBroken, {}};
    place->commentOffset = endOffset + kEndSize;
    place->commentSize = load16(end + 20);
    return {kOk, *place};
}

/// What a file without any end record is.
ReturnCode codeWithoutEndRecord(const InputFile& file) {
    for (const std::uint32_t signature : {kLocalSignature, kEndSignature, kSpannedSignature, kSingleVolumeSignature}) {
        if (startsWith(file, 0, signature)) return kHeaderBroken;
    }
    return kFileStyle;
}

}  // namespace

DirectoryResult findDirectory(const InputFile& file) {
    DirectoryResult best{kFileStyle, {}};
    int candidates = 0;
    std::uint64_t examined = 0;  // bytes from the end of the file whose signatures are judged
    // Nearly every archive ends with its record and at most a comment; only the others cost the longer search.
    for (const std::uint64_t reach :
         {std::uint64_t{kEndSize + kLargestComment}, kEndSize + kLargestComment + kForeignBytes}) {
        const std::uint64_t tailSize = std::min(reach, file.size());
        if (tailSize < kEndSize || tailSize <= examined) break;
        std::vector<char> tail(static_cast<std::size_t>(tailSize));
        const std::uint64_t tailOffset = file.size() - tailSize;
        if (!file.readAll(tailOffset, tail)) return {kCannotRead, {}};

        const std::size_t judged = examined == 0 ? kEndSize - 1 : static_cast<std::size_t>(examined);
        std::size_t at = tail.size() - judged - 1;
        for (;; --at) {
            if (load32(tail.data() + at) == kEndSignature) {
                const DirectoryResult found = judge(file, tailOffset + at, tail.data() + at);
                if (found.code == kOk) return found;
                if (best.code == kFileStyle) best = found;
                if (++candidates == kMostCandidates) return best;
            }
            if (at == 0) break;
        }
        examined = tailSize;
    }
    if (best.code == kFileStyle) best.code = codeWithoutEndRecord(file);
    return best;
}

}  // namespace archiver::zip
