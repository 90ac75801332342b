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
constexpr std::size_t kDirectorySize = kCentralSize + 1 + kZip64Size;
constexpr std::uint16_t kVersion = 45;  ///< Zip64

/// What both headers tell; `at` is where the versions needed stands.
void writeCommon(char* at, const MemberData& data) {
    store16(at, kVersion);
    store16(at + 4, data.method);
    store32(at + 10, data.crc);
    store32(at + 14, 0xFFFFFFFF);
    store32(at + 18, 0xFFFFFFFF);
    store16(at + 22, 1);
}

}  // namespace

MemberArchive::MemberArchive(const InputFile& file, std::uint64_t packed, const MemberData& data)
    : file_(file), packed_(packed), packedSize_(data.packedSize) {
    writeHead(data);
    writeTail();
}

// The directory stands in front, where its offset is small however long the member is.
void MemberArchive::writeHead(const MemberData& data) {
    head_.assign(kDirectorySize + kLocalSize + 1, '\0');
    char* central = head_.data();
    store32(central, kCentralSignature);
    store16(central + 4, kVersion);
    writeCommon(central + 6, data);
    store16(central + 30, kZip64Size);
    store32(central + 42, kDirectorySize);
    central[kCentralSize] = kName;
    char* zip64 = central + kCentralSize + 1;
    store16(zip64, extra_id::kZip64);
    store16(zip64 + 2, kZip64Size - 4);
    store64(zip64 + 4, data.originalSize);
    store64(zip64 + 12, data.packedSize);

    char* local = central + kDirectorySize;
    store32(local, kLocalSignature);
    writeCommon(local + 4, data);
    local[kLocalSize] = kName;
}

// The comment is as long as a comment can be: whoever looks for the end record from the back does not meet the
// member's bytes, which can hold another archive's end record.
void MemberArchive::writeTail() {
    tail_.assign(kEndSize + kLargestComment, '\0');
    store32(tail_.data(), kEndSignature);
    store16(tail_.data() + 8, 1);
    store16(tail_.data() + 10, 1);
    store32(tail_.data() + 12, kDirectorySize);
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
