#pragma once
#include <cstdint>

#include "archivers/convention/ace_abi.h"

namespace archiver::unace {

/// What a caller asks of an archive, besides its name and mode.
struct OpenWishes {
    ace_abi::ChangeVolume* changeVolume = nullptr;
    ace_abi::ProcessData* processData = nullptr;
    char* commentBuffer = nullptr;
    std::uint32_t commentBufferSize = 0;
    std::uint32_t* commentSize = nullptr;   ///< where the answer goes; may be unaligned: see storeNumber
    std::uint32_t* commentState = nullptr;  ///< likewise
};

/// Reads the part of the record behind the advert. Callers that do not pack the record have it one byte later: the
/// first layout in which all pointers make sense is taken, packed before natural; none is when neither does.
[[nodiscard]] OpenWishes readOpenRecord(const ace_abi::OpenArchiveData* record) noexcept;

void storeNumber(std::uint32_t* place, std::uint32_t number) noexcept;

/// Writes an archive's or a member's comment as a NUL-terminated text.
/// @param bytes  null when there is none
/// @return the state: kCommentOk, kCommentSmallBuffer when it was cut, kCommentNone
[[nodiscard]] std::uint32_t writeComment(const char* bytes, std::size_t length, char* buffer, std::uint32_t bufferSize,
                                         std::uint32_t& written) noexcept;

/// Whether an address can be called. Implemented in win32/ and posix/.
[[nodiscard]] bool isCode(const void* address) noexcept;
/// Whether bytes can be written there.
[[nodiscard]] bool isWritable(const void* address, std::size_t size) noexcept;

}  // namespace archiver::unace
