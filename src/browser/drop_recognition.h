#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "shell/path_operations.h"

namespace tovar {

/// Where the placeholder of a drag was met.
struct DropPlace {
    std::wstring file;     ///< full path of its copy
    bool isFolder = true;  ///< false: in the recycle bin, which takes nothing out of an archive

    bool operator==(const DropPlace&) const = default;
};

/// Decides whether what the shell tells of is the drop: the first path or, failing that, the second has the
/// placeholder's file name, exists, does not lie in the folder for temporary files, and is not in a recycle bin.
/// @param placeholder  full path of the file that is dragged, in the folder for temporary files
/// @return nullopt for what has nothing to do with the drag
[[nodiscard]] std::optional<DropPlace> recogniseDrop(std::wstring_view placeholder, const std::wstring& first,
                                                     const std::wstring& second, const PathOperations& paths);

}  // namespace tovar
