#include "shell/file_descriptors.h"

#include "shell/byte_order.h"

namespace tovar {
namespace {

// dwFlags
constexpr std::uint32_t kAttributes = 0x4, kWriteTime = 0x20, kFileSize = 0x40, kProgress = 0x4000,
                        kUnicode = 0x80000000;
// dwFileAttributes
constexpr std::uint32_t kFolder = 0x10, kNormal = 0x80;

constexpr std::size_t kDescriptorSize = 592;
constexpr std::size_t kPathSize = 520;  ///< bytes of the path, with the NUL
constexpr std::size_t kClassSizeAndPoint = 32, kTwoTimes = 16;

void putWhole(std::string& block, std::uint64_t number) {
    putNumber(block, static_cast<std::uint32_t>(number & 0xFFFFFFFF));
    putNumber(block, static_cast<std::uint32_t>(number >> 32));
}

}  // namespace

std::optional<std::string> buildFileDescriptors(const std::vector<FileDescriptor>& files) {
    if (files.empty() || files.size() > kMostDescriptors) return std::nullopt;
    std::string block;
    block.reserve(4 + files.size() * kDescriptorSize);
    putNumber(block, static_cast<std::uint32_t>(files.size()));
    for (const FileDescriptor& file : files) {
        putNumber(block, kUnicode | kProgress | kAttributes | (file.folder ? 0 : kFileSize) |
                             (file.writeTime != 0 ? kWriteTime : 0));
        block.append(kClassSizeAndPoint, '\0');
        putNumber(block, file.folder ? kFolder : kNormal);
        block.append(kTwoTimes, '\0');  // of creation and of the last access
        putWhole(block, file.writeTime);
        putNumber(block, file.folder ? 0 : static_cast<std::uint32_t>(file.size >> 32));
        putNumber(block, file.folder ? 0 : static_cast<std::uint32_t>(file.size & 0xFFFFFFFF));
        const std::size_t begin = block.size();
        putWide(block, file.path);
        if (block.size() - begin > kPathSize - 2) return std::nullopt;
        block.resize(begin + kPathSize, '\0');
    }
    return block;
}

}  // namespace tovar
