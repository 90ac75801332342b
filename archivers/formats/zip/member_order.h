#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/zip/end_record.h"

namespace archiver::zip {

/// Where the members of an archive lie, to find those that overlap: a few kilobytes that belong to many members at once
/// can unpack to any size.
///
/// It holds the offset of every member, eight bytes each, and a member must end where the next one starts or before. So
/// each byte of the archive unpacks once at most.
class MemberOrder {
public:
    /// Members whose offsets are held; 32 MiB. An archive of more is listed, not unpacked.
    static constexpr std::size_t kMost = std::size_t{4} << 20;

    /// Walks the whole directory.
    /// @return kOk, kEnoughMemory for more members than `most`, kCannotRead
    ReturnCode build(const InputFile& file, const DirectoryPlace& place, std::size_t most = kMost);

    /// Where the member must have ended, as an offset in the file: at the next member or at the directory.
    /// @param localHeader  the member's offset in the file
    /// @return nullopt when it lies behind the directory's start, or when two members claim to be there
    [[nodiscard]] std::optional<std::uint64_t> endOf(std::uint64_t localHeader) const noexcept;

private:
    std::vector<std::uint64_t> offsets_;  ///< in the file; sorted
    std::uint64_t directory_ = 0;
};

}  // namespace archiver::zip
