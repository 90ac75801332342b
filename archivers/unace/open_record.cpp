#include "archivers/unace/open_record.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

namespace archiver::unace {
namespace {

/// One field, wherever it stands.
template <class Value>
Value load(const void* record, std::size_t offset) noexcept {
    Value value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
    return value;
}

template <class Layout>
std::optional<OpenWishes> readAs(const void* record) noexcept {
    OpenWishes wishes;
    wishes.changeVolume = load<ace_abi::ChangeVolume*>(record, offsetof(Layout, changeVolume));
    wishes.processData = load<ace_abi::ProcessData*>(record, offsetof(Layout, processData));
    wishes.commentBuffer = load<char*>(record, offsetof(Layout, commentBuffer));
    wishes.commentBufferSize = load<std::uint32_t>(record, offsetof(Layout, commentBufferSize));
    const auto isCallback = [](const void* address) { return address == nullptr || isCode(address); };
    if (!isCallback(reinterpret_cast<const void*>(wishes.changeVolume)) ||
        !isCallback(reinterpret_cast<const void*>(wishes.processData))) {
        return std::nullopt;
    }
    if (wishes.commentBuffer != nullptr && !isWritable(wishes.commentBuffer, wishes.commentBufferSize)) {
        return std::nullopt;
    }
    char* const bytes = static_cast<char*>(const_cast<void*>(record));
    wishes.commentSize = reinterpret_cast<std::uint32_t*>(bytes + offsetof(Layout, commentSize));
    wishes.commentState = reinterpret_cast<std::uint32_t*>(bytes + offsetof(Layout, commentState));
    return wishes;
}

}  // namespace

OpenWishes readOpenRecord(const ace_abi::OpenArchiveData* record) noexcept {
    // The packed layout is looked at first: the last byte of the other may not be the caller's.
    if (const auto packed = readAs<ace_abi::OpenArchiveData>(record)) return *packed;
    return readAs<ace_abi::NaturalOpenArchiveData>(record).value_or(OpenWishes{});
}

void storeNumber(std::uint32_t* place, std::uint32_t number) noexcept {
    if (place != nullptr) std::memcpy(static_cast<void*>(place), &number, sizeof number);
}

std::uint32_t writeComment(const char* bytes, std::size_t length, char* buffer, std::uint32_t bufferSize,
                           std::uint32_t& written) noexcept {
    written = 0;
    if (buffer != nullptr && bufferSize > 0) buffer[0] = '\0';
    if (bytes == nullptr) return ace_abi::kCommentNone;
    if (buffer == nullptr || bufferSize == 0) return ace_abi::kCommentSmallBuffer;
    written = static_cast<std::uint32_t>(std::min<std::size_t>(length, bufferSize - 1));
    std::memcpy(buffer, bytes, written);
    buffer[written] = '\0';
    return written == length ? ace_abi::kCommentOk : ace_abi::kCommentSmallBuffer;
}

}  // namespace archiver::unace
