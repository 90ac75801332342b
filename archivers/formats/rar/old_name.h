#pragma once
#include <string>
#include <string_view>

namespace archiver::rar {

/// Decodes a name that is stored twice: in a code page, and behind a NUL as differences of its UTF-16 form to that.
/// @param bytes    in the code page
/// @param packed   the differences
/// @return UTF-8; what is decoded until the differences break off or give a NUL
/// Source: technote.txt of the RAR distribution; the public sources of libarchive
std::string decodeOldName(std::string_view bytes, std::string_view packed);

}  // namespace archiver::rar
