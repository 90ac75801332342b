#include "archivers/formats/zip/header_writer.h"

#include <algorithm>
#include <limits>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/moments.h"
#include "archivers/formats/utf8.h"
#include "archivers/formats/zip/extra_fields.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {
namespace {

constexpr std::uint32_t kIn64 = 0xFFFFFFFF;
constexpr std::uint16_t kIn64Short = 0xFFFF;
/// "Version needed to extract" (APPNOTE.TXT 4.4.3), in tenths: folders and deflate; Zip64.
constexpr std::uint16_t kPlainVersion = 20, kZip64Version = 45;
/// MS-DOS as system, for attributes and nothing else; the version that knows names in UTF-8.
constexpr std::uint16_t kMadeBy = 63;

void add16(std::string& bytes, std::uint64_t value) {
    bytes.push_back(static_cast<char>(value & 0xFF));
    bytes.push_back(static_cast<char>(value >> 8 & 0xFF));
}
void add32(std::string& bytes, std::uint64_t value) {
    add16(bytes, value & 0xFFFF);
    add16(bytes, value >> 16 & 0xFFFF);
}
void add64(std::string& bytes, std::uint64_t value) {
    add32(bytes, value & 0xFFFFFFFF);
    add32(bytes, value >> 32);
}

std::uint32_t shortOf(std::uint64_t value) noexcept {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, kIn64));
}

std::uint16_t flagsOf(const NewMember& member) noexcept {
    return static_cast<std::uint16_t>(member.flags | (isAscii(member.name) ? 0 : flag::kUtf8));
}

/// Seconds as the extended timestamp has them: signed, 32 bits.
bool fitsTimestamp(const std::optional<Moment>& moment) noexcept {
    return moment && moment->seconds >= std::numeric_limits<std::int32_t>::min() &&
           moment->seconds <= std::numeric_limits<std::int32_t>::max();
}

/// Source: Info-ZIP, extrafld.txt. The time of change alone: the others are in the NTFS field.
void addTimestamp(std::string& extra, const NewMember& member) {
    if (member.plainTimes || !fitsTimestamp(member.written)) return;
    add16(extra, extra_id::kExtendedTimestamp);
    add16(extra, 5);
    extra.push_back(1);
    add32(extra, static_cast<std::uint64_t>(member.written->seconds));
}

std::uint64_t fileTimeOf(const std::optional<Moment>& moment, const Moment& otherwise) noexcept {
    constexpr std::int64_t kFrom1601To1970 = 11'644'473'600;
    const Moment& time = moment ? *moment : otherwise;
    return static_cast<std::uint64_t>(time.seconds + kFrom1601To1970) * 10'000'000 + time.nanoseconds / 100;
}

/// Source: PKWARE APPNOTE 6.3.10, 4.5.5. In the directory alone, where systems know when a file was made, or when its
/// time is beyond what the timestamp reaches.
void addFileTimes(std::string& extra, const NewMember& member) {
    if (member.plainTimes || !member.written) return;
    if (!member.created && fitsTimestamp(member.written)) return;
    add16(extra, extra_id::kNtfs);
    add16(extra, 32);
    add32(extra, 0);
    add16(extra, 1);
    add16(extra, 24);
    add64(extra, fileTimeOf(member.written, *member.written));
    add64(extra, fileTimeOf(member.accessed, *member.written));
    add64(extra, fileTimeOf(member.created, *member.written));
}

DosStamp stampOf(const NewMember& member) noexcept { return dosStampOf(member.written ? *member.written : Moment{}); }

/// Version, flags, method, time and checksum, as both headers have them.
void addCommon(std::string& header, const NewMember& member, bool zip64, bool withSizes) {
    const DosStamp stamp = stampOf(member);
    add16(header, zip64 ? kZip64Version : kPlainVersion);
    add16(header, flagsOf(member));
    add16(header, member.method);
    add16(header, stamp.time);
    add16(header, stamp.date);
    add32(header, withSizes ? member.crc : 0);
}

}  // namespace

std::string localHeaderOf(const NewMember& member) {
    const bool withSizes = (member.flags & flag::kSizesFollow) == 0;
    std::string extra;
    if (member.large) {
        add16(extra, extra_id::kZip64);
        add16(extra, 16);
        add64(extra, withSizes ? member.originalSize : 0);
        add64(extra, withSizes ? member.packedSize : 0);
    }
    addTimestamp(extra, member);
    std::string header;
    add32(header, kLocalSignature);
    addCommon(header, member, member.large, withSizes);
    add32(header, member.large ? kIn64 : withSizes ? member.packedSize : 0);
    add32(header, member.large ? kIn64 : withSizes ? member.originalSize : 0);
    add16(header, member.name.size());
    add16(header, extra.size());
    return header + member.name + extra;
}

