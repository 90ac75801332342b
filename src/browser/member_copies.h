#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "browser/browser_actions.h"
#include "browser/own_items.h"
#include "browser/run_extract.h"
#include "shell/path_operations.h"
#include "shell/work_folder.h"

namespace tovar {

/// Members of an archive, unpacked into a folder of their own in the work folder. The files go with the object.
class MemberCopies {
public:
    /// What unpacking works with; all of it outlives the copies.
    struct Ports {
        Extraction& extraction;
        WorkFolder& workFolder;
        PathOperations& paths;
        FileSystem& files;
        MessageBoxes& messages;
        OwnItems& items;
    };

    /// Unpacks members with their folders. A failure is told as that of any extraction; what was good is there.
    /// @return null when nothing could be unpacked, or the window of the command has gone meanwhile
    [[nodiscard]] static std::shared_ptr<const MemberCopies> unpack(const Ports& ports, const ArchiveScene& scene,
                                                                    const std::vector<ArchiveMember>& members);

    MemberCopies(const Ports& ports, std::shared_ptr<const OwnFolder> folder)
        : ports_(ports), folder_(std::move(folder)) {}

    /// @return where they lie, with a separator at its end
    [[nodiscard]] const std::wstring& folder() const noexcept { return folder_->path(); }

    /// @param member  path inside the archive, "\" between folders
    /// @return full path of its copy; nullopt when there is none
    [[nodiscard]] std::optional<std::wstring> fileOf(std::wstring_view member) const;
    /// The same for a folder.
    /// @param key  "\" at both ends
    /// @return without a separator at the end
    [[nodiscard]] std::optional<std::wstring> folderOf(std::wstring_view key) const;

private:
    Ports ports_;
    std::shared_ptr<const OwnFolder> folder_;
};

/// The title of messages about extractions.
inline constexpr std::wstring_view kExtractionTitle = L"Extraction Message";

}  // namespace tovar
