#include "archivers/infozip32/old_archive.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <string_view>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/central_directory.h"
#include "archivers/formats/zip/end_record.h"
#include "archivers/formats/zip/extra_fields.h"
#include "archivers/formats/zip/header_writer.h"
#include "archivers/formats/zip/local_header.h"
#include "archivers/formats/zip/member_fields.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::infozip {
namespace {

using little_endian::load16;
using little_endian::load32;
using little_endian::load64;

/// A directory is held in memory; a larger one than this is none that a 32-bit process can change.
constexpr std::uint64_t kLargestDirectory = std::uint64_t{1} << 29;

zip::CentralHeader parsed(std::string_view header) noexcept {
    zip::CentralHeader fields;
    fields.madeBy = load16(header.data() + 4);
    fields.flags = load16(header.data() + 8);
    fields.method = load16(header.data() + 10);
    fields.dosTime = load16(header.data() + 12);
    fields.dosDate = load16(header.data() + 14);
    fields.crc = load32(header.data() + 16);
    fields.packedSize = load32(header.data() + 20);
    fields.originalSize = load32(header.data() + 24);
    fields.externalAttributes = load32(header.data() + 38);
    fields.localOffset = load32(header.data() + 42);
    fields.name = header.substr(zip::kCentralSize, load16(header.data() + 28));
    fields.extra = header.substr(zip::kCentralSize + fields.name.size(), load16(header.data() + 30));
    return fields;
}

OldMember memberOf(std::string_view header, zip::MemberData& data) {
    const zip::CentralHeader fields = parsed(header);
    Member told;
    zip::fillMember(fields, told, data);
    OldMember member;
    member.header = header;
    member.name = std::move(told.name);
    std::ranges::replace(member.name, '\\', '/');
    member.written = told.written;
    member.exactTime = !zip::extraField(fields.extra, zip::extra_id::kExtendedTimestamp).empty() ||
                       !zip::extraField(fields.extra, zip::extra_id::kNtfs).empty();
    member.folder = told.kind == MemberKind::kFolder;
    return member;
}

/// Bytes of what follows the data, told by its own contents: neither its mark nor the width of its sizes is told
/// elsewhere for sure.
std::size_t descriptorSize(const InputFile& file, std::uint64_t offset, std::uint64_t limit,
                           const zip::MemberData& data) {
    std::array<char, 24> bytes{};
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), limit - offset));
    const std::size_t got = file.readAt(offset, std::span(bytes).first(wanted)).value_or(0);
    const std::size_t mark = got >= 4 && load32(bytes.data()) == zip::kSpannedSignature ? 4 : 0;
    if (got < mark + 12 || load32(bytes.data() + mark) != data.crc) return 0;
    const char* const sizes = bytes.data() + mark + 4;
    if (got >= mark + 20 && load64(sizes) == data.packedSize && load64(sizes + 8) == data.originalSize) {
        return mark + 20;
    }
    return load32(sizes) == static_cast<std::uint32_t>(data.packedSize) ? mark + 12 : 0;
}

}  // namespace

ReturnCode OldArchive::open(const std::filesystem::path& archive, bool repair) {
    InputFileResult opened = openInputFile(archive);
    if (!opened.file) return opened.code;
    file_ = std::move(opened.file);
    const ReturnCode code = readDirectory();
    if (code == kOk || !repair || code == kNotSupport) return code;
    scan();
    return members_.empty() ? code : kOk;
}

ReturnCode OldArchive::readDirectory() {
    const zip::DirectoryResult found = zip::findDirectory(*file_);
    if (found.code != kOk) return found.code;
    const zip::DirectoryPlace& place = found.place;
    if (place.limit - place.start > kLargestDirectory) return kEnoughMemory;
    std::string directory(static_cast<std::size_t>(place.limit - place.start), '\0');
    if (!file_->readAll(place.start, directory)) return kCannotRead;
    comment_.resize(place.commentSize);
    comment_.resize(file_->readAt(place.commentOffset, comment_).value_or(0));

    std::string_view rest = directory;
    while (rest.size() >= zip::kCentralSize && load32(rest.data()) == zip::kCentralSignature) {
        const std::size_t size =
            zip::kCentralSize + load16(rest.data() + 28) + load16(rest.data() + 30) + load16(rest.data() + 32);
        if (size > rest.size()) return kHeaderBroken;
        zip::MemberData data;
        OldMember member = memberOf(rest.substr(0, size), data);
        member.start = data.localOffset + place.shift;
        if (!fits(member, place.start)) return kHeaderBroken;
        members_.push_back(std::move(member));
        rest.remove_prefix(size);
    }
    const auto walked = static_cast<std::uint64_t>(directory.size() - rest.size()) + place.start;
    if (walked < place.claimedEnd) return kHeaderBroken;
    return findEnds(place.start);
}

