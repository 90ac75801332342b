#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/zip/end_record.h"

namespace archiver::zip {

/// One header of the central directory, as it is stored. Source: PKWARE APPNOTE 6.3.10, 4.3.12
struct CentralHeader {
    std::uint16_t madeBy = 0;  ///< system in the upper byte
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint16_t dosTime = 0;
    std::uint16_t dosDate = 0;
    std::uint32_t crc = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t originalSize = 0;
    std::uint32_t externalAttributes = 0;
    std::uint32_t localOffset = 0;
    std::string_view name;   ///< bytes; valid until the next header is read
    std::string_view extra;  ///< likewise

    [[nodiscard]] int system() const noexcept { return madeBy >> 8; }
};

/// Walks a central directory in one pass through a buffer of fixed size.
///
/// Own code, although a library unpacks the members: that one loads every entry before it shows the first, with several
/// allocations for each; it refuses a whole archive for one odd entry; and it refuses archives with bytes in front.
class CentralDirectory {
public:
    CentralDirectory(const InputFile& file, const DirectoryPlace& place);

    /// Reads the next header.
    /// @return kOk, kNoMoreEntries at the directory's end, kHeaderBroken when something else stands there, kCannotRead
    ReturnCode next(CentralHeader& header);

    void restart() noexcept;

private:
    [[nodiscard]] bool require(std::size_t bytes) noexcept;

    const InputFile& file_;
    const DirectoryPlace place_;
    std::unique_ptr<char[]> buffer_;
    std::size_t begin_ = 0, end_ = 0;  ///< what of the buffer is not yet walked over
    std::uint64_t readOffset_;         ///< in the file, of what follows the buffer
    bool readFailed_ = false;
};

}  // namespace archiver::zip
