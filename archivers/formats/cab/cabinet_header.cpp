#include "archivers/formats/cab/cabinet_header.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>

#include "archivers/formats/little_endian.h"

namespace archiver::cab {
namespace {

using little_endian::load16;
using little_endian::load32;

constexpr std::size_t kFixed = 36;
constexpr std::size_t kFolder = 8;
constexpr std::size_t kBlockHeader = 8;
constexpr std::uint16_t kHasPrevious = 1;
constexpr std::uint16_t kHasNext = 2;
constexpr std::uint16_t kHasReserve = 4;
/// A member is looked up by counting its folder from the first, so their product is what counts.
constexpr std::uint64_t kMostSteps = std::uint64_t{1} << 28;

struct FolderData {
    std::uint64_t start;  ///< from the beginning of the cabinet
    std::uint64_t blocks;
};

class HeaderReader {
public:
    HeaderReader(const InputFile& file, std::uint64_t base) noexcept : file_(file), base_(base), at_(base) {}

    ReturnCode read(CabinetHeader& header);

private:
    ReturnCode readBytes(char* into, std::size_t size);
    ReturnCode readName(std::string& name);
    ReturnCode readFolders(std::size_t count, std::uint64_t cabinetSize, CabinetHeader& header);

    const InputFile& file_;
    std::uint64_t base_;
    std::uint64_t at_;
    std::uint8_t folderReserve_ = 0;
    std::uint8_t blockReserve_ = 0;
};

ReturnCode HeaderReader::readBytes(char* into, std::size_t size) {
    const auto got = file_.readAt(at_, std::span<char>(into, size));
    if (!got) return kCannotRead;
    at_ += *got;
    return *got == size ? kOk : kHeaderBroken;
}

ReturnCode HeaderReader::readName(std::string& name) {
    std::array<char, 256> bytes{};
    const auto got = file_.readAt(at_, bytes);
    if (!got) return kCannotRead;
    const auto end = std::find(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(*got), '\0');
    if (end == bytes.begin() + static_cast<std::ptrdiff_t>(*got)) return kHeaderBroken;
    name.assign(bytes.begin(), end);
    at_ += name.size() + 1;
    return kOk;
}

/// A folder's bytes reach to where the next one begins.
ReturnCode HeaderReader::readFolders(std::size_t count, std::uint64_t cabinetSize, CabinetHeader& header) {
    std::vector<FolderData> folders;
    for (std::size_t index = 0; index < count; ++index) {
        char bytes[kFolder];
        if (const ReturnCode code = readBytes(bytes, sizeof(bytes)); code != kOk) return code;
        folders.push_back({load32(bytes), load16(bytes + 4)});
        at_ += folderReserve_;
    }
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](auto a, auto b) { return folders[a].start < folders[b].start; });
    header.folderSizes.assign(count, 0);
    for (std::size_t place = 0; place < count; ++place) {
        const FolderData& folder = folders[order[place]];
        const std::uint64_t end = place + 1 < count ? folders[order[place + 1]].start : cabinetSize;
        const std::uint64_t headers = folder.blocks * (kBlockHeader + blockReserve_);
        if (end > folder.start + headers) header.folderSizes[order[place]] = end - folder.start - headers;
    }
    return kOk;
}

ReturnCode HeaderReader::read(CabinetHeader& header) {
    std::array<char, kFixed> bytes{};
    const auto got = file_.readAt(base_, bytes);
    if (!got) return kCannotRead;
    if (*got < 4 || std::string_view(bytes.data(), 4) != "MSCF") return kFileStyle;
    if (*got < kFixed) return kHeaderBroken;
    at_ = base_ + kFixed;

    const std::uint64_t rest = file_.size() - base_;
    const std::uint64_t claimed = load32(bytes.data() + 8);
    const std::size_t folders = load16(bytes.data() + 26);
    const std::uint16_t flags = load16(bytes.data() + 30);
    header = {};
    header.files = load16(bytes.data() + 28);
    header.setId = load16(bytes.data() + 32);
    header.index = load16(bytes.data() + 34);
    if (std::uint64_t{folders} * header.files > kMostSteps) return kTooManyFiles;
    if ((flags & kHasReserve) != 0) {
        char reserve[4];
        if (const ReturnCode code = readBytes(reserve, sizeof(reserve)); code != kOk) return code;
        folderReserve_ = static_cast<std::uint8_t>(reserve[2]);
        blockReserve_ = static_cast<std::uint8_t>(reserve[3]);
        at_ += load16(reserve);
    }
    std::string disk;
    ReturnCode code = kOk;
    if ((flags & kHasPrevious) != 0) {
        if ((code = readName(header.previous)) != kOk || (code = readName(disk)) != kOk) return code;
    }
    if ((flags & kHasNext) != 0) {
        if ((code = readName(header.next)) != kOk || (code = readName(disk)) != kOk) return code;
    }
    // Some cabinets do not tell their size.
    return readFolders(folders, claimed == 0 ? rest : std::min(claimed, rest), header);
}

}  // namespace

ReturnCode readCabinetHeader(const InputFile& file, std::uint64_t base, CabinetHeader& header) {
    return HeaderReader(file, base).read(header);
}

}  // namespace archiver::cab
