#include "archivers/formats/zip/member_archive.h"

#include <algorithm>
#include <cstring>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/extra_fields.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {
namespace {

using little_endian::store16;
using little_endian::store32;
using little_endian::store64;

constexpr char kName = 'm';
constexpr std::size_t kZip64Size = 4 + 2 * 8;
constexpr std::size_t kAesSize = 4 + 7;
constexpr std::uint16_t kVersion = 51;  ///< Zip64, AES
constexpr std::uint16_t kDeflated = 8;

/// The byte of the traditional encryption's header that a right password brings out: of the checksum, or of the time
/// where the checksum was not yet known. Source: PKWARE APPNOTE 6.3.10, 6.1.6; Info-ZIP for the time
std::uint8_t checkByte(const MemberData& data) noexcept {
    return static_cast<std::uint8_t>((data.flags & flag::kSizesFollow) != 0 ? data.dosTime >> 8 : data.crc >> 24);
}

/// What both headers tell; `at` is where the versions needed stands.
void writeCommon(char* at, const MemberData& data) {
    constexpr std::uint16_t kDate = 20 << 9 | 1 << 5 | 10;  // 2000-01-10: no clock is put forward or back then
    const std::uint8_t check = checkByte(data);
    store16(at, kVersion);
    store16(at + 2, flag::kEncrypted);
    store16(at + 4, data.encryption == Encryption::kAes ? kAesMethod : kDeflated);
    store16(at + 6, static_cast<std::uint16_t>(check << 8));
    store16(at + 8, kDate);
    store32(at + 10, std::uint32_t{check} << 24);
    store32(at + 14, 0xFFFFFFFF);
    store32(at + 18, 0xFFFFFFFF);
    store16(at + 22, 1);
}

void writeAes(char* at, const MemberData& data) {
    constexpr std::uint16_t kAe2 = 2;
    store16(at, extra_id::kAes);
    store16(at + 2, kAesSize - 4);
    store16(at + 4, kAe2);
    at[6] = 'A';
    at[7] = 'E';
    at[8] = static_cast<char>(data.aes.strength);
    store16(at + 9, kDeflated);
}

}  // namespace

MemberArchive::MemberArchive(const InputFile& file, std::uint64_t packed, const MemberData& data)
    : file_(file), packed_(packed), packedSize_(data.packedSize) {
    writeHead(data);
}

// The directory stands in front, where its offset is small however long the member is.
void MemberArchive::writeHead(const MemberData& data) {
    const bool aes = data.encryption == Encryption::kAes;
    const std::size_t extraSize = kZip64Size + (aes ? kAesSize : 0);
    const std::size_t directorySize = kCentralSize + 1 + extraSize;
    head_.assign(directorySize + kLocalSize + 1, '\0');
    char* central = head_.data();
    store32(central, kCentralSignature);
    store16(central + 4, kVersion);
    writeCommon(central + 6, data);
    store16(central + 30, static_cast<std::uint16_t>(extraSize));
    store32(central + 42, static_cast<std::uint32_t>(directorySize));
    central[kCentralSize] = kName;
    char* zip64 = central + kCentralSize + 1;
    store16(zip64, extra_id::kZip64);
    store16(zip64 + 2, kZip64Size - 4);
    store64(zip64 + 4, data.packedSize);  // nobody unpacks it, so this is as good as any
    store64(zip64 + 12, data.packedSize);
    if (aes) writeAes(zip64 + kZip64Size, data);

    char* local = central + directorySize;
    store32(local, kLocalSignature);
    writeCommon(local + 4, data);
    local[kLocalSize] = kName;
    writeTail(directorySize);
}

// The comment is as long as a comment can be: whoever looks for the end record from the back does not meet the
// member's bytes, which can hold another archive's end record.
void MemberArchive::writeTail(std::size_t directorySize) {
    tail_.assign(kEndSize + kLargestComment, '\0');
    store32(tail_.data(), kEndSignature);
    store16(tail_.data() + 8, 1);
    store16(tail_.data() + 10, 1);
    store32(tail_.data() + 12, static_cast<std::uint32_t>(directorySize));
    store16(tail_.data() + 20, kLargestComment);
}

std::uint64_t MemberArchive::size() const noexcept { return head_.size() + packedSize_ + tail_.size(); }

bool MemberArchive::readAt(std::uint64_t offset, std::span<char> into, std::size_t& got) const noexcept {
    got = 0;
    // Copies the part of a text in memory that lies at `offset`, `start` being where the text starts in this archive.
    const auto copy = [&](const std::string& text, std::uint64_t start) {
        if (got == into.size() || offset < start || offset - start >= text.size()) return;
        const auto from = static_cast<std::size_t>(offset - start);
        const std::size_t count = std::min(into.size() - got, text.size() - from);
        std::memcpy(into.data() + got, text.data() + from, count);
        got += count;
        offset += count;
    };
    copy(head_, 0);
    const std::uint64_t packedEnd = head_.size() + packedSize_;
    if (got < into.size() && offset >= head_.size() && offset < packedEnd) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(into.size() - got, packedEnd - offset));
        if (!file_.readAll(packed_ + (offset - head_.size()), into.subspan(got, count))) return false;
        got += count;
        offset += count;
    }
    copy(tail_, packedEnd);
    return true;
}

}  // namespace archiver::zip
