// The exported functions of every prefix. RECORDING_SPEAKS_UTF8 decides whether SetUnicodeMode is one of them.

#include "recording/call_log.h"
#include "recording/library.h"

#if defined(_WIN32)
#define RECORDING_EXPORT extern "C" __declspec(dllexport)
#else
#define RECORDING_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace recording {

// The functions of one archive or entry that differ in nothing but their result.
#define RECORDING_ARCHIVE_VALUE(prefix, type, function)                           \
    RECORDING_EXPORT type ARCHIVER_CALL prefix##function(ArchiveHandle archive) { \
        return static_cast<type>(answerZero(#prefix, #function, archive));        \
    }
#define RECORDING_ENTRY_VALUE(prefix, type, function, field)                        \
    RECORDING_EXPORT type ARCHIVER_CALL prefix##function(ArchiveHandle archive) {   \
        return static_cast<type>(currentRecord(#prefix, #function, archive).field); \
    }
#define RECORDING_TEXT(prefix, function)                                                              \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix##function(ArchiveHandle archive, char* buffer, \
                                                                 std::int32_t size) {                 \
        return currentText(#prefix, #function, archive, buffer, size);                                \
    }
#define RECORDING_SIZE(prefix, function)                                                              \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##function(ArchiveHandle archive, std::int64_t* size) { \
        return currentSize(#prefix, #function, archive, size);                                        \
    }
#define RECORDING_UNKNOWN(prefix, function, Answer)                                        \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##function(ArchiveHandle archive, Answer*) { \
        return answerZero(#prefix, #function, archive);                                    \
    }
#define RECORDING_MODE(prefix, type, name)                       \
    RECORDING_EXPORT type ARCHIVER_CALL prefix##Get##name() {    \
        return static_cast<type>(getMode(#prefix, "Get" #name)); \
    }                                                            \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##Set##name(type value) { return setMode(#prefix, "Set" #name, value); }

#if defined(RECORDING_SPEAKS_UTF8)
#define RECORDING_UNICODE(prefix) \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##SetUnicodeMode(Bool on) { return setUnicodeMode(#prefix, on); }
#else
#define RECORDING_UNICODE(prefix)
#endif

#define RECORDING_LIBRARY(prefix)                                                                                   \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix(WindowHandle owner, const char* command, char* output,       \
                                                       std::uint32_t size) {                                        \
        return run(#prefix, owner, command, output, size);                                                          \
    }                                                                                                               \
    RECORDING_EXPORT std::uint32_t ARCHIVER_CALL prefix##GetVersion() { return getVersion(#prefix); }               \
    RECORDING_EXPORT std::uint16_t ARCHIVER_CALL prefix##GetSubVersion() {                                          \
        return static_cast<std::uint16_t>(getMode(#prefix, "GetSubVersion"));                                       \
    }                                                                                                               \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##GetRunning() { return getRunning(#prefix); }                        \
    RECORDING_MODE(prefix, Bool, BackGroundMode)                                                                    \
    RECORDING_MODE(prefix, Bool, CursorMode)                                                                        \
    RECORDING_MODE(prefix, std::uint16_t, CursorInterval)                                                           \
    RECORDING_UNICODE(prefix)                                                                                       \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##CheckArchive(const char* fileName, std::int32_t mode) {             \
        return checkArchive(#prefix, fileName, mode);                                                               \
    }                                                                                                               \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix##ConfigDialog(WindowHandle owner, char* options,             \
                                                                     std::int32_t mode) {                           \
        return configDialog(#prefix, owner, options, mode);                                                         \
    }                                                                                                               \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix##GetFileCount(const char* fileName) {                        \
        return getFileCount(#prefix, fileName);                                                                     \
    }                                                                                                               \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##QueryFunctionList(std::int32_t function) {                          \
        CallLog(#prefix, "QueryFunctionList") << function;                                                          \
        return 1;                                                                                                   \
    }                                                                                                               \
    RECORDING_EXPORT ArchiveHandle ARCHIVER_CALL prefix##OpenArchive(WindowHandle owner, const char* fileName,      \
                                                                     std::uint32_t mode) {                          \
        return openArchive(#prefix, owner, fileName, mode);                                                         \
    }                                                                                                               \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix##FindFirst(ArchiveHandle archive, const char* pattern,       \
                                                                  IndividualInfo* info) {                           \
        return findFirst(#prefix, archive, pattern, info);                                                          \
    }                                                                                                               \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix##FindNext(ArchiveHandle archive, IndividualInfo* info) {     \
        return findNext(#prefix, archive, info);                                                                    \
    }                                                                                                               \
    RECORDING_EXPORT std::int32_t ARCHIVER_CALL prefix##CloseArchive(ArchiveHandle archive) {                       \
        return closeArchive(#prefix, archive);                                                                      \
    }                                                                                                               \
    RECORDING_TEXT(prefix, GetArcFileName)                                                                          \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetArcFileSize)                                                  \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetArcOriginalSize)                                              \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetArcCompressedSize)                                            \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint16_t, GetArcRatio)                                                     \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint16_t, GetArcDate)                                                      \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint16_t, GetArcTime)                                                      \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetArcOSType)                                                    \
    RECORDING_ARCHIVE_VALUE(prefix, std::int32_t, IsSFXFile)                                                        \
    RECORDING_TEXT(prefix, GetFileName)                                                                             \
    RECORDING_TEXT(prefix, GetMethod)                                                                               \
    RECORDING_ENTRY_VALUE(prefix, std::uint32_t, GetOriginalSize, originalSize)                                     \
    RECORDING_ENTRY_VALUE(prefix, std::uint32_t, GetCompressedSize, compressedSize)                                 \
    RECORDING_ENTRY_VALUE(prefix, std::uint32_t, GetCRC, crc)                                                       \
    RECORDING_ENTRY_VALUE(prefix, std::uint16_t, GetRatio, ratio)                                                   \
    RECORDING_ENTRY_VALUE(prefix, std::uint16_t, GetDate, date)                                                     \
    RECORDING_ENTRY_VALUE(prefix, std::uint16_t, GetTime, time)                                                     \
    RECORDING_ENTRY_VALUE(prefix, std::uint32_t, GetOSType, osType)                                                 \
    RECORDING_ARCHIVE_VALUE(prefix, std::int32_t, GetAttribute)                                                     \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetWriteTime)                                                    \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetCreateTime)                                                   \
    RECORDING_ARCHIVE_VALUE(prefix, std::uint32_t, GetAccessTime)                                                   \
    RECORDING_UNKNOWN(prefix, GetWriteTimeEx, archiver::FileTime)                                                   \
    RECORDING_UNKNOWN(prefix, GetCreateTimeEx, archiver::FileTime)                                                  \
    RECORDING_UNKNOWN(prefix, GetAccessTimeEx, archiver::FileTime)                                                  \
    RECORDING_UNKNOWN(prefix, GetArcFileSizeEx, std::int64_t)                                                       \
    RECORDING_UNKNOWN(prefix, GetArcOriginalSizeEx, std::int64_t)                                                   \
    RECORDING_UNKNOWN(prefix, GetArcCompressedSizeEx, std::int64_t)                                                 \
    RECORDING_SIZE(prefix, GetOriginalSizeEx)                                                                       \
    RECORDING_SIZE(prefix, GetCompressedSizeEx)                                                                     \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##SetOwnerWindow(WindowHandle owner) {                                \
        return accept(#prefix, "SetOwnerWindow", owner);                                                            \
    }                                                                                                               \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##ClearOwnerWindow() {                                                \
        return accept(#prefix, "ClearOwnerWindow", nullptr);                                                        \
    }                                                                                                               \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##SetOwnerWindowEx(WindowHandle owner, archiver::ProgressCallback*) { \
        return accept(#prefix, "SetOwnerWindowEx", owner);                                                          \
    }                                                                                                               \
    RECORDING_EXPORT Bool ARCHIVER_CALL prefix##KillOwnerWindowEx(WindowHandle owner) {                             \
        return accept(#prefix, "KillOwnerWindowEx", owner);                                                         \
    }

