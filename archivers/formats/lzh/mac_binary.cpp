#include "archivers/formats/lzh/mac_binary.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace archiver::lzh {
namespace {

constexpr std::size_t kNameSize = 1;
constexpr std::size_t kName = 2;
constexpr std::size_t kLongestName = 63;
constexpr std::size_t kDataSize = 83;
constexpr std::size_t kResourceSize = 87;
constexpr std::size_t kLater = 99;  ///< fields that later versions of the standard added

std::uint64_t bigEndian32(const char* bytes) noexcept {
    std::uint64_t value = 0;
    for (int index = 0; index < 4; ++index) value = value << 8 | static_cast<unsigned char>(bytes[index]);
    return value;
}

bool isZero(std::string_view bytes) noexcept { return bytes.find_first_not_of('\0') == std::string_view::npos; }

}  // namespace

void MacBinaryFilter::decide() {
    const std::string_view header(header_.data(), header_.size());
    const auto nameSize = static_cast<unsigned char>(header[kNameSize]);
    if (nameSize > kLongestName || header.substr(kName, nameSize) != name_) return;
    const std::string_view afterName = header.substr(kName + nameSize, kLongestName - nameSize);
    if (header[0] != '\0' || header[74] != '\0' || header[82] != '\0' || !isZero(afterName)) return;
    if (!isZero(header.substr(kLater))) return;
    const std::uint64_t data = bigEndian32(header.data() + kDataSize);
    const std::uint64_t resource = bigEndian32(header.data() + kResourceSize);
    const std::uint64_t whole = (kHeader + data + resource + kHeader - 1) / kHeader * kHeader;
    if (whole != size_) return;
    isEnvelope_ = true;
    left_ = data != 0 ? data : resource;
}

bool MacBinaryFilter::pass(const char* bytes, std::size_t size) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(size, left_));
    left_ -= count;
    return count == 0 || sink_(bytes, count);
}

bool MacBinaryFilter::operator()(const char* bytes, std::size_t size) {
    if (held_ < kHeader && size_ >= kHeader) {
        const std::size_t taken = std::min(size, kHeader - held_);
        std::memcpy(header_.data() + held_, bytes, taken);
        held_ += taken;
        bytes += taken;
        size -= taken;
        if (held_ < kHeader) return true;
        decide();
        if (!isEnvelope_ && !pass(header_.data(), kHeader)) return false;
    }
    return pass(bytes, size);
}

}  // namespace archiver::lzh
