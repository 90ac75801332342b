#pragma once
#include <atomic>
#include <cstdint>

#include "archivers/convention/ace_abi.h"
#include "archivers/convention/text_codec.h"
#include "archivers/unace/ace_handles.h"

namespace archiver::unace {

/// What the exported functions do. No function throws, whatever it is given; several threads may call at once.
class AceCore {
public:
    ArchiveHandle open(ace_abi::OpenArchiveData* data) noexcept;
    std::int32_t close(ArchiveHandle archive) noexcept;
    std::int32_t readHeader(ArchiveHandle archive, ace_abi::HeaderData* header) noexcept;
    std::int32_t processFile(ArchiveHandle archive, std::int32_t operation, const char* destination) noexcept;
    std::int32_t setPassword(ArchiveHandle archive, const char* password) noexcept;
    /// Texts are UTF-8 from now on, or of the ANSI code page again. @return 1
    Bool setUnicodeMode(Bool on) noexcept;

private:
    [[nodiscard]] const TextCodec& codec() const noexcept { return unicode_ ? utf8Codec() : ansiCodec(); }

    AceHandles handles_;
    std::atomic<bool> unicode_ = false;
};

}  // namespace archiver::unace
