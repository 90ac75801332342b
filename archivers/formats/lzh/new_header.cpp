#include "archivers/formats/lzh/new_header.h"

#include <algorithm>
#include <limits>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/lzh/crc16.h"
#include "archivers/formats/lzh/stored_name.h"
#include "archivers/formats/moments.h"

namespace archiver::lzh {
namespace {

/// Bytes of numbers, lowest first.
class Bytes {
public:
    Bytes& put8(unsigned value) { return put(value, 1); }
    Bytes& put16(unsigned value) { return put(value, 2); }
    Bytes& put32(std::uint32_t value) { return put(value, 4); }
    Bytes& put64(std::uint64_t value) { return put(value, 8); }
    Bytes& text(std::string_view text) {
        bytes += text;
        return *this;
    }
    Bytes& wide(std::u16string_view text) {
        for (const char16_t unit : text) put16(unit);
        return *this;
    }
    std::string bytes;

private:
    Bytes& put(std::uint64_t value, int count) {
        for (; count > 0; --count, value >>= 8) bytes += static_cast<char>(value & 0xFF);
        return *this;
    }
};

constexpr std::size_t kLargestHeader = 0xFFFF;
constexpr std::size_t kLongestBasicName = 230;
constexpr std::uint8_t kPlainAttributes = attribute::kArchive;

std::uint32_t dosWordsOf(const NewMember& member) noexcept {
    const DosStamp stamp = dosStampOf(member.written.value_or(Moment{}));
    return std::uint32_t{stamp.date} << 16 | stamp.time;
}

std::uint32_t secondsOf(const NewMember& member) noexcept {
    constexpr std::int64_t kMost = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(member.written.value_or(Moment{}).seconds, 0, kMost));
}

std::uint64_t fileTimeOf(const std::optional<Moment>& moment) noexcept {
    constexpr std::int64_t kUnixEpoch = 11644473600;  // seconds since 1601
    constexpr std::int64_t kSteps = 10'000'000;
    constexpr std::int64_t kLatest = std::numeric_limits<std::int64_t>::max() / kSteps - kUnixEpoch - 1;
    if (!moment || moment->seconds < -kUnixEpoch || moment->seconds > kLatest) return 0;
    return static_cast<std::uint64_t>((moment->seconds + kUnixEpoch) * kSteps + moment->nanoseconds / 100);
}

std::uint32_t low32(std::uint64_t size, bool large) noexcept {
    return large ? 0xFFFFFFFF : static_cast<std::uint32_t>(size);
}

class HeaderWriter {
public:
    HeaderWriter(const NewMember& member, const HeaderStyle& style)
        : member_(member), style_(style), name_(storedNameOf(member.name, style.windows)) {}

    std::string write() {
        if (style_.level == 0) {
            std::string header = level0();
            if (!header.empty()) return header;
        }
        if (style_.level == 1 && !member_.large) return level1();
        return level2();
    }

private:
    void common(Bytes& header, std::uint64_t packed, std::uint32_t time, unsigned attributes, unsigned level) const {
        header.text(member_.method).put32(low32(packed, member_.large));
        header.put32(low32(member_.originalSize, member_.large)).put32(time).put8(attributes).put8(level);
    }

    [[nodiscard]] char system() const noexcept { return style_.windows ? 'W' : 'U'; }

    /// @param nameInside  the base name stands in the basic header
    void extended(Bytes& into, bool nameInside) const {
        const auto put = [&into](unsigned kind, const Bytes& data) {
            into.put16(static_cast<unsigned>(data.bytes.size() + 3)).put8(kind).text(data.bytes);
        };
        if (!nameInside && !name_.name.empty()) put(0x01, Bytes().text(name_.name));
        if (!name_.folder.empty()) put(0x02, Bytes().text(name_.folder));
        if (member_.attributes != kPlainAttributes) put(0x40, Bytes().put16(member_.attributes));
        // Elsewhere the time of the last access is that of the packing.
        if (member_.created) {
            Bytes times;
            times.put64(fileTimeOf(member_.created)).put64(fileTimeOf(member_.written));
            put(0x41, times.put64(fileTimeOf(member_.accessed)));
        }
        if (member_.large) put(0x42, Bytes().put64(member_.packedSize).put64(member_.originalSize));
        if (!name_.wideName.empty()) put(0x44, Bytes().wide(name_.wideName));
        if (!name_.wideFolder.empty()) put(0x45, Bytes().wide(name_.wideFolder));
        if (name_.codePage != 0) put(0x46, Bytes().put32(name_.codePage));
    }

    /// @return empty when it has no room for what is to be told
    [[nodiscard]] std::string level0() const {
        // The folder's own separator could be part of a name in UTF-8, and "\" part of a character in Shift-JIS.
        std::string path = name_.folder;
        std::replace(path.begin(), path.end(), '\xFF', '/');
        path += name_.name;
        if (member_.large || path.size() > kLongestBasicName || (name_.codePage != 0 && style_.windows)) return {};
        Bytes header;
        header.put8(static_cast<unsigned>(22 + path.size())).put8(0);
        common(header, member_.packedSize, dosWordsOf(member_), member_.attributes, 0);
        header.put8(static_cast<unsigned>(path.size())).text(path).put16(member_.crc);
        setSum(header.bytes, header.bytes.size());
        return header.bytes;
    }

    [[nodiscard]] std::string level1() const {
        const bool nameInside = name_.name.size() <= kLongestBasicName;
        const std::string_view inside = nameInside ? std::string_view(name_.name) : std::string_view();
        Bytes further;
        extended(further, nameInside);
        further.put16(0);
        if (further.bytes.size() > kLargestHeader) return {};
        Bytes header;
        header.put8(static_cast<unsigned>(25 + inside.size())).put8(0);
        common(header, member_.packedSize + further.bytes.size() - 2, dosWordsOf(member_), kPlainAttributes, 1);
        header.put8(static_cast<unsigned>(inside.size())).text(inside).put16(member_.crc);
        header.put8(static_cast<unsigned char>(system()));
        // The sum is also over the size of the first further header.
        const std::size_t basic = header.bytes.size() + 2;
        header.text(further.bytes);
        setSum(header.bytes, basic);
        return header.bytes;
    }

    [[nodiscard]] std::string level2() const {
        Bytes header;
        header.put16(0);
        common(header, member_.packedSize, secondsOf(member_), kPlainAttributes, 2);
        header.put16(member_.crc).put8(static_cast<unsigned char>(system()));
        // The check value of the header, 0 while it is computed.
        const std::size_t crcAt = header.bytes.size() + 3;
        header.put16(5).put8(0x00).put16(0);
        extended(header, false);
        header.put16(0);
        // A size whose low byte is 0 would be the archive's end.
        if ((header.bytes.size() & 0xFF) == 0) header.put8(0);
        if (header.bytes.size() > kLargestHeader) return {};
        little_endian::store16(header.bytes.data(), static_cast<std::uint16_t>(header.bytes.size()));
        little_endian::store16(header.bytes.data() + crcAt, crc16Of(header.bytes));
        return header.bytes;
    }

    static void setSum(std::string& header, std::size_t end) {
        unsigned sum = 0;
        for (std::size_t at = 2; at < end; ++at) sum += static_cast<unsigned char>(header[at]);
        header[1] = static_cast<char>(sum & 0xFF);
    }

    const NewMember& member_;
    const HeaderStyle& style_;
    StoredName name_;
};

}  // namespace

std::string headerOf(const NewMember& member, const HeaderStyle& style) { return HeaderWriter(member, style).write(); }

}  // namespace archiver::lzh
