#include "archivers/formats/rar/signature.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "archivers/formats/rar/new_headers.h"
#include "archivers/formats/rar/old_headers.h"

namespace archiver::rar {
namespace {

constexpr std::string_view kOldSignature{"Rar!\x1A\x07\0", 7};
constexpr std::string_view kNewSignature{"Rar!\x1A\x07\x01\0", 8};
constexpr std::string_view kCommonPart = kOldSignature.substr(0, 6);
constexpr std::uint64_t kMostProgramBytes = std::uint64_t{2} << 20;

bool isProgram(std::string_view bytes) noexcept { return bytes.starts_with("MZ") || bytes.starts_with("\x7F\x45LF"); }

/// Whether an archive begins there; a program also holds the signature among its own data.
bool isStart(const InputFile& file, std::string_view rest, std::uint64_t offset, Start& start) {
    if (rest.starts_with(kOldSignature))
        start.generation = Generation::kOld;
    else if (rest.starts_with(kNewSignature))
        start.generation = Generation::kNew;
    else
        return false;
    start.offset = offset;
    start.blocks = offset + (start.generation == Generation::kOld ? kOldSignature.size() : kNewSignature.size());
    if (offset == 0) return true;
    Block block;
    return readBlock(start.generation, file, start.blocks, block) == kOk &&
           (block.kind == Block::Kind::kMain || block.kind == Block::Kind::kEncryption);
}

}  // namespace

ReturnCode readBlock(Generation generation, const InputFile& file, std::uint64_t offset, Block& block) {
    return generation == Generation::kOld ? readOldBlock(file, offset, block) : readNewBlock(file, offset, block);
}

Start findStart(const InputFile& file) {
    Start start;
    std::string bytes(kNewSignature.size(), '\0');
    const auto got = file.readAt(0, bytes);
    if (!got) return {.code = kCannotRead};
    bytes.resize(*got);
    if (isStart(file, bytes, 0, start)) return start;
    if (!isProgram(bytes)) return {.code = kFileStyle};

    bytes.resize(static_cast<std::size_t>(std::min(file.size(), kMostProgramBytes)));
    if (!file.readAll(0, bytes)) return {.code = kCannotRead};
    const std::string_view whole = bytes;
    for (std::size_t at = whole.find(kCommonPart); at != std::string_view::npos; at = whole.find(kCommonPart, at + 1)) {
        if (isStart(file, whole.substr(at), at, start)) return start;
    }
    return {.code = kFileStyle};
}

}  // namespace archiver::rar
