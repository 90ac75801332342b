#pragma once
#include <cstdint>
#include <span>
#include <string_view>

#include "archivers/convention/zip_abi.h"
#include "drivers/library_texts.h"

namespace tovar {

/// What the zip library asks and tells during a run. Texts are in the library's 8-bit form.
class ZipEvents {
public:
    virtual ~ZipEvents() = default;
    /// A piece of the library's console text.
    virtual void message(std::string_view text) = 0;
    /// Writes the comment with a NUL at its end.
    /// @return false when there is none; the buffer then holds an empty text
    [[nodiscard]] virtual bool comment(std::span<char> buffer) = 0;
    /// Likewise the password.
    [[nodiscard]] virtual bool password(std::span<char> buffer, std::string_view prompt, std::string_view name) = 0;
    /// A file is done.
    /// @return whether to stop
    [[nodiscard]] virtual bool service(std::string_view name, std::uint32_t size) = 0;
};

/// "InfoZip32.dll" as the zip engine sees it. One run at a time.
class ZipLibrary {
public:
    virtual ~ZipLibrary() = default;

    /// The 8-bit form of its texts; somebody has to use it from the making of a record to the end of its run.
    [[nodiscard]] virtual LibraryTexts& texts() = 0;

    /// Registers the callbacks, sets the options and performs the command.
    /// @return 0 for success, or a result code. What the events throw stays inside, and counts as "no" or "stop".
    virtual std::int32_t run(const archiver::zip_abi::Options& options, const archiver::zip_abi::Command& command,
                             ZipEvents& events) = 0;
};

/// Where the zip library comes from.
class ZipLibraries {
public:
    virtual ~ZipLibraries() = default;
    /// @return null when there is none; looked for again at the next call then
    [[nodiscard]] virtual ZipLibrary* get() = 0;
};

}  // namespace tovar
