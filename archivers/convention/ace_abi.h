#pragma once
#include <cstddef>
#include <cstdint>

#include "archivers/convention/abi.h"

/// Binary interface of "UnAce.dll", version 1: records and function types that both sides share. Functions and
/// callbacks are stdcall on 32-bit Windows; exports are undecorated. Texts are 8-bit and NUL-terminated: the system's
/// ANSI code page, or UTF-8 after ACESetUnicodeMode(1), which is an addition of ours. Records are packed to one byte.
/// Source: published headers of the library's interface.
namespace archiver::ace_abi {

/// What the functions answer.
namespace result {
inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kMemory = 1;
inline constexpr std::int32_t kFiles = 2;
inline constexpr std::int32_t kFound = 3;  ///< nothing was found
inline constexpr std::int32_t kFull = 4;   ///< the disk is full
inline constexpr std::int32_t kOpen = 5;   ///< the archive cannot be opened, or is none
inline constexpr std::int32_t kRead = 6;
inline constexpr std::int32_t kWrite = 7;
inline constexpr std::int32_t kCommandLine = 8;
inline constexpr std::int32_t kCrc = 9;
inline constexpr std::int32_t kOther = 10;
inline constexpr std::int32_t kExists = 11;
inline constexpr std::int32_t kEnd = 128;         ///< no more headers
inline constexpr std::int32_t kHandle = 129;      ///< a handle that is not open
inline constexpr std::int32_t kConstant = 130;    ///< a value that a parameter cannot have
inline constexpr std::int32_t kNoPassword = 131;  ///< encrypted, and no password was set
inline constexpr std::int32_t kMethod = 132;      ///< unknown method
inline constexpr std::int32_t kUser = 255;        ///< a callback cancelled
}  // namespace result

inline constexpr std::uint32_t kOpenList = 0;
inline constexpr std::uint32_t kOpenExtract = 1;

inline constexpr std::int32_t kSkip = 0;
inline constexpr std::int32_t kTest = 1;
inline constexpr std::int32_t kExtract = 2;

inline constexpr std::int32_t kVolumeRequest = 0;  ///< the volume is missing
inline constexpr std::int32_t kVolumeOpened = 1;

inline constexpr std::uint32_t kCommentOk = 0;
inline constexpr std::uint32_t kCommentSmallBuffer = 1;
inline constexpr std::uint32_t kCommentNone = 255;

/// Flags of a member's header.
inline constexpr std::uint32_t kFlagFromPrevious = 0x1000;
inline constexpr std::uint32_t kFlagGoesOn = 0x2000;
inline constexpr std::uint32_t kFlagPassword = 0x4000;
inline constexpr std::uint32_t kFlagSolid = 0x8000;

inline constexpr std::size_t kNameSize = 260;   ///< with the NUL
inline constexpr std::size_t kAdvertSize = 51;  ///< likewise

#pragma pack(push, 1)

/// One member's header.
struct HeaderData {
    char archiveName[kNameSize];
    char fileName[kNameSize];  ///< with its path, "\" between folders
    std::uint32_t flags;
    std::uint32_t packedSize;
    std::uint32_t originalSize;
    std::uint32_t fileCrc;   ///< as stored: CRC-32 without the final inversion
    std::uint32_t fileTime;  ///< DOS date in the high word, DOS time in the low word
    std::uint32_t method;    ///< 0 stored, 1 LZ77, 2 blocked
    std::uint32_t quality;   ///< 0 to 5
    std::uint32_t attributes;
    char* commentBuffer;  ///< the caller's, or null
    std::uint32_t commentBufferSize;
    std::uint32_t commentSize;
    std::uint32_t commentState;
};
static_assert(offsetof(HeaderData, flags) == 520);
static_assert(offsetof(HeaderData, attributes) == 548);
static_assert(offsetof(HeaderData, commentBuffer) == 552);
static_assert(sizeof(void*) != 4 || sizeof(HeaderData) == 568);

using ChangeVolume = std::int32_t ARCHIVER_CALL(char* archiveName, std::int32_t mode);
using ProcessData = std::int32_t ARCHIVER_CALL(std::uint8_t* bytes, std::int32_t size);

/// What an archive is opened by.
struct OpenArchiveData {
    char* archiveName;
    std::uint32_t openMode;
    std::int32_t openResult;  ///< given back, like `flags`, `host` and `advert`
    std::uint32_t flags;
    std::uint32_t host;
    char advert[kAdvertSize];
    char* commentBuffer;
    std::uint32_t commentBufferSize;
    std::uint32_t commentSize;
    std::uint32_t commentState;
    ChangeVolume* changeVolume;  ///< may be null
    ProcessData* processData;    ///< may be null
};
static_assert(sizeof(void*) != 4 || offsetof(OpenArchiveData, advert) == 20);
static_assert(sizeof(void*) != 4 || offsetof(OpenArchiveData, commentBuffer) == 71);
static_assert(sizeof(void*) != 4 || offsetof(OpenArchiveData, changeVolume) == 87);
static_assert(sizeof(void*) != 4 || sizeof(OpenArchiveData) == 95);

#pragma pack(pop)

/// The same as compilers lay it out that do not pack: everything behind the advert stands one byte later.
struct NaturalOpenArchiveData {
    char* archiveName;
    std::uint32_t openMode;
    std::int32_t openResult;
    std::uint32_t flags;
    std::uint32_t host;
    char advert[kAdvertSize];
    char* commentBuffer;
    std::uint32_t commentBufferSize;
    std::uint32_t commentSize;
    std::uint32_t commentState;
    ChangeVolume* changeVolume;
    ProcessData* processData;
};
static_assert(sizeof(void*) != 4 || offsetof(NaturalOpenArchiveData, commentBuffer) == 72);
static_assert(sizeof(void*) != 4 || sizeof(NaturalOpenArchiveData) == 96);

namespace fn {
using Open = ArchiveHandle ARCHIVER_CALL(OpenArchiveData* data);
using Close = std::int32_t ARCHIVER_CALL(ArchiveHandle archive);
using ReadHeader = std::int32_t ARCHIVER_CALL(ArchiveHandle archive, HeaderData* header);
using ProcessFile = std::int32_t ARCHIVER_CALL(ArchiveHandle archive, std::int32_t operation, const char* destination);
using SetPassword = std::int32_t ARCHIVER_CALL(ArchiveHandle archive, const char* password);
}  // namespace fn

}  // namespace archiver::ace_abi
