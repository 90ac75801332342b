#include "shell/posix/posix_text.h"

#include "shell/text_codec.h"

namespace tovar {
namespace {

// How many bytes at the front form one character; 0 when none do.
std::size_t characterLength(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length > bytes.size()) return 0;
    const std::wstring wide = Utf8Codec().decode(bytes.substr(0, length));
    return Utf8Codec().encode(wide) == std::string(bytes.substr(0, length)) ? length : 0;
}

bool isEscapedByte(wchar_t each) noexcept { return each >= 0xDC80 && each <= 0xDCFF; }

}  // namespace

std::wstring fromPosixName(std::string_view bytes) {
    std::wstring text;
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0) {
            text += static_cast<wchar_t>(0xDC00 + static_cast<unsigned char>(bytes.front()));
        } else {
            Utf8Codec().decodeTo(bytes.substr(0, length), text);
        }
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
    return text;
}

std::string toPosixName(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t each : text) {
        if (isEscapedByte(each)) {
            bytes += static_cast<char>(each - 0xDC00);
        } else {
            bytes += Utf8Codec().encode({&each, 1}).value_or("\xEF\xBF\xBD");  // U+FFFD: no file has such a name
        }
    }
    return bytes;
}

}  // namespace tovar
