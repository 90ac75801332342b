#include <algorithm>
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

const TextCodec& utf8Codec() noexcept {
    static const Utf8Codec codec;
    return codec;
}

}  // namespace archiver
