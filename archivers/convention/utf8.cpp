#include "archivers/convention/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "archivers/convention/text_codec.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

class Utf8Codec final : public TextCodec {
public:
    Written encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept override;

    [[nodiscard]] std::string decode(std::string_view text) const override {
        std::string result;
        result.reserve(text.size());
        while (!text.empty()) {
            const DecodedCharacter next = decodeCharacter(text);
            appendUtf8(next.value, result);
            text.remove_prefix(next.length);
        }
        return result;
    }

    [[nodiscard]] std::filesystem::path decodePath(std::string_view text) const override {
        return std::u8string(text.begin(), text.end());
    }
};

TextCodec::Written Utf8Codec::encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept {
    const std::size_t room = size - 1;
    if (isPlainAscii(utf8)) {
        const std::size_t length = std::min(utf8.size(), room);
        utf8.copy(buffer, length);
        buffer[length] = '\0';
        return {length, length == utf8.size()};
    }
    std::size_t length = 0;
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        const bool kept = next.valid && next.value != 0;
        const std::size_t bytes = kept ? next.length : 1;
        if (bytes > room - length) {
            break;
        }
        std::memcpy(buffer + length, kept ? utf8.data() : "_", bytes);
        length += bytes;
        utf8.remove_prefix(next.length);
    }
    buffer[length] = '\0';
    return {length, utf8.empty()};
}

}  // namespace

DecodedCharacter decodeCharacter(std::string_view utf8) noexcept {
    const auto byteAt = [utf8](std::size_t index) { return static_cast<unsigned char>(utf8[index]); };
    const unsigned char lead = byteAt(0);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    // The lowest value of each length: what is below has a shorter form.
    std::size_t length = 0;
    char32_t value = 0;
    char32_t lowest = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, value = lead & 0x1F, lowest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, value = lead & 0x0F, lowest = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, value = lead & 0x07, lowest = 0x10000;
    } else {
        return {};
    }
    for (std::size_t index = 1; index < length; ++index) {
        if (index == utf8.size() || (byteAt(index) & 0xC0) != 0x80) {
            return {kNoCharacter, index, false};
        }
        value = (value << 6) | (byteAt(index) & 0x3F);
    }
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < lowest || surrogate || value > 0x10FFFF) {
        return {};
    }
    return {value, length, true};
}

bool isPlainAscii(std::string_view text) noexcept {
    // A word at a time: a byte of 0 borrows into its top bit, a byte above 0x7F has it set.
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t tops = 0x8080808080808080;
    const char* position = text.data();
    std::size_t left = text.size();
    for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t), position += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, position, sizeof(word));
        if (((word | (word - ones)) & tops) != 0) {
            return false;
        }
    }
    return std::all_of(position, position + left, [](signed char byte) { return byte > 0; });
}

const TextCodec& utf8Codec() noexcept {
    static const Utf8Codec codec;
    return codec;
}

}  // namespace archiver
