#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/convention/abi.h"
#include "drivers/extraction.h"
#include "shell/text_codec.h"
#include "shell/window_handle.h"

namespace tovar {

/// A library of this version is treated as unusable.
inline constexpr std::uint16_t kUnusableVersion = 1;

/// One archiver library as its driver sees it: texts are wide, a missing function answers like a failing one, and no
/// call throws. The real one binds the exported functions of a loaded library; tests use a recording fake.
class ArchiverLibrary {
public:
    virtual ~ArchiverLibrary() = default;

    /// XxxGetVersion: version times 100; kUnusableVersion when the function is missing.
    [[nodiscard]] virtual std::uint16_t version() = 0;
    [[nodiscard]] virtual bool running() = 0;
    [[nodiscard]] virtual bool backGroundMode() = 0;
    virtual bool setBackGroundMode(bool on) = 0;
    [[nodiscard]] virtual bool cursorMode() = 0;
    virtual bool setCursorMode(bool on) = 0;

    /// Runs one command line.
    /// @param bufferSize  length of the output buffer, in characters of the library's 8-bit text
    /// @param output      the buffer's whole content on return, NULs included, `bufferSize` characters or fewer when
    ///                    several bytes made one character
    /// @return the library's return code; 0x801C, "Illegal command", for a command line that the library's code page
    ///         cannot hold
    virtual std::int32_t run(WindowHandle owner, std::wstring_view commandLine, std::uint32_t bufferSize,
                             std::wstring& output) = 0;

    /// Who is told how commands get on; nothing = nobody. A library that cannot tell never calls it.
    virtual void setProgress(ExtractProgressSink sink) = 0;

    /// The password of the commands from now on, so that nobody has to be asked; empty: none.
    /// @return whether the library can be given one
    [[nodiscard]] virtual bool setPassword(std::wstring_view) { return false; }

    /// The 8-bit form that texts have during a command, and so those of the files that a command line names.
    [[nodiscard]] virtual const TextCodec& commandCodec() = 0;

    /// XxxCheckArchive: positive for a good archive.
    [[nodiscard]] virtual std::int32_t checkArchive(std::wstring_view fileName, std::int32_t mode) = 0;
    virtual std::int32_t configDialog(WindowHandle owner, std::int32_t mode) = 0;

    /// @return null on failure
    [[nodiscard]] virtual archiver::ArchiveHandle openArchive(WindowHandle owner, std::wstring_view fileName,
                                                              std::uint32_t mode) = 0;
    /// @param info  cleared before the call; texts that the library left without a NUL end with their field
    /// @return 0 for an entry; any other value ends the listing
    virtual std::int32_t findFirst(archiver::ArchiveHandle archive, std::wstring_view wildName,
                                   archiver::IndividualInfo& info) = 0;
    virtual std::int32_t findNext(archiver::ArchiveHandle archive, archiver::IndividualInfo& info) = 0;
    virtual std::int32_t closeArchive(archiver::ArchiveHandle archive) = 0;

    /// Sizes of the current entry in 64 bits; nullopt when the library exports no such query.
    [[nodiscard]] virtual std::optional<std::uint64_t> originalSize(archiver::ArchiveHandle archive) = 0;
    [[nodiscard]] virtual std::optional<std::uint64_t> compressedSize(archiver::ArchiveHandle archive) = 0;

    /// Appends the wide form of a text that the library gave in a record of an archive that is open.
    virtual void decodeTo(std::string_view bytes, std::wstring& text) const = 0;
};

}  // namespace tovar
