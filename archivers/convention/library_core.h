#pragma once
#include <atomic>
#include <cstdint>
#include <mutex>

#include "archivers/convention/abi.h"
#include "archivers/convention/handle_table.h"
#include "archivers/convention/library_description.h"
#include "archivers/convention/text_codec.h"

namespace archiver {

/// Everything that an archiver library exports, over its description. One object a library; the exported functions of
/// exports.h only pass their arguments on. No function throws, whatever it is given; several threads may call at once.
///
/// Unless told otherwise: a handle that is not open answers kHarcIsNotOpened where the result is a code, else the
/// function's own error value (all bits set, or 0 for a Bool). Texts are of the ANSI code page, or UTF-8 in Unicode
/// mode.
class LibraryCore {
public:
    explicit LibraryCore(const LibraryDescription& description, const TextCodec& ansi = ansiCodec()) noexcept
        : description_(description), ansi_(ansi) {}

    // The library.
    [[nodiscard]] std::uint16_t version() const noexcept { return description_.version; }
    [[nodiscard]] std::uint16_t subVersion() const noexcept { return description_.subVersion; }
    /// By the numbers of the convention: 1 for what is implemented.
    [[nodiscard]] Bool queryFunctionList(std::int32_t function) const noexcept;

    // Commands: one at a time; while one runs, another answers kAlreadyRunning and the setters below answer 0.
    std::int32_t run(WindowHandle owner, const char* commandLine, char* output, std::uint32_t outputSize) noexcept;
    /// Unpacks one member, the first that the line chooses, into memory.
    /// @param written  bytes of it; may be null, as `time` (seconds since 1970) and `attribute` may
    /// @return kEnoughMemory when the member is larger than the buffer, which then holds its start
    std::int32_t extractMem(WindowHandle owner, const char* commandLine, std::uint8_t* buffer, std::uint32_t size,
                            std::int32_t* time, std::uint16_t* attribute, std::uint32_t* written) noexcept;
    std::int32_t compressMem(std::uint32_t* written) const noexcept;
    /// Counts as a command that runs.
    /// @param owner  null = nothing is shown
    /// @return 1 when settings were changed, else 0; kAlreadyRunning
    std::int32_t configDialog(WindowHandle owner) noexcept;
    [[nodiscard]] Bool running() const noexcept { return running_ ? 1 : 0; }

    // Values that are kept for the commands.
    [[nodiscard]] Bool backGroundMode() const noexcept { return backGroundMode_ ? 1 : 0; }
    Bool setBackGroundMode(Bool on) noexcept;
    [[nodiscard]] Bool cursorMode() const noexcept { return cursorMode_ ? 1 : 0; }
    Bool setCursorMode(Bool on) noexcept;
    [[nodiscard]] std::uint16_t cursorInterval() const noexcept { return cursorInterval_; }
    Bool setCursorInterval(std::uint16_t milliseconds) noexcept;
    Bool setUnicodeMode(Bool on) noexcept;
    /// The password of the commands from now on, so that nobody is asked and it stands in no command line. An addition
    /// of ours to the convention.
    /// @param password  of the caller's texts; null or empty: none any more
    /// @return 0 while a command runs
    Bool setCommandPassword(const char* password) noexcept;
    Bool setOwnerWindow(WindowHandle owner) noexcept;
    Bool clearOwnerWindow() noexcept;
    Bool setOwnerWindowEx(WindowHandle owner, ProgressCallback* callback) noexcept;
    /// @return 0 when it is not this window's callback that is set
    Bool killOwnerWindowEx(WindowHandle owner) noexcept;

    // Files.
    Bool checkArchive(const char* fileName, std::int32_t mode) noexcept;
    std::int32_t fileCount(const char* fileName) noexcept;
    /// The number that ArchiveFacts::archiveType describes; 0 for a file of another kind, -1 for one that can not be
    /// read.
    std::int32_t archiveType(const char* fileName) noexcept;

    // The walk.
    ArchiveHandle openArchive(WindowHandle owner, const char* fileName, std::uint32_t mode) noexcept;
    std::int32_t findFirst(ArchiveHandle archive, const char* wildName, IndividualInfo* info) noexcept;
    std::int32_t findNext(ArchiveHandle archive, IndividualInfo* info) noexcept;
    std::int32_t closeArchive(ArchiveHandle archive) noexcept;

