#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/convention/return_codes.h"

namespace archiver {

/// DOS attribute bits of a member.
namespace attribute {
inline constexpr std::uint8_t kReadOnly = 0x01;
inline constexpr std::uint8_t kHidden = 0x02;
inline constexpr std::uint8_t kSystem = 0x04;
inline constexpr std::uint8_t kFolder = 0x10;
inline constexpr std::uint8_t kArchive = 0x20;
}  // namespace attribute

/// Systems that make members, as the convention numbers them.
namespace os_type {
inline constexpr std::uint32_t kMsDos = 0;
inline constexpr std::uint32_t kUnix = 2;
inline constexpr std::uint32_t kMacOs = 4;
inline constexpr std::uint32_t kUnknown = 10;
inline constexpr std::uint32_t kWindowsNtfs = 21;
}  // namespace os_type

/// A moment in UTC.
struct Moment {
    std::int64_t seconds = 0;       ///< since 1970-01-01 00:00:00 UTC; may be negative
    std::uint32_t nanoseconds = 0;  ///< 0 to 999,999,999
};

/// What a member is.
enum class MemberKind : std::uint8_t {
    kFile,
    kFolder,
    kSymbolicLink,  ///< its target is in Member::linkTarget, or is the member's data when that is empty
    kHardLink,      ///< another name of the earlier member that Member::linkTarget names
    kSpecial,       ///< a device, a pipe, a volume label: nothing that can be unpacked
};

/// One member of an archive, as its header tells it. Sizes are claims, not facts.
struct Member {
    std::string name;  ///< UTF-8, with the separators as stored; a folder member ends with one
    std::uint64_t originalSize = 0;
    std::uint64_t packedSize = 0;
    std::uint32_t crc = 0;
    std::uint32_t osType = os_type::kUnknown;
    std::uint16_t dosDate = 0;  ///< local time where the format stores UTC
    std::uint16_t dosTime = 0;
    std::uint8_t attributes = 0;  ///< attribute bits
    std::string method;           ///< at most 7 ASCII characters
    bool encrypted = false;
    MemberKind kind = MemberKind::kFile;
    std::string linkTarget;  ///< UTF-8, with the separators as stored
    std::optional<Moment> written, created, accessed;
};

/// Facts of the archive as a whole, known once it is open.
struct ArchiveFacts {
    std::uint64_t fileSize = 0;  ///< bytes on disk
    std::uint32_t osType = os_type::kUnknown;
    int archiveType = 0;          ///< the number that the tar library's GetArchiveType gives; 0 elsewhere
    bool selfExtracting = false;  ///< a program stands before the archive's own bytes
    std::string comment{};        ///< of the archive, UTF-8; empty when it has none, or its format none that is read
    bool listedByHeaders = true;  ///< false: going to the next member unpacks all that lies between
};

/// Takes a member's bytes as they are unpacked.
/// @return false to stop; the reader then answers kUserCancel
using DataSink = std::function<bool(const char* bytes, std::size_t size)>;

/// The data of one member, apart from the reader that gave it.
class DetachedData {
public:
    virtual ~DetachedData() = default;

    /// What ArchiveReader::read does. Any thread may call it, while others read other members and the reader goes on;
    /// the reader outlives it. At most once.
    virtual ReturnCode read(const DataSink& sink) = 0;
};

/// An open archive, read member by member. Nothing throws but std::bad_alloc; memory does not grow with a claimed size.
class ArchiveReader {
public:
    virtual ~ArchiveReader() = default;

    [[nodiscard]] virtual const ArchiveFacts& facts() const = 0;

    /// Goes to the next member; the first call gives the first one.
    /// @return kOk, kNoMoreEntries, or an error code that ends the walk
    virtual ReturnCode next(Member& member) = 0;

    /// Goes back to before the first member.
    virtual ReturnCode restart() = 0;

    /// The password for the members read from now on; empty for none. Formats without encryption ignore it.
    /// @param utf8  a reader turns it into the code page of its format
    virtual void setPassword(std::string_view utf8) { static_cast<void>(utf8); }

    /// Unpacks the current member (the one that `next` gave last) and checks its checksum. At most once a member, but
    /// for an encrypted one, which may be read again after setPassword.
    /// @return kOk, kPasswordFile for an encrypted member, kMethod, kFileCrc, kCannotRead, kUserCancel, ...
    virtual ReturnCode read(const DataSink& sink) = 0;

    /// Takes the current member's data away, to be unpacked beside that of other members.
    /// @return null where members unpack only in their order, or where this one gains nothing
    virtual std::unique_ptr<DetachedData> detach() { return nullptr; }

    /// Bytes of the archive that were read so far, for a progress in per cent of ArchiveFacts::fileSize.
    [[nodiscard]] virtual std::uint64_t consumed() const { return 0; }
};

/// Outcome of opening: a reader, or why there is none.
struct OpenResult {
    std::unique_ptr<ArchiveReader> reader;  ///< null on failure
    ReturnCode code = kOk;
};

/// Opens an archive of one family, recognised by its content and not by its name.
using OpenFunction = OpenResult (*)(const std::filesystem::path& file);

}  // namespace archiver
