#include "archivers/formats/rar/old_name.h"

#include <algorithm>
#include <cstdint>

#include "archivers/formats/utf8.h"

namespace archiver::rar {
namespace {

/// Unpacks the differences to UTF-16.
class NameUnpacker {
public:
    NameUnpacker(std::string_view bytes, std::string_view packed) : bytes_(bytes), packed_(packed) {}

    std::u16string unpack() {
        if (has(1)) high_ = static_cast<std::uint16_t>(take() << 8);
        std::uint8_t kinds = 0;
        for (int bits = 0; has(1); bits -= 2, kinds = static_cast<std::uint8_t>(kinds << 2)) {
            if (bits == 0) {
                kinds = take();
                bits = 8;
            }
            if (!unpackOne(kinds >> 6)) break;
        }
        return name_;
    }

private:
    [[nodiscard]] bool has(std::size_t count) const noexcept { return packed_.size() >= count; }
    std::uint8_t take() noexcept {
        const auto byte = static_cast<std::uint8_t>(packed_.front());
        packed_.remove_prefix(1);
        return byte;
    }

    bool unpackOne(int kind) {
        if (!has(kind == 2 ? 2 : 1)) return false;
        const std::uint8_t first = take();
        switch (kind) {
            case 0:
                name_ += static_cast<char16_t>(first);
                return true;
            case 1:
                name_ += static_cast<char16_t>(high_ | first);
                return true;
            case 2:
                name_ += static_cast<char16_t>(first | take() << 8);
                return true;
            default:
                return copyRun(first);
        }
    }

    bool copyRun(std::uint8_t first) {
        constexpr std::uint8_t kCorrected = 0x80;
        const bool corrected = (first & kCorrected) != 0;
        if (corrected && !has(1)) return false;
        const std::uint8_t correction = corrected ? take() : std::uint8_t{0};
        const char16_t high = corrected ? high_ : u'\0';
        for (int left = (first & 0x7F) + 2; left > 0; --left) {
            if (name_.size() >= bytes_.size()) return false;
            const auto low = static_cast<std::uint8_t>(bytes_[name_.size()] + correction);
            name_ += static_cast<char16_t>(high | low);
        }
        return true;
    }

    std::string_view bytes_, packed_;
    std::uint16_t high_ = 0;
    std::u16string name_;
};

}  // namespace

std::string decodeOldName(std::string_view bytes, std::string_view packed) {
    std::u16string name = NameUnpacker(bytes, packed).unpack();
    name.resize(std::min(name.size(), name.find(u'\0')));
    std::string utf8;
    for (std::size_t index = 0; index < name.size(); ++index) {
        char32_t character = name[index];
        const bool leads = character >= 0xD800 && character < 0xDC00;
        if (leads && index + 1 < name.size() && name[index + 1] >= 0xDC00 && name[index + 1] < 0xE000) {
            character = 0x10000 + ((character - 0xD800) << 10) + (name[++index] - 0xDC00U);
        }
        appendUtf8(character, utf8);
    }
    return utf8;
}

}  // namespace archiver::rar