RECORDING_LIBRARY(UnZip)
RECORDING_LIBRARY(Unarj)
RECORDING_LIBRARY(Unrar)
RECORDING_LIBRARY(Unlha)
RECORDING_LIBRARY(Cab)
RECORDING_LIBRARY(Tar)

RECORDING_EXPORT ArchiveHandle ARCHIVER_CALL ACEOpenArchive(archiver::ace_abi::OpenArchiveData* data) {
#if defined(RECORDING_SPEAKS_UTF8)
    return aceOpen(data, true);
#else
    return aceOpen(data, false);
#endif
}
RECORDING_EXPORT std::int32_t ARCHIVER_CALL ACECloseArchive(ArchiveHandle archive) {
    return closeArchive("ACE", archive);
}
RECORDING_EXPORT std::int32_t ARCHIVER_CALL ACEReadHeader(ArchiveHandle archive,
                                                          archiver::ace_abi::HeaderData* header) {
    return aceReadHeader(archive, header);
}
RECORDING_EXPORT std::int32_t ARCHIVER_CALL ACEProcessFile(ArchiveHandle archive, std::int32_t operation,
                                                           const char* destination) {
    return aceProcessFile(archive, operation, destination);
}
RECORDING_EXPORT std::int32_t ARCHIVER_CALL ACESetPassword(ArchiveHandle archive, const char* password) {
    return aceSetPassword(archive, password);
}
RECORDING_UNICODE(ACE)

RECORDING_EXPORT std::int32_t ARCHIVER_CALL ZpInit(const archiver::zip_abi::Callbacks* callbacks) {
    return zipInit(callbacks);
}
RECORDING_EXPORT std::int32_t ARCHIVER_CALL ZpSetOptions(const archiver::zip_abi::Options* options) {
    return zipSetOptions(options);
}
RECORDING_EXPORT std::int32_t ARCHIVER_CALL ZpArchive(archiver::zip_abi::Command command) {
    return zipArchive(command);
}
RECORDING_UNICODE(Zp)

}  // namespace recording
