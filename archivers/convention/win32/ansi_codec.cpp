#include <windows.h>

#include <algorithm>
#include <cstring>

#include "archivers/convention/text_codec.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

constexpr std::size_t kMaxCharacterBytes = 8;

/// @return units written, 1 or 2
int toUnits(char32_t character, wchar_t* units) noexcept {
    if (character < 0x10000) {
        units[0] = static_cast<wchar_t>(character);
        return 1;
    }
    units[0] = static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
    units[1] = static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    return 2;
}

/// @return bytes written; 0 when the code page lacks an exact form of a character, or the room is too small
std::size_t encodeUnits(const wchar_t* units, int count, char* bytes, std::size_t room) noexcept {
    BOOL replaced = FALSE;
    const int length = ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, units, count, bytes,
                                             static_cast<int>(std::min<std::size_t>(room, MAXINT)), "_", &replaced);
    return length <= 0 || replaced ? 0 : static_cast<std::size_t>(length);
}

/// Converts a text of usual length in one step, when every character has an exact form and the room is enough.
/// @return bytes written, else 0
std::size_t encodeAtOnce(std::string_view utf8, char* bytes, std::size_t room) noexcept {
    constexpr std::size_t most = 512;
    if (utf8.size() > most || room == 0) {
        return 0;
    }
    wchar_t units[most];  // UTF-8 has at least one byte for each
    int count = 0;
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        if (!next.valid || next.value == 0) {
            return 0;
        }
        count += toUnits(next.value, units + count);
        utf8.remove_prefix(next.length);
    }
    return encodeUnits(units, count, bytes, room);
}

std::size_t encodeCharacter(char32_t character, char (&bytes)[kMaxCharacterBytes]) noexcept {
    wchar_t units[2];
    return encodeUnits(units, toUnits(character, units), bytes, sizeof bytes);
}

class AnsiCodec final : public TextCodec {
public:
    Written encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept override;

    [[nodiscard]] std::string decode(std::string_view text) const override {
        std::string utf8;
        appendUtf8(decodeWide(text), utf8);
        return utf8;
    }

    [[nodiscard]] std::filesystem::path decodePath(std::string_view text) const override { return decodeWide(text); }

private:
    static std::wstring decodeWide(std::string_view text);
};

TextCodec::Written AnsiCodec::encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept {
    // UTF-8 as the code page needs no table; and the flags below are not allowed for it.
    if (isPlainAscii(utf8) || ::GetACP() == CP_UTF8) {
        return utf8Codec().encode(utf8, buffer, size);
    }
    const std::size_t room = size - 1;
    std::size_t length = encodeAtOnce(utf8, buffer, room);
    if (length != 0) {
        buffer[length] = '\0';
        return {length, true};
    }
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        char bytes[kMaxCharacterBytes] = {static_cast<char>(next.value)};
        std::size_t count = 1;
        if (!next.valid || next.value == 0) {
            count = 0;
        } else if (next.value >= 0x80) {
            count = encodeCharacter(next.value, bytes);
        }
        if (count == 0) {
            bytes[0] = '_';
            count = 1;
        }
        if (count > room - length) {
            break;
        }
        std::memcpy(buffer + length, bytes, count);
        length += count;
        utf8.remove_prefix(next.length);
    }
    buffer[length] = '\0';
    return {length, utf8.empty()};
}

std::wstring AnsiCodec::decodeWide(std::string_view text) {
    // No code page makes more units than it has bytes.
    std::wstring wide(std::min<std::size_t>(text.size(), MAXINT), L'\0');
    if (!wide.empty()) {
        const int bytes = static_cast<int>(wide.size());
        const int units = ::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes);
        wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    }
    return wide;
}

}  // namespace

const TextCodec& ansiCodec() noexcept {
    static const AnsiCodec codec;
    return codec;
}

}  // namespace archiver