std::string descriptorOf(const NewMember& member) {
    std::string descriptor;
    add32(descriptor, kSpannedSignature);
    add32(descriptor, member.crc);
    (member.large ? add64 : add32)(descriptor, member.packedSize);
    (member.large ? add64 : add32)(descriptor, member.originalSize);
    return descriptor;
}

std::string centralHeaderOf(const NewMember& member) {
    std::string extra;
    std::string large;
    for (const std::uint64_t value : {member.originalSize, member.packedSize, member.localOffset}) {
        if (value >= kIn64) add64(large, value);
    }
    if (!large.empty()) {
        add16(extra, extra_id::kZip64);
        add16(extra, large.size());
        extra += large;
    }
    addTimestamp(extra, member);
    addFileTimes(extra, member);
    std::string header;
    add32(header, kCentralSignature);
    add16(header, kMadeBy);
    addCommon(header, member, member.large || !large.empty(), true);
    add32(header, shortOf(member.packedSize));
    add32(header, shortOf(member.originalSize));
    add16(header, member.name.size());
    add16(header, extra.size());
    add16(header, 0);  // comment
    add16(header, 0);  // volume
    add16(header, 0);  // internal attributes
    add32(header, member.attributes);
    add32(header, shortOf(member.localOffset));
    return header + member.name + extra;
}

std::string movedHeader(std::string_view header, std::uint64_t localOffset) {
    const std::size_t nameSize = little_endian::load16(header.data() + 28);
    const std::size_t extraSize = little_endian::load16(header.data() + 30);
    const std::string_view extra = header.substr(kCentralSize + nameSize, extraSize);
    const bool wasIn64 = little_endian::load32(header.data() + 42) == kIn64;
    std::string moved(header);
    little_endian::store32(moved.data() + 42, shortOf(localOffset));
    if (!wasIn64 && localOffset < kIn64) return moved;

    // The Zip64 field has the sizes in front of the offset, each only where the header has no room for it.
    std::string large(extraField(extra, extra_id::kZip64));
    const std::size_t sizes = (little_endian::load32(header.data() + 24) == kIn64 ? 8U : 0U) +
                              (little_endian::load32(header.data() + 20) == kIn64 ? 8U : 0U);
    large.resize(sizes);
    if (localOffset >= kIn64) add64(large, localOffset);
    std::string fields;
    if (!large.empty()) {
        add16(fields, extra_id::kZip64);
        add16(fields, large.size());
        fields += large;
    }
    forEachExtraField(extra, [&](std::uint16_t id, std::string_view data) {
        if (id == extra_id::kZip64) return;
        add16(fields, id);
        add16(fields, data.size());
        fields += data;
    });
    if (fields.size() > 0xFFFF) return moved;  // nobody's field is as long as that
    moved.replace(kCentralSize + nameSize, extraSize, fields);
    little_endian::store16(moved.data() + 30, static_cast<std::uint16_t>(fields.size()));
    if (little_endian::load16(moved.data() + 6) < kZip64Version) {
        little_endian::store16(moved.data() + 6, kZip64Version);
    }
    return moved;
}

std::string endRecordsOf(std::uint64_t entries, std::uint64_t start, std::uint64_t size, std::string_view comment) {
    std::string records;
    if (entries >= kIn64Short || start >= kIn64 || size >= kIn64) {
        add32(records, kZip64EndSignature);
        add64(records, kZip64EndSize - 12);
        add16(records, kMadeBy);
        add16(records, kZip64Version);
        add32(records, 0);  // this volume, and that of the directory
        add32(records, 0);
        add64(records, entries);
        add64(records, entries);
        add64(records, size);
        add64(records, start);
        add32(records, kZip64LocatorSignature);
        add32(records, 0);
        add64(records, start + size);
        add32(records, 1);
    }
    comment = comment.substr(0, kLargestComment);
    const std::uint64_t shownEntries = std::min<std::uint64_t>(entries, kIn64Short);
    add32(records, kEndSignature);
    add32(records, 0);
    add16(records, shownEntries);
    add16(records, shownEntries);
    add32(records, shortOf(size));
    add32(records, shortOf(start));
    add16(records, comment.size());
    return records.append(comment);
}

}  // namespace archiver::zip
