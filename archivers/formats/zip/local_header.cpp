#include "archivers/formats/zip/local_header.h"

#include <algorithm>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/extra_fields.h"
#include "archivers/formats/zip/member_name.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {
namespace {

using little_endian::load16;
using little_endian::load32;

constexpr std::uint32_t kInZip64 = 0xFFFFFFFF;

/// "\" counts as "/", and the ones at the end do not count.
bool sameName(std::string_view one, std::string_view other) {
    const auto withoutEnd = [](std::string_view name) { return name.substr(0, name.find_last_not_of("/\\") + 1); };
    const auto plain = [](char byte) { return byte == '\\' ? '/' : byte; };
    return std::ranges::equal(withoutEnd(one), withoutEnd(other), {}, plain, plain);
}

std::string decodedName(std::string_view name, std::uint16_t flags, std::string_view extra, int system) {
    CentralHeader header;
    header.madeBy = static_cast<std::uint16_t>(system << 8);
    header.flags = flags;
    header.name = name;
    std::string decoded;
    decodeMemberName(header, extraField(extra, extra_id::kUnicodePath), decoded);
    return decoded;
}

/// The text of a Unicode Path field, whichever name it was made for.
std::string_view pathIn(std::string_view field) {
    constexpr std::size_t kVersionAndChecksum = 5;
    return field.size() < kVersionAndChecksum ? std::string_view() : field.substr(kVersionAndChecksum);
}

bool agreesInName(const LocalHeader& local, const PackedMember& member) {
    if (sameName(local.name, member.storedName)) return true;
    const std::string_view path = pathIn(member.unicodePath);
    if (!path.empty() && sameName(path, pathIn(extraField(local.extra, extra_id::kUnicodePath)))) return true;
    if (((local.flags ^ member.data.flags) & flag::kUtf8) == 0) return false;
    return sameName(decodedName(local.name, local.flags, local.extra, member.system),
                    decodedName(member.storedName, member.data.flags, {}, member.system));
}

bool agreesInSizes(const LocalHeader& local, const MemberData& data) {
    if (((local.flags | data.flags) & flag::kSizesFollow) != 0) return true;
    const bool crcLeftOut = data.encryption == Encryption::kAes && data.aes.version == 2;
    if (!crcLeftOut && local.crc != data.crc) return false;
    std::uint64_t original = local.originalSize;
    std::uint64_t packed = local.packedSize;
    applyZip64(extraField(local.extra, extra_id::kZip64), {&original, &packed});
    // Some write the field before they know the sizes, and leave zeros there; others write no field at all.
    const auto same = [](std::uint32_t shown, std::uint64_t size, std::uint64_t expected) {
        return size == expected || (shown == kInZip64 && (size == 0 || size == kInZip64));
    };
    return same(local.originalSize, original, data.originalSize) && same(local.packedSize, packed, data.packedSize);
}

bool agreesInAes(const LocalHeader& local, const MemberData& data) {
    if (data.encryption != Encryption::kAes) return true;
    const auto aes = parseAesField(extraField(local.extra, extra_id::kAes));
    return !aes || *aes == data.aes;
}

}  // namespace

std::optional<std::size_t> localHeaderSize(std::span<const char> fixed) noexcept {
    if (fixed.size() < kLocalSize || load32(fixed.data()) != kLocalSignature) return std::nullopt;
    return kLocalSize + load16(fixed.data() + 26) + load16(fixed.data() + 28);
}

LocalHeader parseLocalHeader(std::span<const char> bytes) noexcept {
    const char* const fixed = bytes.data();
    const std::size_t nameSize = load16(fixed + 26);
    return {.flags = load16(fixed + 6),
            .method = load16(fixed + 8),
            .crc = load32(fixed + 14),
            .packedSize = load32(fixed + 18),
            .originalSize = load32(fixed + 22),
            .name = {fixed + kLocalSize, nameSize},
            .extra = {fixed + kLocalSize + nameSize, load16(fixed + 28)}};
}

bool agrees(const LocalHeader& local, const PackedMember& member) {
    const MemberData& data = member.data;
    const auto encryptionBits = static_cast<std::uint16_t>(flag::kEncrypted | flag::kStrongEncryption);
    return ((local.flags ^ data.flags) & encryptionBits) == 0 && local.method == data.storedMethod &&
           agreesInSizes(local, data) && agreesInAes(local, data) && agreesInName(local, member);
}

}  // namespace archiver::zip
