#pragma once
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/zip/central_directory.h"

namespace archiver::zip {

/// How a member is encrypted.
enum class Encryption : std::uint8_t {
    kNone,
    kTraditional,  ///< PKWARE's first one
    kAes,          ///< AE-1 and AE-2 as WinZip specified them
    kOther,        ///< one that is not read
};

/// What the AES extra field tells. Source: WinZip, "AES Encryption Information: Encryption Specification AE-1 and AE-2"
struct AesField {
    std::uint16_t version = 0;  ///< 1 with the checksum in the header, 2 without
    std::uint8_t strength = 0;  ///< 1 to 3: 128, 192 and 256 bits
    std::uint16_t method = 0;   ///< that the data was packed with before

    friend bool operator==(const AesField&, const AesField&) = default;
};

/// @return nullopt when it is none that can be used
std::optional<AesField> parseAesField(std::string_view field) noexcept;

/// Where and how a member's data is stored.
struct MemberData {
    std::uint64_t localOffset = 0;  ///< as stored; see DirectoryPlace::shift
    std::uint64_t packedSize = 0;
    std::uint64_t originalSize = 0;
    std::uint32_t crc = 0;
    std::uint16_t flags = 0;
    std::uint16_t storedMethod = 0;  ///< as the header has it
    std::uint16_t method = 0;        ///< of the packed data, below the encryption
    std::uint16_t dosTime = 0;
    Encryption encryption = Encryption::kNone;
    AesField aes = {};  ///< with Encryption::kAes
};

/// Takes the values that a header has no room for and gives as all ones from the Zip64 field, in their order; those
/// that are missing there stay.
void applyZip64(std::string_view field, std::initializer_list<std::uint64_t*> values) noexcept;

/// A header's offset of the local header, as stored.
std::uint64_t localOffsetOf(const CentralHeader& header) noexcept;

/// Turns a header into what the interface tells of a member, and into what reading it takes. Allocates nothing once the
/// member's texts have grown to the archive's longest name.
///
/// A member whose name ends with "/", or whose attributes say so, is a folder. A Unix mode tells links and devices.
/// Times come from the NTFS field where there is one, otherwise from the extended timestamp. What an odd extra field
/// should have told stays as the header has it.
void fillMember(const CentralHeader& header, Member& member, MemberData& data);

/// The method's name in at most 7 characters; "Unknown" for one that has none.
const char* methodText(std::uint16_t method) noexcept;

}  // namespace archiver::zip
