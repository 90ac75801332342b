#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "archivers/formats/zip/member_fields.h"

namespace archiver::zip {

/// A member as reading it takes: what the directory says of it.
struct PackedMember {
    MemberData data;
    std::string storedName;   ///< bytes of the directory's header
    std::string unicodePath;  ///< data of its Unicode Path field; empty when there is none
    int system = 0;           ///< that made it
};

/// A local header as it is stored. Source: PKWARE APPNOTE 6.3.10, 4.3.7
struct LocalHeader {
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t crc = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t originalSize = 0;
    std::string_view name;
    std::string_view extra;
};

/// Bytes of a local header, from its first `kLocalSize` ones; nullopt when none stands there.
std::optional<std::size_t> localHeaderSize(std::span<const char> fixed) noexcept;

/// @param bytes  the whole header; its texts point into it
LocalHeader parseLocalHeader(std::span<const char> bytes) noexcept;

/// Whether a local header tells the same as the directory: name, method, encryption, checksum and sizes. An archive
/// that says one thing to who lists it and another to who unpacks it is damaged, or made to deceive.
///
/// Where archivers that are in use differ, both forms count as one: "\" and "/", a "/" at a folder's end, a name once
/// in UTF-8 and once in the system's code page, sizes and checksum that follow the data or stand in the Zip64 field,
/// the checksum that AE-2 leaves out, two Unicode Path fields of one text beside names in different code pages.
bool agrees(const LocalHeader& local, const PackedMember& member);

}  // namespace archiver::zip
