#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "archivers/convention/ace_abi.h"
#include "shell/text_codec.h"

namespace tovar {

/// One member as the library's header record tells it.
struct AceMember {
    std::wstring name;  ///< as stored, with its path
    std::uint32_t flags = 0;
    std::uint32_t packed = 0;    ///< bytes
    std::uint32_t original = 0;  ///< bytes
    std::uint32_t crc = 0;       ///< as stored
    std::uint32_t time = 0;      ///< DOS date in the high word, DOS time in the low word
    std::uint32_t method = 0;
    std::uint32_t attributes = 0;  ///< DOS attributes

    [[nodiscard]] bool encrypted() const noexcept { return (flags & archiver::ace_abi::kFlagPassword) != 0; }
    [[nodiscard]] bool folder() const noexcept { return (attributes & 0x10) != 0; }
};

/// Is told of each piece of a member's data as it is unpacked.
/// @param bytes  of this piece
/// @return false to cancel. An exception cancels.
using AceDataSink = std::function<bool(std::uint32_t bytes)>;

/// "UnAce.dll" as its driver sees it: texts are wide, a missing function answers like a failing one, and no call
/// throws. Results are those of archiver::ace_abi::result.
class AceLibrary {
public:
    virtual ~AceLibrary() = default;

    /// @param mode    kOpenList or kOpenExtract
    /// @param result  kOk, or why the archive is not open
    /// @return null when it is not
    virtual archiver::ArchiveHandle open(std::wstring_view fileName, std::uint32_t mode, std::int32_t& result) = 0;
    virtual std::int32_t readHeader(archiver::ArchiveHandle archive, AceMember& member) = 0;
    /// @param operation    kSkip, kTest or kExtract; one of them has to follow each header
    /// @param destination  full path of the file that the member becomes; empty where there is none
    /// @param data         may be empty. Not every library tells it anything.
    virtual std::int32_t processFile(archiver::ArchiveHandle archive, std::int32_t operation,
                                     std::wstring_view destination, const AceDataSink& data) = 0;
    virtual std::int32_t setPassword(archiver::ArchiveHandle archive, std::wstring_view password) = 0;
    virtual std::int32_t close(archiver::ArchiveHandle archive) = 0;

    /// The 8-bit form of the library's texts.
    [[nodiscard]] virtual const TextCodec& codec() = 0;
};

}  // namespace tovar
