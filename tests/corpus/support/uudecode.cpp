#include "corpus/support/uudecode.h"

namespace archiver::test {
namespace {

unsigned sixBits(std::string_view line, std::size_t at) {
    return at < line.size() ? (static_cast<unsigned char>(line[at]) - 32U) & 63U : 0;
}

void appendLine(std::string_view line, std::string& bytes) {
    const std::size_t count = sixBits(line, 0);
    const std::size_t wanted = bytes.size() + count;
    for (std::size_t at = 1; bytes.size() < wanted; at += 4) {
        const unsigned group =
            sixBits(line, at) << 18 | sixBits(line, at + 1) << 12 | sixBits(line, at + 2) << 6 | sixBits(line, at + 3);
        for (int shift = 16; shift >= 0 && bytes.size() < wanted; shift -= 8) {
            bytes += static_cast<char>(group >> shift & 0xFF);
        }
    }
}

}  // namespace

std::string uudecode(std::string_view text) {
    std::string bytes;
    bool inside = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!inside) {
            inside = line.starts_with("begin ");
        } else if (line == "end") {
            break;
        } else if (!line.empty()) {
            appendLine(line, bytes);
        }
    }
    return bytes;
}

}  // namespace archiver::test
