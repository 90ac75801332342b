#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/moments.h"

namespace archiver::rar {

/// The two layouts of the format: that of RAR 1.5 to 4 and that of RAR 5.
enum class Generation : std::uint8_t { kOld, kNew };

/// The method of files that are not packed.
inline constexpr std::uint8_t kStored = 0;

/// What a header tells of a file, or of one part of it when it is split over volumes.
struct FileHeader {
    std::string name;  ///< UTF-8, with the separators as stored
    std::uint64_t packedSize = 0;
    std::uint64_t originalSize = 0;  ///< of the whole file
    std::uint32_t crc = 0;           ///< of the whole file in its last part
    bool hasCrc = false;
    bool sizeKnown = true;
    bool folder = false;
    MemberKind kind = MemberKind::kFile;
    std::string linkTarget;   ///< UTF-8, with the separators as stored; empty when it is the file's bytes
    bool redirected = false;  ///< it has no bytes of its own: it is a link, or a copy of another member
    bool encrypted = false;
    bool solid = false;  ///< packed with the dictionary of the files before
    bool splitBefore = false;
    bool splitAfter = false;
    std::uint8_t method = 0;      ///< 0 stored, 1 to 5 fastest to best
    std::uint8_t version = 0;     ///< that is needed to unpack: times 10 in the old layout, from 0 in the new one
    std::uint8_t dictionary = 0;  ///< size as the header codes it
    std::string blake2;           ///< checksum of 32 bytes, or empty
    std::uint32_t osType = os_type::kUnknown;
    std::uint8_t attributes = 0;
    DosStamp stamp;
    std::optional<Moment> written, created, accessed;
};

/// One block of an archive: a header, and data behind it.
struct Block {
    enum class Kind : std::uint8_t { kMain, kFile, kEnd, kEncryption, kOther };
    Kind kind = Kind::kOther;
    std::uint64_t headerSize = 0;
    std::uint64_t dataSize = 0;
    bool volume = false;             ///< of a main header: the archive has several volumes
    bool newNames = false;           ///< of a main header: volumes are named with a number before the extension
    bool encryptedHeaders = false;   ///< of a main header: all that follows is encrypted
    bool moreVolumes = false;        ///< of an end mark
    std::uint64_t volumeNumber = 0;  ///< of a main header of the new layout, from 0
    FileHeader file;
};

}  // namespace archiver::rar
