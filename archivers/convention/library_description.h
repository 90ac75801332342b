#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "archivers/convention/abi.h"
#include "archivers/convention/command_output.h"
#include "archivers/convention/password_memory.h"
#include "archivers/convention/text_codec.h"
#include "archivers/formats/archive_reader.h"

namespace archiver {

/// How a library writes the attribute text of its entry record.
enum class AttributeStyle : std::uint8_t {
    kFolderFirst,  ///< "d" folder or "a" archive, "s" system, "h" hidden, "w" writable; "-" for what is not: "a--w"
    kLetters,      ///< "A", "S", "H", "R", each in its place; "-" for what is not
};

/// Who wants to hear of a command's progress.
struct ProgressOwner {
    WindowHandle window = nullptr;
    ProgressCallback* callback = nullptr;
};

struct LibraryDescription;

/// A caller's memory that takes one member's data instead of a file.
struct MemoryTarget {
    std::span<char> buffer;
    std::size_t written = 0;
    bool whole = true;  ///< false: the member is larger than the buffer, which holds its start
    std::optional<Moment> changed = std::nullopt;  ///< of the member
    std::uint8_t attributes = 0;                   ///< of the member, attribute bits
};

/// What a running command is given.
struct CommandContext {
    WindowHandle window = nullptr;  ///< owner of dialogs; null = show none
    ProgressOwner progress;
    std::string_view commandLine;  ///< UTF-8, without the program's name
    bool pumpMessages = true;      ///< background mode: other windows of the thread stay alive
    const TextCodec& codec;        ///< of the caller's texts and files
    const LibraryDescription& library;
    PasswordMemory& passwords;
    std::string_view password = {};  ///< UTF-8, that the caller gave beforehand; empty for none
    MemoryTarget* memory = nullptr;  ///< not null: the first chosen member goes there, whatever the line commands
};

/// Runs one command line.
/// @return kOk or an error code
using CommandFunction = std::int32_t (*)(const CommandContext& context, CommandOutput& output);

/// What makes one archiver library differ from another.
struct LibraryDescription {
    const char* prefix = "";  ///< of the exported names, such as "UnZip"
    const char* title = "";   ///< its file's name without extension, such as "UnZip32"; titles windows, names settings
    std::uint16_t version = 0;  ///< times 100
    std::uint16_t subVersion = 0;
    OpenFunction open = nullptr;
    AttributeStyle attributeStyle = AttributeStyle::kFolderFirst;
    char separator = '/';               ///< "/": names keep the separators they are stored with; "\": "/" becomes "\"
    CommandFunction command = nullptr;  ///< null = the library has no command language: every command is refused
    /// Lets the user change the library's settings; null = there are none.
    /// @return whether they changed
    bool (*configure)(WindowHandle owner, const char* title) noexcept = nullptr;
};

}  // namespace archiver
