#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "archivers/formats/archive_reader.h"

namespace archiver::lzh {

/// A member that is written.
struct NewMember {
    std::string name;    ///< UTF-8, with "/" between its parts; a folder ends with one
    std::string method;  ///< five characters, as "-lh5-"
    std::uint64_t packedSize = 0;
    std::uint64_t originalSize = 0;
    std::uint16_t crc = 0;  ///< of the original bytes
    std::uint8_t attributes = 0;
    std::optional<Moment> written, created, accessed;
    bool large = false;  ///< with room for sizes of 4 GiB and more
};

/// How headers are written.
struct HeaderStyle {
    int level = 2;         ///< 0 to 2; what a level has no room for is written with level 2
    bool windows = false;  ///< made in Windows: names are in the ANSI code page where it holds them. Else for Unix, and
                           ///< names are UTF-8
};

/// The bytes of a header. Their number depends on the name, the attributes, which times there are, and `large`, but on
/// no size or check value: they can be written over when those are known.
/// @return empty for a name that no header has room for
/// Source: public descriptions of the LHA header levels 0 to 2
std::string headerOf(const NewMember& member, const HeaderStyle& style);

}  // namespace archiver::lzh
