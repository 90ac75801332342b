#pragma once
#include "archivers/convention/text_codec.h"
#include "archivers/formats/utf8.h"

namespace archiver::testing {

/// A code page of one byte a character: U+0000 to U+00FF as they are.
class Latin1Codec final : public TextCodec {
public:
    Written encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept override {
        std::size_t length = 0;
        for (; !utf8.empty() && length + 1 < size; ++length) {
            const DecodedCharacter next = decodeCharacter(utf8);
            buffer[length] = next.value > 0xFF ? '_' : static_cast<char>(next.value);
            utf8.remove_prefix(next.length);
        }
        buffer[length] = '\0';
        return {length, utf8.empty()};
    }
    [[nodiscard]] std::string decode(std::string_view text) const override {
        std::string utf8;
        for (const char byte : text) appendUtf8(static_cast<unsigned char>(byte), utf8);
        return utf8;
    }
    [[nodiscard]] std::filesystem::path decodePath(std::string_view text) const override {
        return utf8Codec().decodePath(decode(text));
    }
};

}  // namespace archiver::testing
