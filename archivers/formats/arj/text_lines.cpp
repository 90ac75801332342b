#include "archivers/formats/arj/text_lines.h"

#include <array>

namespace archiver::arj {

bool TextLines::operator()(const char* bytes, std::size_t size) {
    std::array<char, 8192> text{};
    std::size_t filled = 0;
    for (std::size_t index = 0; index < size; ++index) {
        if (filled + 2 > text.size()) {
            if (!sink_(text.data(), filled)) return false;
            filled = 0;
        }
        if (bytes[index] == '\n' && !afterReturn_) text[filled++] = '\r';
        text[filled++] = bytes[index];
        afterReturn_ = bytes[index] == '\r';
    }
    return filled == 0 || sink_(text.data(), filled);
}

}  // namespace archiver::arj
