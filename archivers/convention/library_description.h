#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/convention/abi.h"
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

/// What a running command is given.
struct CommandContext {
    WindowHandle window = nullptr;  ///< owner of dialogs; null = show none
    ProgressOwner progress;
    std::string_view commandLine;  ///< UTF-8, without the program's name
};

/// Runs one command line.
/// @param output  UTF-8 text for the caller
/// @return kOk or an error code
using CommandFunction = std::int32_t (*)(const CommandContext& context, std::string& output);

/// What makes one archiver library differ from another.
struct LibraryDescription {
    const char* prefix = "";    ///< of the exported names, such as "UnZip"
    std::uint16_t version = 0;  ///< times 100
    std::uint16_t subVersion = 0;
    OpenFunction open = nullptr;
    AttributeStyle attributeStyle = AttributeStyle::kFolderFirst;
    char separator = '/';               ///< "/": names keep the separators they are stored with; "\": "/" becomes "\"
    CommandFunction command = nullptr;  ///< null = the library has no command language: every command is refused
};

}  // namespace archiver
