// The exported functions of an archiver library, written once. A library's one source says
//
//     #define ARCHIVER_PREFIX UnZip
//     #include "archivers/convention/exports.h"
//
// and defines archiver::library(). No include guard: the file is code, for one inclusion in one source. What a module
// exports in the end is told by the list in ArchiverLibrary.cmake.

#include "archivers/convention/abi.h"
#include "archivers/convention/library_core.h"
#include "archivers/convention/visible.h"

#ifndef ARCHIVER_PREFIX
#error "ARCHIVER_PREFIX names the library's functions"
#endif

#define ARCHIVER_JOIN_(prefix, name) prefix##name
#define ARCHIVER_JOIN(prefix, name) ARCHIVER_JOIN_(prefix, name)
#define ARCHIVER_NAME(name) ARCHIVER_JOIN(ARCHIVER_PREFIX, name)

/// Declares one function by its type, so that its definition below cannot differ from what callers bind.
#define ARCHIVER_DECLARE(type, name) ARCHIVER_VISIBLE archiver::fn::type ARCHIVER_NAME(name)

namespace archiver {
/// The library of this module. Lives from the module's load to its unload; never throws.
LibraryCore& library() noexcept;
}  // namespace archiver

extern "C" {

ARCHIVER_DECLARE(Run, );
ARCHIVER_DECLARE(GetWord, GetVersion);
ARCHIVER_DECLARE(GetWord, GetSubVersion);
ARCHIVER_DECLARE(GetBool, GetRunning);
ARCHIVER_DECLARE(GetBool, GetBackGroundMode);
ARCHIVER_DECLARE(SetBool, SetBackGroundMode);
ARCHIVER_DECLARE(GetBool, GetCursorMode);
ARCHIVER_DECLARE(SetBool, SetCursorMode);
ARCHIVER_DECLARE(GetWord, GetCursorInterval);
ARCHIVER_DECLARE(SetWord, SetCursorInterval);
ARCHIVER_DECLARE(SetBool, SetUnicodeMode);
ARCHIVER_DECLARE(SetCommandPassword, SetCommandPassword);
ARCHIVER_DECLARE(SetOwnerWindow, SetOwnerWindow);
ARCHIVER_DECLARE(GetBool, ClearOwnerWindow);
ARCHIVER_DECLARE(SetOwnerWindowEx, SetOwnerWindowEx);
ARCHIVER_DECLARE(SetOwnerWindow, KillOwnerWindowEx);
ARCHIVER_DECLARE(QueryFunctionList, QueryFunctionList);
ARCHIVER_DECLARE(ConfigDialog, ConfigDialog);
ARCHIVER_DECLARE(CheckArchive, CheckArchive);
ARCHIVER_DECLARE(GetFileCount, GetFileCount);
ARCHIVER_DECLARE(ExtractMem, ExtractMem);
ARCHIVER_DECLARE(CompressMem, CompressMem);
ARCHIVER_DECLARE(OpenArchive, OpenArchive);
ARCHIVER_DECLARE(FindFirst, FindFirst);
ARCHIVER_DECLARE(FindNext, FindNext);
ARCHIVER_DECLARE(CloseArchive, CloseArchive);
ARCHIVER_DECLARE(GetText, GetArcFileName);
ARCHIVER_DECLARE(GetHandleDword, GetArcFileSize);
ARCHIVER_DECLARE(GetHandleDword, GetArcOriginalSize);
ARCHIVER_DECLARE(GetHandleDword, GetArcCompressedSize);
ARCHIVER_DECLARE(GetSizeEx, GetArcFileSizeEx);
ARCHIVER_DECLARE(GetSizeEx, GetArcOriginalSizeEx);
ARCHIVER_DECLARE(GetSizeEx, GetArcCompressedSizeEx);
ARCHIVER_DECLARE(GetHandleWord, GetArcRatio);
ARCHIVER_DECLARE(GetHandleWord, GetArcDate);
ARCHIVER_DECLARE(GetHandleWord, GetArcTime);
ARCHIVER_DECLARE(GetHandleDword, GetArcOSType);
ARCHIVER_DECLARE(GetHandleInt, IsSFXFile);
ARCHIVER_DECLARE(GetText, GetFileName);
ARCHIVER_DECLARE(GetText, GetMethod);
ARCHIVER_DECLARE(GetHandleDword, GetOriginalSize);
ARCHIVER_DECLARE(GetHandleDword, GetCompressedSize);
ARCHIVER_DECLARE(GetSizeEx, GetOriginalSizeEx);
ARCHIVER_DECLARE(GetSizeEx, GetCompressedSizeEx);
ARCHIVER_DECLARE(GetHandleWord, GetRatio);
ARCHIVER_DECLARE(GetHandleWord, GetDate);
ARCHIVER_DECLARE(GetHandleWord, GetTime);
ARCHIVER_DECLARE(GetHandleDword, GetCRC);
ARCHIVER_DECLARE(GetHandleInt, GetAttribute);
ARCHIVER_DECLARE(GetHandleDword, GetOSType);
ARCHIVER_DECLARE(GetHandleDword, GetWriteTime);
ARCHIVER_DECLARE(GetHandleDword, GetCreateTime);
ARCHIVER_DECLARE(GetHandleDword, GetAccessTime);
ARCHIVER_DECLARE(GetTimeEx, GetWriteTimeEx);
ARCHIVER_DECLARE(GetTimeEx, GetCreateTimeEx);
ARCHIVER_DECLARE(GetTimeEx, GetAccessTimeEx);

#define ARCHIVER_DEFINE(result, name) result ARCHIVER_CALL ARCHIVER_NAME(name)

ARCHIVER_DEFINE(std::int32_t, )
(archiver::WindowHandle owner, const char* commandLine, char* output, std::uint32_t outputSize) {
    return archiver::library().run(owner, commandLine, output, outputSize);
}
ARCHIVER_DEFINE(std::uint16_t, GetVersion)() { return archiver::library().version(); }
ARCHIVER_DEFINE(std::uint16_t, GetSubVersion)() { return archiver::library().subVersion(); }
ARCHIVER_DEFINE(archiver::Bool, GetRunning)() { return archiver::library().running(); }
ARCHIVER_DEFINE(archiver::Bool, GetBackGroundMode)() { return archiver::library().backGroundMode(); }
ARCHIVER_DEFINE(archiver::Bool, SetBackGroundMode)(archiver::Bool on) {
    return archiver::library().setBackGroundMode(on);
}
ARCHIVER_DEFINE(archiver::Bool, GetCursorMode)() { return archiver::library().cursorMode(); }
ARCHIVER_DEFINE(archiver::Bool, SetCursorMode)(archiver::Bool on) { return archiver::library().setCursorMode(on); }
ARCHIVER_DEFINE(std::uint16_t, GetCursorInterval)() { return archiver::library().cursorInterval(); }
ARCHIVER_DEFINE(archiver::Bool, SetCursorInterval)(std::uint16_t milliseconds) {
    return archiver::library().setCursorInterval(milliseconds);
}
ARCHIVER_DEFINE(archiver::Bool, SetUnicodeMode)(archiver::Bool on) { return archiver::library().setUnicodeMode(on); }
ARCHIVER_DEFINE(archiver::Bool, SetCommandPassword)(const char* password) {
    return archiver::library().setCommandPassword(password);
}
ARCHIVER_DEFINE(archiver::Bool, SetOwnerWindow)(archiver::WindowHandle owner) {
    return archiver::library().setOwnerWindow(owner);
}
ARCHIVER_DEFINE(archiver::Bool, ClearOwnerWindow)() { return archiver::library().clearOwnerWindow(); }
ARCHIVER_DEFINE(archiver::Bool, SetOwnerWindowEx)(archiver::WindowHandle owner, archiver::ProgressCallback* callback) {
    return archiver::library().setOwnerWindowEx(owner, callback);
}
ARCHIVER_DEFINE(archiver::Bool, KillOwnerWindowEx)(archiver::WindowHandle owner) {
    return archiver::library().killOwnerWindowEx(owner);
}
ARCHIVER_DEFINE(archiver::Bool, QueryFunctionList)(std::int32_t function) {
    return archiver::library().queryFunctionList(function);
}
ARCHIVER_DEFINE(std::int32_t, ConfigDialog)(archiver::WindowHandle owner, char*, std::int32_t) {
    return archiver::library().configDialog(owner);
}
ARCHIVER_DEFINE(archiver::Bool, CheckArchive)(const char* fileName, std::int32_t mode) {
    return archiver::library().checkArchive(fileName, mode);
}
ARCHIVER_DEFINE(std::int32_t, GetFileCount)(const char* fileName) { return archiver::library().fileCount(fileName); }
ARCHIVER_DEFINE(std::int32_t, ExtractMem)
(archiver::WindowHandle owner, const char* commandLine, std::uint8_t* buffer, std::uint32_t size, std::int32_t* time,
 std::uint16_t* attribute, std::uint32_t* written) {
    return archiver::library().extractMem(owner, commandLine, buffer, size, time, attribute, written);
}
ARCHIVER_DEFINE(std::int32_t, CompressMem)
(archiver::WindowHandle, const char*, const std::uint8_t*, std::uint32_t, const std::int32_t*, const std::uint16_t*,
 std::uint32_t* written) {
    return archiver::library().compressMem(written);
}
ARCHIVER_DEFINE(archiver::ArchiveHandle, OpenArchive)
(archiver::WindowHandle owner, const char* fileName, std::uint32_t mode) {
    return archiver::library().openArchive(owner, fileName, mode);
}
ARCHIVER_DEFINE(std::int32_t, FindFirst)
(archiver::ArchiveHandle archive, const char* wildName, archiver::IndividualInfo* info) {
    return archiver::library().findFirst(archive, wildName, info);
}
ARCHIVER_DEFINE(std::int32_t, FindNext)(archiver::ArchiveHandle archive, archiver::IndividualInfo* info) {
    return archiver::library().findNext(archive, info);
}
ARCHIVER_DEFINE(std::int32_t, CloseArchive)(archiver::ArchiveHandle archive) {
    return archiver::library().closeArchive(archive);
}

// One query by its handle, as the core's method answers it: by its result, or into the caller's text, size or time.
#define ARCHIVER_QUERY(result, name, method) \
    ARCHIVER_DEFINE(result, name)(archiver::ArchiveHandle archive) { return archiver::library().method(archive); }
#define ARCHIVER_QUERY_TEXT(name, method)                                                                   \
    ARCHIVER_DEFINE(std::int32_t, name)(archiver::ArchiveHandle archive, char* buffer, std::int32_t size) { \
        return archiver::library().method(archive, buffer, size);                                           \
    }
#define ARCHIVER_QUERY_SIZE(name, method)                                                         \
    ARCHIVER_DEFINE(archiver::Bool, name)(archiver::ArchiveHandle archive, std::int64_t * size) { \
        return archiver::library().method(archive, size);                                         \
    }
#define ARCHIVER_QUERY_TIME(name, method)                                                               \
    ARCHIVER_DEFINE(archiver::Bool, name)(archiver::ArchiveHandle archive, archiver::FileTime * time) { \
        return archiver::library().method(archive, time);                                               \
    }

ARCHIVER_QUERY_TEXT(GetArcFileName, arcFileName)
ARCHIVER_QUERY(std::uint32_t, GetArcFileSize, arcFileSize)
ARCHIVER_QUERY(std::uint32_t, GetArcOriginalSize, arcOriginalSize)
ARCHIVER_QUERY(std::uint32_t, GetArcCompressedSize, arcCompressedSize)
ARCHIVER_QUERY_SIZE(GetArcFileSizeEx, arcFileSizeEx)
ARCHIVER_QUERY_SIZE(GetArcOriginalSizeEx, arcOriginalSizeEx)
ARCHIVER_QUERY_SIZE(GetArcCompressedSizeEx, arcCompressedSizeEx)
ARCHIVER_QUERY(std::uint16_t, GetArcRatio, arcRatio)
ARCHIVER_QUERY(std::uint16_t, GetArcDate, arcDate)
ARCHIVER_QUERY(std::uint16_t, GetArcTime, arcTime)
ARCHIVER_QUERY(std::uint32_t, GetArcOSType, arcOsType)
ARCHIVER_QUERY(std::int32_t, IsSFXFile, isSfxFile)
ARCHIVER_QUERY_TEXT(GetFileName, fileName)
ARCHIVER_QUERY_TEXT(GetMethod, method)
ARCHIVER_QUERY(std::uint32_t, GetOriginalSize, originalSize)
ARCHIVER_QUERY(std::uint32_t, GetCompressedSize, compressedSize)
ARCHIVER_QUERY_SIZE(GetOriginalSizeEx, originalSizeEx)
ARCHIVER_QUERY_SIZE(GetCompressedSizeEx, compressedSizeEx)
ARCHIVER_QUERY(std::uint16_t, GetRatio, ratio)
ARCHIVER_QUERY(std::uint16_t, GetDate, date)
ARCHIVER_QUERY(std::uint16_t, GetTime, time)
ARCHIVER_QUERY(std::uint32_t, GetCRC, crc)
ARCHIVER_QUERY(std::int32_t, GetAttribute, attribute)
ARCHIVER_QUERY(std::uint32_t, GetOSType, osType)
ARCHIVER_QUERY(std::uint32_t, GetWriteTime, writeTime)
ARCHIVER_QUERY(std::uint32_t, GetCreateTime, createTime)
ARCHIVER_QUERY(std::uint32_t, GetAccessTime, accessTime)
ARCHIVER_QUERY_TIME(GetWriteTimeEx, writeTimeEx)
ARCHIVER_QUERY_TIME(GetCreateTimeEx, createTimeEx)
ARCHIVER_QUERY_TIME(GetAccessTimeEx, accessTimeEx)

}  // extern "C"
