#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// Facts of an ACE archive as its main header stores them.
struct AceFacts {
    std::uint16_t flags = 0;
    std::uint8_t versionNeeded = 0;  ///< to extract: 10 or 20
    std::uint8_t versionMadeBy = 0;
    std::uint8_t host = 0;    ///< 0 MS-DOS, 1 OS/2, 2 Win32, 3 Unix, 4 Mac OS, 5 Windows NT, ... 12 Linux
    std::uint8_t volume = 0;  ///< number of the first volume that is read, from 0
    std::uint32_t stamp = 0;  ///< DOS date in the high word, time in the low word
    std::string advert;       ///< bytes as stored, at most 255
    bool hasComment = false;
    std::optional<std::string> comment;  ///< bytes as stored; none when there is none or it is damaged
};

/// A member's header as it is stored. What is not here is in Member.
struct AceHeader {
    std::string name;          ///< bytes, with "\" between the parts
    std::uint16_t flags = 0;   ///< 0x1000 from the previous volume, 0x2000 goes on in the next, 0x4000 password
    std::uint8_t method = 0;   ///< 0 stored, 1 LZ77, 2 blocked
    std::uint8_t quality = 0;  ///< 0 to 5
    std::uint16_t parameters = 0;
    std::uint32_t attributes = 0;
    std::uint32_t stamp = 0;     ///< DOS date in the high word, time in the low word
    std::uint32_t checksum = 0;  ///< CRC-32 without final inversion; Member::crc has the usual one
    bool hasComment = false;
    std::optional<std::string> comment;  ///< bytes as stored; none when there is none or it is damaged
};

/// What a volume callback is told.
enum class AceVolumeEvent : std::uint8_t {
    kRequest,  ///< the volume is not there; the callback may put it there, or change the path
    kOpened,   ///< reading goes on in this volume
};

/// @return false to stop; what was going on then answers kUserCancel
using AceVolumeCallback = std::function<bool(std::filesystem::path& volume, AceVolumeEvent event)>;

/// Reads ACE archives of version 1 and 2: stored, LZ77 and blocked members, solid, encrypted, in volumes.
///
/// Codes beside those of ArchiveReader: kArcFileOpen when a volume is missing, see missingVolume; kPasswordFile for an
/// encrypted member without a password or, as far as that can be told, with a wrong one; kFileCrc, kHuffmanCode for
/// damaged data; kCannotRead for data cut short; kHeaderCrc and kHeaderBroken for headers.
///
/// In a solid archive `read` unpacks the members in front first, once; meanwhile the sink is called with no bytes, so
/// that it can stop the work. `read` may be called again on the same member, after setPassword for instance.
class AceReader : public ArchiveReader {
public:
    [[nodiscard]] virtual const AceFacts& aceFacts() const = 0;

    /// The header of the member that `next` gave last.
    [[nodiscard]] virtual const AceHeader& header() const = 0;

    /// Called when a volume is missing and when reading goes on in another. May be empty.
    virtual void setVolumeCallback(AceVolumeCallback callback) = 0;

    /// The volume that the current member begins in; the first one in front of the first member.
    [[nodiscard]] virtual const std::filesystem::path& currentVolume() const = 0;

    /// The volume that was missing last; empty when none was.
    [[nodiscard]] virtual const std::filesystem::path& missingVolume() const = 0;
};

/// Outcome of opening: a reader, or why there is none.
struct AceOpenResult {
    std::unique_ptr<AceReader> reader;  ///< null on failure
    ReturnCode code = kOk;
};

/// Opens a file of an archive: openInputFile, or something in its place.
using AceFileOpener = std::function<InputFileResult(const std::filesystem::path& file)>;

/// Opens an ACE archive, alone or behind a program. A later volume of several opens the first one when that lies beside
/// it, and is read by itself otherwise.
/// @return kOk; kNotFindArcFile, kArcFileOpen, kCannotRead; kFileStyle when it is no such archive; kHeaderCrc,
///         kHeaderBroken
AceOpenResult openAceReader(const std::filesystem::path& file, AceFileOpener opener = openInputFile);

/// The same as an OpenFunction.
OpenResult openAce(const std::filesystem::path& file);

}  // namespace archiver
