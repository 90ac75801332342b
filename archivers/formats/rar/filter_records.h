#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/rar/filters.h"

namespace archiver::rar {

/// Reads where filters are to be undone, and remembers their programs, which later ones refer to.
/// Source: the public sources of libarchive
class FilterRecords {
public:
    /// Forgets the programs.
    void clear() noexcept;

    /// @param flags     the byte in front of the record
    /// @param position  where unpacking has come to in the window
    /// @param filter    gets what the record tells
    /// @param anew      gets whether all filters that are still to be undone are dropped
    /// @return kOk, kHuffmanCode when the record makes no sense, kMethod when its program is no known one
    ReturnCode read(std::uint8_t flags, std::span<const std::uint8_t> record, std::uint64_t position, Filter& filter,
                    bool& anew);

private:
    struct Program {
        FilterKind kind = FilterKind::kUnknown;
        std::uint32_t length = 0;  ///< bytes of its last filter
    };

    std::vector<Program> programs_;
    std::size_t last_ = 0;
};

}  // namespace archiver::rar
