#pragma once
#include <string>
#include <string_view>

#include "drivers/extraction.h"

namespace tovar {

/// The words of a kind's command lines for unpacking. They are joined as they stand: their blanks are part of them.
struct ExtractWords {
    std::wstring_view base = {};        ///< with folder names
    std::wstring_view keepFolder = {};  ///< what in the base keeps folder names
    std::wstring_view flat = {};        ///< what stands in its place for members without their folders
    std::wstring_view flatSuffix = {};  ///< or behind the base
    std::wstring_view listed = {};      ///< behind that, when the members are those of a list file
    std::wstring_view overwrite = {};   ///< files that are there are replaced
    std::wstring_view skip = {};        ///< files that are there stay
    std::wstring_view ask = {};         ///< the user is asked about each
    bool overwriteOption = true;        ///< the dialog offers to overwrite
};

/// What happens to files that are there already.
enum class ExistingFiles {
    AsUsual,  ///< what the kind's base words mean
    Overwrite,
    Skip,
    Ask,
};

struct ExtractOptions {
    bool keepFolders = true;
    ExistingFiles existing = ExistingFiles::AsUsual;
    bool listed = false;  ///< the members are those of a list file
};

/// The command for ExtractRequest::command.
[[nodiscard]] std::wstring extractCommand(const ExtractWords& words, const ExtractOptions& options);

/// Whether the kind can unpack members without their folders; the command is the same either way where it cannot.
[[nodiscard]] bool unpacksFlat(const ExtractWords& words);

/// The whole line for a library of the common convention: command, archive, folder with a separator at its end,
/// members. Paths with a blank or a comma are quoted.
[[nodiscard]] std::wstring extractLine(const ExtractRequest& request);

/// One member's path as a row of a list file, or alone: "/" between folders, quoted where it has a blank or a comma.
/// @param path  of a member, or of a folder with a separator at its end: all that lies in it
[[nodiscard]] std::wstring memberArgument(std::wstring_view path);

}  // namespace tovar
