#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "shell/system_error.h"

namespace tovar {

/// A place of the computer that is not found by looking into a folder: the desktop, the documents, a drive.
struct FolderPlace {
    std::wstring name;  ///< as the desktop shows it
    std::wstring path;  ///< empty for a place without a folder of the file system, such as the computer
    int icon = 0;       ///< its place in the system's image lists
};

/// A folder inside another one.
struct SubFolder {
    std::wstring name;
    bool hidden = false;        ///< shown although it is a hidden one
    bool customised = false;    ///< the desktop may show another name or icon for it
    std::uint64_t created = 0;  ///< when it was made, in any unit; 0 = unknown. A folder keeps it when it is renamed.
};

/// What a look into a folder has found.
struct FolderLook {
    SystemErrorCode error = 0;         ///< why its folders are not known; 0 when they are
    bool exists = true;                ///< whether there is such a folder at all
    std::vector<SubFolder> folders{};  ///< in the order in which they are to be shown
};

/// Number by which a folder that is watched is told from others; the caller's choice.
using FolderWatchKey = std::uint32_t;

/// The folders of a computer, as a tree of them needs them. Nothing here shows a message, and nothing throws but for
/// want of memory. Paths have no separator at their end but for drive roots.
class FolderSource {
public:
    virtual ~FolderSource() = default;

    [[nodiscard]] virtual FolderPlace desktop() = 0;
    [[nodiscard]] virtual FolderPlace documents() = 0;
    [[nodiscard]] virtual FolderPlace computer() = 0;
    /// @return the drives in the order of their letters; those that are not ready too
    [[nodiscard]] virtual std::vector<FolderPlace> drives() = 0;

    /// @return whether looking into a folder may take long, as where it lies on another computer
    [[nodiscard]] virtual bool isSlow(const std::wstring& path) = 0;

    /// Looks which folders are inside a folder, and watches it from before that on as watchFolder does.
    /// @return nullopt where that takes long: takeLate answers it some time, unless `unwatch` comes before
    virtual std::optional<FolderLook> lookInto(FolderWatchKey key, const std::wstring& path) = 0;
    struct LateLook {
        FolderWatchKey key = 0;
        FolderLook look;
    };
    /// @return what has come in since it was last asked
    [[nodiscard]] virtual std::vector<LateLook> takeLate() = 0;

    /// @return whether there are folders to be shown inside a folder; true also where asking would take long
    [[nodiscard]] virtual bool mayHaveFolders(const std::wstring& path) = 0;

    /// @return whether there is such a folder; true also where asking would take long
    [[nodiscard]] virtual bool isFolder(const std::wstring& path) = 0;

    /// Looks from now on whether folders inside a folder come, go or change their names. Where the system cannot tell,
    /// nothing is ever reported.
    virtual void watchFolder(FolderWatchKey key, const std::wstring& path) = 0;
    /// The same for the drives.
    virtual void watchDrives(FolderWatchKey key) = 0;
    /// Forgets also what was asked about it.
    virtual void unwatch(FolderWatchKey key) = 0;
    /// @return the keys of all that has changed since it was last asked
    [[nodiscard]] virtual std::vector<FolderWatchKey> takeChanges() = 0;
};

}  // namespace tovar
