#pragma once
#include <optional>
#include <string>
#include <vector>

#include "shell/system_error.h"

namespace tovar {

/// A file or folder inside a folder.
struct FolderFile {
    std::wstring name;
    bool folder = false;
    bool hidden = false;  ///< shown although it is a hidden one
};

/// What is inside one folder, as a list of it needs that. Nothing here shows a message, and nothing throws but for want
/// of memory.
class FolderContents {
public:
    virtual ~FolderContents() = default;

    using Files = std::vector<FolderFile>;

    /// Looks what is inside a folder, and from before that on whether something comes, goes or changes its name in it.
    /// No other folder is watched then, and no earlier question is answered any more.
    /// @param path  empty: no folder at all, and nothing inside
    /// @return in the order in which it is to be shown, the folders before the files; nothing for a folder that cannot
    ///         be read. nullopt where looking takes long: takeLate answers it some time.
    virtual std::optional<Files> look(const std::wstring& path) = 0;
    /// @return the answer that was late, once
    [[nodiscard]] virtual std::optional<Files> takeLate() = 0;
    /// @return whether something has changed since it was last asked
    [[nodiscard]] virtual bool takeChange() = 0;
};

}  // namespace tovar