    // The archive. Totals are of the members found so far; before the first search there are none, which is an error.
    std::int32_t arcFileName(ArchiveHandle archive, char* buffer, std::int32_t size) noexcept;
    std::uint32_t arcFileSize(ArchiveHandle archive) noexcept;
    std::uint32_t arcOriginalSize(ArchiveHandle archive) noexcept;
    std::uint32_t arcCompressedSize(ArchiveHandle archive) noexcept;
    Bool arcFileSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept;
    Bool arcOriginalSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept;
    Bool arcCompressedSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept;
    std::uint16_t arcRatio(ArchiveHandle archive) noexcept;
    /// When the archive's file was changed last, local time.
    std::uint16_t arcDate(ArchiveHandle archive) noexcept;
    std::uint16_t arcTime(ArchiveHandle archive) noexcept;
    std::uint32_t arcOsType(ArchiveHandle archive) noexcept;
    /// @return 1 for a self-extractor, 0 for none, -1 for a bad handle
    std::int32_t isSfxFile(ArchiveHandle archive) noexcept;

    // The member that the last search gave; none is an error (kNotSearchMode where the result is a code).
    /// @return kLongFileName when the buffer is too small; the text is cut to it then
    std::int32_t fileName(ArchiveHandle archive, char* buffer, std::int32_t size) noexcept;
    std::int32_t method(ArchiveHandle archive, char* buffer, std::int32_t size) noexcept;
    std::uint32_t originalSize(ArchiveHandle archive) noexcept;
    std::uint32_t compressedSize(ArchiveHandle archive) noexcept;
    Bool originalSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept;
    Bool compressedSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept;
    std::uint16_t ratio(ArchiveHandle archive) noexcept;
    std::uint16_t date(ArchiveHandle archive) noexcept;
    std::uint16_t time(ArchiveHandle archive) noexcept;
    std::uint32_t crc(ArchiveHandle archive) noexcept;
    std::int32_t attribute(ArchiveHandle archive) noexcept;
    std::uint32_t osType(ArchiveHandle archive) noexcept;
    /// Seconds since 1970 in UTC, cut to what the result can tell; all bits set when the member has no such time.
    std::uint32_t writeTime(ArchiveHandle archive) noexcept;
    std::uint32_t createTime(ArchiveHandle archive) noexcept;
    std::uint32_t accessTime(ArchiveHandle archive) noexcept;
    /// @return 0 when the member has no such time or FILETIME can not hold it
    Bool writeTimeEx(ArchiveHandle archive, FileTime* time) noexcept;
    Bool createTimeEx(ArchiveHandle archive, FileTime* time) noexcept;
    Bool accessTimeEx(ArchiveHandle archive, FileTime* time) noexcept;

private:
    class Running;

    std::int32_t runCommand(WindowHandle owner, const char* commandLine, MemoryTarget* memory, CommandOutput& output);
    [[nodiscard]] const TextCodec& codec() const noexcept { return unicodeMode_ ? utf8Codec() : ansi_; }
    [[nodiscard]] std::filesystem::path fileOf(const char* fileName) const;
    ProgressOwner progressOwner() noexcept;
    Bool setOwner(ProgressOwner owner) noexcept;
    template <class Value>
    Bool keep(std::atomic<Value>& place, Value value) noexcept;
    std::int32_t told(const OpenedArchive& archive, std::int32_t code, IndividualInfo* info) const noexcept;

    template <class Result, class Query>
    Result onArchive(ArchiveHandle archive, Result error, Query query) noexcept;
    template <class Result, class Query>
    Result onSearched(ArchiveHandle archive, Result error, Query query) noexcept;
    template <class Result, class Query>
    Result onMember(ArchiveHandle archive, Result error, Query query) noexcept;
    template <class Write>
    std::int32_t textOfMember(ArchiveHandle archive, char* buffer, std::int32_t size, Write write) noexcept;

    const LibraryDescription& description_;
    const TextCodec& ansi_;
    HandleTable handles_;
    std::atomic<bool> running_ = false;
    std::atomic<bool> backGroundMode_ = true;
    std::atomic<bool> cursorMode_ = false;
    std::atomic<bool> unicodeMode_ = false;
    std::atomic<std::uint16_t> cursorInterval_ = 80;
    std::mutex ownerMutex_;
    ProgressOwner owner_;
    PasswordMemory passwords_;
    GivenPassword givenPassword_;
};

}  // namespace archiver