/// Finds the end of a member that starts at `start`. @return false when it does not lie before the limit
bool OldArchive::fits(OldMember& member, std::uint64_t limit) const {
    const zip::CentralHeader fields = parsed(member.header);
    zip::MemberData data;
    Member told;
    zip::fillMember(fields, told, data);
    std::array<char, zip::kLocalSize> fixed{};
    if (member.start >= limit || limit - member.start < fixed.size() || !file_->readAll(member.start, fixed)) {
        return false;
    }
    const std::optional<std::size_t> header = zip::localHeaderSize(fixed);
    if (!header || limit - member.start < *header || limit - member.start - *header < data.packedSize) return false;
    member.end = member.start + *header + data.packedSize;
    const std::uint16_t flags = data.flags | load16(fixed.data() + 6);
    if ((flags & zip::flag::kSizesFollow) != 0) member.end += descriptorSize(*file_, member.end, limit, data);
    return true;
}

/// Members must not share bytes: copied one by one, they would grow beyond all measure.
ReturnCode OldArchive::findEnds(std::uint64_t directory) {
    std::vector<std::pair<std::uint64_t, std::uint64_t>> places;
    places.reserve(members_.size());
    for (const OldMember& each : members_) places.emplace_back(each.start, each.end);
    std::ranges::sort(places);
    for (std::size_t at = 1; at < places.size(); ++at) {
        if (places[at].first < places[at - 1].second) return kHeaderBroken;
    }
    prefix_ = places.empty() ? directory : places.front().first;
    return kOk;
}

void OldArchive::scan() {
    members_.clear();
    comment_.clear();
    const std::uint64_t size = file_->size();
    constexpr std::size_t kWindow = std::size_t{1} << 18;
    std::string window;
    std::uint64_t offset = 0;
    bool first = true;
    while (offset + zip::kLocalSize <= size) {
        window.resize(kWindow);
        window.resize(file_->readAt(offset, window).value_or(0));
        if (window.size() < zip::kLocalSize) return;
        const std::size_t at = window.find(std::string_view("PK\x03\x04", 4));
        if (at == window.npos) {
            offset += window.size() - 3;
            continue;
        }
        offset += at;
        std::array<char, zip::kLocalSize> fixed{};
        if (!file_->readAll(offset, fixed)) return;
        std::string header(*zip::localHeaderSize(fixed), '\0');
        if (!file_->readAll(offset, header)) return;
        const zip::LocalHeader local = zip::parseLocalHeader(header);
        // The directory's header in the form of the local one: what it tells besides is lost.
        std::string central(zip::kCentralSize, '\0');
        little_endian::store32(central.data(), zip::kCentralSignature);
        little_endian::store16(central.data() + 4, 63);
        std::copy_n(header.data() + 4, 26, central.data() + 6);
        central.append(local.name).append(local.extra);
        zip::MemberData data;
        OldMember member = memberOf(central, data);
        member.start = offset;
        // Sizes that follow the data are told by nothing in front of it; such a member is left out.
        const bool told = (local.flags & zip::flag::kSizesFollow) == 0 || data.packedSize != 0;
        if (!told || local.name.empty() || !fits(member, size)) {
            offset += 4;
            continue;
        }
        if (member.folder) little_endian::store32(member.header.data() + 38, attribute::kFolder);
        if (first) prefix_ = offset;
        first = false;
        offset = member.end;
        members_.push_back(std::move(member));
    }
}

}  // namespace archiver::infozip
