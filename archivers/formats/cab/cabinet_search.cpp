#include "archivers/formats/cab/cabinet_search.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "archivers/formats/little_endian.h"

namespace archiver::cab {
namespace {

using little_endian::load16;
using little_endian::load32;

constexpr std::string_view kSignature = "MSCF";
constexpr std::size_t kHeader = 36;
constexpr std::uint64_t kFarthest = std::uint64_t{64} << 20;
constexpr std::size_t kPiece = 64 * 1024;

/// Whether the header makes sense, so that a text in a program is not taken for one.
bool isPlausible(const char* header, std::uint64_t rest) noexcept {
    const std::uint32_t firstFile = load32(header + 16);
    const bool hasMembers = load16(header + 26) > 0 && load16(header + 28) > 0;
    return header[25] == 1 && hasMembers && firstFile >= kHeader && firstFile < rest;
}

}  // namespace

std::optional<std::uint64_t> findCabinet(const InputFile& file, std::uint64_t from) {
    std::string bytes;
    // Pieces overlap, so that a header is whole in one of them.
    for (std::uint64_t start = from; start < kFarthest; start += kPiece) {
        bytes.resize(kPiece + kHeader - 1);
        bytes.resize(file.readAt(start, bytes).value_or(0));
        for (std::size_t at = bytes.find(kSignature); at < kPiece; at = bytes.find(kSignature, at + 1)) {
            if (bytes.size() - at < kHeader) break;
            if (isPlausible(bytes.data() + at, file.size() - start - at)) return start + at;
        }
        if (bytes.size() < kPiece) break;
    }
    return std::nullopt;
}

}  // namespace archiver::cab
