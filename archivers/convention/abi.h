#pragma once
#include <cstddef>
#include <cstdint>

/// Binary interface of the common archiver convention: records and function types that an archiver library exports and
/// its callers bind by name. The one header that both sides share.
///
/// Functions are stdcall on 32-bit Windows and undecorated; their names start with the library's prefix
/// ("UnZip" + "OpenArchive"). Texts are 8-bit and NUL-terminated: the system's ANSI code page, or UTF-8 after
/// prefix + "SetUnicodeMode"(1). Records are packed to one byte.
/// Source: published headers of the common archiver ("tougou archiver") convention.

#if defined(_WIN32) && !defined(_WIN64)
#define ARCHIVER_CALL __stdcall
#else
#define ARCHIVER_CALL
#endif

namespace archiver {

using WindowHandle = void*;   ///< HWND; null = no owner
using ArchiveHandle = void*;  ///< HARC; null = none
using Bool = std::int32_t;    ///< BOOL: 0 or 1

inline constexpr std::size_t kNameSize = 513;  ///< FNAME_MAX32 + NUL, in bytes

#pragma pack(push, 1)

/// What FindFirst and FindNext tell of one member.
struct IndividualInfo {
    std::uint32_t originalSize;    ///< bytes; 0xFFFFFFFF when larger than the field holds
    std::uint32_t compressedSize;  ///< bytes; likewise
    std::uint32_t crc;             ///< CRC-32 or CRC-16 of the format, 0 where it has none
    std::uint32_t flag;            ///< processing result, 0
    std::uint32_t osType;          ///< system that made the member
    std::uint16_t ratio;           ///< compressed * 1000 / original, at most 0x7FFF
    std::uint16_t date;            ///< DOS date: year - 1980 in bits 9-15, month 5-8, day 0-4
    std::uint16_t time;            ///< DOS time: hour in bits 11-15, minute 5-10, seconds / 2 0-4
    char fileName[kNameSize];      ///< stored name with its path, "/" or "\"
    char padding[3];
    char attribute[8];  ///< attribute letters, such as "a--w"
    char mode[8];       ///< method, such as "Deflate"
};
static_assert(sizeof(IndividualInfo) == 558);
static_assert(offsetof(IndividualInfo, attribute) == 542);

/// Progress of a running command, sent to the owner window or its callback.
struct ExtractingInfo {
    std::uint32_t fileSize;
    std::uint32_t writeSize;
    char sourceFileName[kNameSize];
    char padding1[3];
    char destFileName[kNameSize];
    char padding2[3];
};
static_assert(sizeof(ExtractingInfo) == 1040);

struct ExtractingInfoEx {
    ExtractingInfo info;
    std::uint32_t compressedSize;
    std::uint32_t crc;
    std::uint32_t osType;
    std::uint16_t ratio;
    std::uint16_t date;
    std::uint16_t time;
    char attribute[8];
    char mode[8];
};
static_assert(sizeof(ExtractingInfoEx) == 1074);

#pragma pack(pop)

/// FILETIME: 100 ns steps since 1601-01-01 UTC.
struct FileTime {
    std::uint32_t low;
    std::uint32_t high;
};

using ProgressCallback = Bool ARCHIVER_CALL(WindowHandle owner, std::uint32_t message, std::uint32_t state,
                                            ExtractingInfoEx* info);

/// Function types by the part of their name that follows the prefix.
namespace fn {
using Run = std::int32_t ARCHIVER_CALL(WindowHandle owner, const char* commandLine, char* output,
                                       std::uint32_t outputSize);
using GetWord = std::uint16_t ARCHIVER_CALL();            ///< GetVersion, GetSubVersion, GetCursorInterval
using GetBool = Bool ARCHIVER_CALL();                     ///< GetRunning, GetBackGroundMode, GetCursorMode
using SetBool = Bool ARCHIVER_CALL(Bool value);           ///< SetBackGroundMode, SetCursorMode, SetUnicodeMode
using SetWord = Bool ARCHIVER_CALL(std::uint16_t value);  ///< SetCursorInterval
using CheckArchive = Bool ARCHIVER_CALL(const char* fileName, std::int32_t mode);
using ConfigDialog = std::int32_t ARCHIVER_CALL(WindowHandle owner, char* options, std::int32_t mode);
using OpenArchive = ArchiveHandle ARCHIVER_CALL(WindowHandle owner, const char* fileName, std::uint32_t mode);
using FindFirst = std::int32_t ARCHIVER_CALL(ArchiveHandle archive, const char* wildName, IndividualInfo* info);
using FindNext = std::int32_t ARCHIVER_CALL(ArchiveHandle archive, IndividualInfo* info);
using CloseArchive = std::int32_t ARCHIVER_CALL(ArchiveHandle archive);
using GetFileCount = std::int32_t ARCHIVER_CALL(const char* fileName);
using QueryFunctionList = Bool ARCHIVER_CALL(std::int32_t function);
using GetText = std::int32_t ARCHIVER_CALL(ArchiveHandle archive, char* buffer, std::int32_t size);
using GetHandleDword = std::uint32_t ARCHIVER_CALL(ArchiveHandle archive);
using GetHandleWord = std::uint16_t ARCHIVER_CALL(ArchiveHandle archive);
using GetHandleInt = std::int32_t ARCHIVER_CALL(ArchiveHandle archive);
using GetSizeEx = Bool ARCHIVER_CALL(ArchiveHandle archive, std::int64_t* size);
using GetTimeEx = Bool ARCHIVER_CALL(ArchiveHandle archive, FileTime* time);
using SetOwnerWindow = Bool ARCHIVER_CALL(WindowHandle owner);
using ExtractMem = std::int32_t ARCHIVER_CALL(WindowHandle owner, const char* commandLine, std::uint8_t* buffer,
                                              std::uint32_t size, std::int32_t* time, std::uint16_t* attribute,
                                              std::uint32_t* written);
using CompressMem = std::int32_t ARCHIVER_CALL(WindowHandle owner, const char* commandLine, const std::uint8_t* buffer,
                                               std::uint32_t size, const std::int32_t* time,
                                               const std::uint16_t* attribute, std::uint32_t* written);
using SetCommandPassword = Bool ARCHIVER_CALL(const char* password);
using SetOwnerWindowEx = Bool ARCHIVER_CALL(WindowHandle owner, ProgressCallback* callback);
}  // namespace fn

/// Mode of CheckArchive: how much of the file is looked at, and added flags.
namespace check_mode {
inline constexpr std::int32_t kRapid = 0;    ///< the first headers only
inline constexpr std::int32_t kBasic = 1;    ///< all headers
inline constexpr std::int32_t kFullCrc = 2;  ///< members' data too
inline constexpr std::int32_t kDepthMask = 3;
inline constexpr std::int32_t kRecovery = 4;   ///< skip damaged headers
inline constexpr std::int32_t kSfx = 8;        ///< answer with the kind of self-extractor
inline constexpr std::int32_t kAll = 16;       ///< search to the end of the file
inline constexpr std::int32_t kCheckEnd = 32;  ///< ignore foreign data at the end
inline constexpr std::int32_t kNotAskPassword = 64;
}  // namespace check_mode

}  // namespace archiver
