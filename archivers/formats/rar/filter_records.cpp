#include "archivers/formats/rar/filter_records.h"

#include <zlib.h>

#include "archivers/formats/rar/window.h"

namespace archiver::rar {
namespace {

constexpr std::size_t kMostPrograms = 1024;

/// The bits of a record, the highest of each byte first. Once some are missing, all further ones are 0.
class RecordBits {
public:
    explicit RecordBits(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint32_t take(int count) noexcept {
        for (; available_ < count; available_ += 8) {
            if (bytes_.empty()) {
                good_ = false;
                return 0;
            }
            bits_ = bits_ << 8 | bytes_.front();
            bytes_ = bytes_.subspan(1);
        }
        available_ -= count;
        return static_cast<std::uint32_t>(bits_ >> available_ & ((std::uint64_t{1} << count) - 1));
    }
    /// A number of 4 to 32 bits, behind two that tell how many.
    std::uint32_t number() noexcept {
        switch (take(2)) {
            case 0:
                return take(4);
            case 1: {
                const std::uint32_t high = take(8);
                return high >= 16 ? high : 0xFFFFFF00 | high << 4 | take(4);
            }
            case 2:
                return take(16);
            default:
                return take(32);
        }
    }
    [[nodiscard]] bool good() const noexcept { return good_; }

private:
    std::span<const std::uint8_t> bytes_;
    std::uint64_t bits_ = 0;
    int available_ = 0;
    bool good_ = true;
};

FilterKind kindOf(std::span<const std::uint8_t> program) noexcept {
    struct Known {
        std::uint32_t size, checksum;
        FilterKind kind;
    };
    static constexpr Known kPrograms[] = {
        {0x1D, 0x0E06077D, FilterKind::kDelta},         {0x35, 0xAD576887, FilterKind::kCalls},
        {0x39, 0x3CD7E57E, FilterKind::kCallsAndJumps}, {0x95, 0x1C2C5DC8, FilterKind::kPicture},
        {0xD8, 0xBC85E701, FilterKind::kSound},
    };
    const auto sum = ::crc32(0, program.data(), static_cast<uInt>(program.size()));
    for (const Known& known : kPrograms) {
        if (known.size == program.size() && known.checksum == sum) return known.kind;
    }
    return FilterKind::kUnknown;
}

/// Reads a program; its first byte is the sum of the others, without carries.
bool readProgram(RecordBits& bits, FilterKind& kind) {
    constexpr std::uint32_t kMostBytes = 0x10000;
    const std::uint32_t size = bits.number();
    if (size == 0 || size > kMostBytes) return false;
    std::vector<std::uint8_t> program;
    std::uint8_t sum = 0;
    for (std::uint32_t at = 0; at < size && bits.good(); ++at) {
        program.push_back(static_cast<std::uint8_t>(bits.take(8)));
        sum ^= program.back();
    }
    if (!bits.good() || sum != 0) return false;
    kind = kindOf(program);
    return true;
}

}  // namespace

void FilterRecords::clear() noexcept {
    programs_.clear();
    last_ = 0;
}

ReturnCode FilterRecords::read(std::uint8_t flags, std::span<const std::uint8_t> record, std::uint64_t position,
                               Filter& filter, bool& anew) {
    RecordBits bits(record);
    anew = false;
    std::size_t index = last_;
    if ((flags & 0x80) != 0) {
        index = bits.number();
        anew = index == 0;
        if (anew)
            clear();
        else
            --index;
    }
    if (index > programs_.size() || index >= kMostPrograms) return kHuffmanCode;
    const bool isNew = index == programs_.size();
    Program program = isNew ? Program{} : programs_[index];

    const std::uint32_t ahead = bits.number();
    if (ahead > Window::kMost) return kHuffmanCode;
    filter.begin = position + ahead + ((flags & 0x40) != 0 ? 258 : 0);
    if ((flags & 0x20) != 0) program.length = bits.number();
    filter.length = program.length;

    // The machine's registers when the program begins: 0 and 1 are what a known program needs to be told.
    std::uint32_t registers[7] = {0, 0, 0, 0, program.length, 0, 0};
    if ((flags & 0x10) != 0) {
        const std::uint32_t given = bits.take(7);
        for (std::size_t number = 0; number < 7; ++number) {
            if ((given >> number & 1) != 0) registers[number] = bits.number();
        }
    }
    filter.first = registers[0];
    filter.second = registers[1];

    if (isNew && !readProgram(bits, program.kind)) return kHuffmanCode;
    // Data of the program's own may follow, which known programs have no use for.
    if (!bits.good()) return kHuffmanCode;
    if (isNew)
        programs_.push_back(program);
    else
        programs_[index] = program;
    last_ = index;
    filter.kind = program.kind;
    if (filter.kind == FilterKind::kUnknown || registers[4] != program.length) return kMethod;
    return filter.length <= Filter::kMostBytes ? kOk : kHuffmanCode;
}

}  // namespace archiver::rar
