#pragma once
#include <cstdint>

#include "archivers/convention/abi.h"
#include "archivers/convention/ace_abi.h"
#include "archivers/convention/zip_abi.h"

/// A recording archiver library: every function logs its call (call_log.h) and answers as scripted (script.h). What
/// each does, for any prefix.
namespace recording {

using archiver::ArchiveHandle;
using archiver::Bool;
using archiver::IndividualInfo;
using archiver::WindowHandle;

std::int32_t run(const char* prefix, WindowHandle owner, const char* command, char* output, std::uint32_t size);
std::uint32_t getVersion(const char* prefix);  ///< the whole register; the convention's WORD is its lower half
Bool getRunning(const char* prefix);
Bool checkArchive(const char* prefix, const char* fileName, std::int32_t mode);
std::int32_t configDialog(const char* prefix, WindowHandle owner, char* options, std::int32_t mode);
Bool setUnicodeMode(const char* prefix, Bool on);
std::int32_t getFileCount(const char* prefix, const char* fileName);

ArchiveHandle openArchive(const char* prefix, WindowHandle owner, const char* fileName, std::uint32_t mode);
std::int32_t findFirst(const char* prefix, ArchiveHandle archive, const char* pattern, IndividualInfo* info);
std::int32_t findNext(const char* prefix, ArchiveHandle archive, IndividualInfo* info);
std::int32_t closeArchive(const char* prefix, ArchiveHandle archive);

// Of "UnAce.dll": its archives are walked like the others.
/// @param speaksUtf8  only such a library may be given a callback for data
ArchiveHandle aceOpen(archiver::ace_abi::OpenArchiveData* data, bool speaksUtf8);
std::int32_t aceReadHeader(ArchiveHandle archive, archiver::ace_abi::HeaderData* header);
std::int32_t aceProcessFile(ArchiveHandle archive, std::int32_t operation, const char* destination);
std::int32_t aceSetPassword(ArchiveHandle archive, const char* password);

// Of "InfoZip32.dll".
std::int32_t zipInit(const archiver::zip_abi::Callbacks* callbacks);
std::int32_t zipSetOptions(const archiver::zip_abi::Options* options);
std::int32_t zipArchive(const archiver::zip_abi::Command& command);

// Of the entry that was found last; zeros and empty texts before the first.
IndividualInfo currentRecord(const char* prefix, const char* function, ArchiveHandle archive);
std::int32_t currentText(const char* prefix, const char* function, ArchiveHandle archive, char* buffer,
                         std::int32_t size);
Bool currentSize(const char* prefix, const char* function, ArchiveHandle archive, std::int64_t* size);

// Functions that keep one value, or none: they answer what was set last, or 0.
Bool getMode(const char* prefix, const char* function);
Bool setMode(const char* prefix, const char* function, Bool value);
std::int32_t answerZero(const char* prefix, const char* function, ArchiveHandle archive);
Bool accept(const char* prefix, const char* function, WindowHandle owner);

}  // namespace recording
