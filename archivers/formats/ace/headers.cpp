#include "archivers/formats/ace/headers.h"

#include <cstring>
#include <string_view>

#include "archivers/formats/ace/checksum.h"
#include "archivers/formats/little_endian.h"

namespace archiver::ace {
namespace {

/// Takes fields off the front of a header. Once a field does not fit, everything that follows is empty.
class Fields {
public:
    explicit Fields(std::span<const char> bytes) noexcept : rest_(bytes.data(), bytes.size()) {}

    std::string_view bytes(std::size_t count) noexcept {
        if (count > rest_.size()) {
            good_ = false;
            rest_ = {};
            return {};
        }
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }
    std::uint8_t byte() noexcept {
        const std::string_view taken = bytes(1);
        return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken[0]);
    }
    std::uint16_t word() noexcept {
        const std::string_view taken = bytes(2);
        return taken.empty() ? std::uint16_t{0} : little_endian::load16(taken.data());
    }
    std::uint32_t number() noexcept {
        const std::string_view taken = bytes(4);
        return taken.empty() ? 0 : little_endian::load32(taken.data());
    }
    std::uint64_t size(bool large) noexcept {
        if (!large) return number();
        const std::string_view taken = bytes(8);
        return taken.empty() ? 0 : little_endian::load64(taken.data());
    }
    [[nodiscard]] bool good() const noexcept { return good_; }

private:
    std::string_view rest_;
    bool good_ = true;
};

constexpr std::size_t kUncheckedSize = 4;  // the checksum and the size itself

}  // namespace

std::size_t headerSize(const char* start) noexcept { return kUncheckedSize + little_endian::load16(start + 2); }

ReturnCode checkHeader(std::span<const char> bytes, RawHeader& header) noexcept {
    if (bytes.size() < kSmallestHeader) return kHeaderBroken;
    const std::uint32_t found = checksum(bytes.subspan(kUncheckedSize));
    if ((found & 0xFFFF) != little_endian::load16(bytes.data())) return kHeaderCrc;
    header.type = static_cast<HeaderType>(bytes[4]);
    header.flags = little_endian::load16(bytes.data() + 5);
    header.bytes = bytes;
    return kOk;
}

ReturnCode parseMainHeader(const RawHeader& raw, MainHeader& header) {
    constexpr std::size_t kReserved = 8;
    if (raw.type != HeaderType::kMain) return kHeaderBroken;
    Fields fields(raw.bytes.subspan(kSmallestHeader));
    if (fields.bytes(kMagicSize) != std::string_view(kMagic, kMagicSize)) return kHeaderBroken;
    header.flags = raw.flags;
    header.versionNeeded = fields.byte();
    header.versionMadeBy = fields.byte();
    header.host = fields.byte();
    header.volume = fields.byte();
    header.stamp = fields.number();
    fields.bytes(kReserved);
    header.advert.clear();
    header.packedComment.clear();
    if ((raw.flags & main_flag::kAdvert) != 0) header.advert = fields.bytes(fields.byte());
    if ((raw.flags & main_flag::kComment) != 0) header.packedComment = fields.bytes(fields.word());
    return fields.good() ? kOk : kHeaderBroken;
}

ReturnCode parseFileHeader(const RawHeader& raw, FileHeader& header) {
    constexpr std::size_t kReserved = 2;
    const bool large = raw.type == HeaderType::kFile64 || (raw.flags & file_flag::kLarge) != 0;
    Fields fields(raw.bytes.subspan(kSmallestHeader));
    header.flags = raw.flags;
    header.packedSize = fields.size(large);
    header.originalSize = fields.size(large);
    header.stamp = fields.number();
    header.attributes = fields.number();
    header.checksum = fields.number();
    header.method = fields.byte();
    header.quality = fields.byte();
    header.parameters = fields.word();
    fields.bytes(kReserved);
    header.name = fields.bytes(fields.word());
    header.packedComment.clear();
    if ((raw.flags & file_flag::kComment) != 0) header.packedComment = fields.bytes(fields.word());
    return fields.good() ? kOk : kHeaderBroken;
}

ReturnCode skippedSize(const RawHeader& raw, std::uint64_t& size) noexcept {
    const bool recovery = raw.type == HeaderType::kRecovery;
    const bool largeRecovery = raw.type == HeaderType::kRecovery64 || raw.type == HeaderType::kRecovery64Sectors;
    size = 0;
    if (!recovery && !largeRecovery && (raw.flags & file_flag::kData) == 0) return kOk;
    // A main header says nothing of data: what follows an archive that was appended to another is its own headers.
    if (raw.type == HeaderType::kMain) return kOk;
    Fields fields(raw.bytes.subspan(kSmallestHeader));
    size = fields.size(largeRecovery || (!recovery && (raw.flags & file_flag::kLarge) != 0));
    return fields.good() ? kOk : kHeaderBroken;
}

}  // namespace archiver::ace
