#include "archivers/formats/lzh/header_search.h"

#include <string>
#include <string_view>

#include "archivers/formats/lzh/header.h"

namespace archiver::lzh {
namespace {

constexpr std::size_t kLargestProgram = 512 * 1024;
/// Texts that look like a header at first; no program has as many, and each may take a megabyte to be read.
constexpr int kMostFalseHeaders = 200;
/// The self-extracting program of the Amiga says this and holds a small archive of its own before the real one.
constexpr std::string_view kProgramWithArchive = "LhASFX V1.2,";

}  // namespace

ReturnCode findFirstHeader(const InputFile& file, std::uint64_t& start) {
    std::string bytes(kLargestProgram + kLeastHeader, '\0');
    const auto got = file.readAt(0, std::span<char>(bytes.data(), bytes.size()));
    if (!got) return kCannotRead;
    bytes.resize(*got);

    Header header;
    if (looksLikeHeader(bytes)) {
        start = 0;
        return readHeader(file, 0, header);
    }
    const std::size_t program = bytes.find(kProgramWithArchive);
    int falseHeaders = 0;
    bool skip = program != std::string::npos;
    for (std::size_t at = bytes.find('-', 2); at != std::string::npos; at = bytes.find('-', at + 1)) {
        const std::size_t begin = at - 2;
        if (bytes.size() - begin < kLeastHeader) break;
        if (!looksLikeHeader(std::string_view(bytes).substr(begin))) continue;
        const ReturnCode code = readHeader(file, begin, header);
        if (code == kCannotRead) return code;
        if (code != kOk) {
            if (++falseHeaders == kMostFalseHeaders) break;
            continue;
        }
        if (skip && begin > program) {
            skip = false;
            continue;
        }
        start = begin;
        return kOk;
    }
    return kFileStyle;
}

}  // namespace archiver::lzh
