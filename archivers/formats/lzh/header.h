#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::lzh {

/// A member's header of any level, as it is stored; texts are bytes in the archive's own code page.
struct Header {
    std::uint8_t level = 0;
    std::string method;  ///< five characters, as "-lh5-"
    std::uint64_t packedSize = 0;
    std::uint64_t originalSize = 0;
    std::uint32_t time = 0;  ///< MS-DOS words in levels 0 and 1, seconds since 1970 UTC in 2 and 3
    std::uint8_t attributes = 0;
    std::optional<std::uint16_t> crc;  ///< of the original bytes; the oldest archives have none
    std::uint8_t system = 0;           ///< a letter, such as 'M' or 'U'; 0 when it is not told

    std::string name;
    std::string folder;           ///< from an extended header; separators are 0xFF
    std::u16string wideName;      ///< empty when there is none
    std::u16string wideFolder;    ///< separators are 0xFFFF
    std::uint32_t codePage = 0;   ///< of name and folder; 0 when it is not told
    std::uint16_t unixMode = 0;   ///< 0 when there is none
    std::uint32_t unixTime = 0;   ///< seconds since 1970 UTC that go before `time`; 0 when there are none
    std::uint64_t createdAt = 0;  ///< Windows file times; 0 when there are none
    std::uint64_t writtenAt = 0;
    std::uint64_t accessedAt = 0;

    std::uint64_t dataOffset = 0;  ///< of the packed bytes, in the file

    [[nodiscard]] bool hasName() const noexcept {
        return !name.empty() || !folder.empty() || !wideName.empty() || !wideFolder.empty();
    }
    /// Whether this is a folder or, with a mode that says so, a symbolic link.
    [[nodiscard]] bool isFolderOrLink() const noexcept { return method == "-lhd-"; }
    [[nodiscard]] bool isLink() const noexcept { return isFolderOrLink() && (unixMode & 0170000) == 0120000; }
};

/// Whether a header can begin with these bytes: a method as the format has them, and a level.
/// @param bytes  at least kLeastHeader
bool looksLikeHeader(std::string_view bytes) noexcept;
inline constexpr std::size_t kLeastHeader = 22;

/// Reads the header at an offset.
/// @param header  filled when the answer is kOk
/// @return kOk; kNoMoreEntries at the end mark and at the end of the file; kHeaderCrc when a check value is wrong;
///         kHeaderBroken; kCannotRead when the system reports an error
/// Source: public descriptions of the LHA header levels 0 to 3
ReturnCode readHeader(const InputFile& file, std::uint64_t offset, Header& header);

}  // namespace archiver::lzh
