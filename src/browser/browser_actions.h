#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "browser/browser_commands.h"
#include "browser/folder_model.h"
#include "drivers/archive_driver.h"
#include "shell/window_handle.h"

namespace tovar {

/// What a row of the contents list stands for: a folder, or an entry of the driver's table.
struct ArchiveMember {
    std::optional<Folder> folder;
    std::uint32_t entry = 0;  ///< of a file
    bool operator==(const ArchiveMember&) const = default;
};

/// The archive that a command is for. What it refers to stays as it is until the command returns.
struct ArchiveScene {
    WindowHandle owner = nullptr;  ///< for dialogs and messages; may go while the command runs
    ArchiveDriver& driver;
    const std::wstring& archiveFile;  ///< full path
    const FolderModel& folders;
    Folder folder = FolderModel::kRoot;  ///< the one shown
};

class MemberExports;

/// What the browser's commands do to archives and their members. A command returns when it is done; pending messages
/// may run meanwhile, and the window then turns other commands away. Exceptions end the command and nothing else.
class BrowserActions {
public:
    virtual ~BrowserActions() = default;

    /// @param command  mnuEditExtract, kOpen (of a file), mnuEditAdd, kAddFolder, kPaste or mnuEditDelete
    /// @return false for a command that this object does not have: the window shows it disabled
    [[nodiscard]] virtual bool offers(BrowserCommand command) const = 0;

    /// Shows the dialog that extracts members.
    /// @param members  the selected rows from top to bottom; empty when none is selected
    virtual void extract(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) = 0;

    /// Opens a file as the desktop does.
    /// @param entry  index in the driver's table
    virtual void openMember(const ArchiveScene& scene, std::uint32_t entry) = 0;

    /// Adds files to the folder shown.
    /// @return whether the archive was changed, and is to be listed again
    virtual bool addFiles(const ArchiveScene& scene) = 0;

    /// The same for a folder.
    virtual bool addFolder(const ArchiveScene& scene) = 0;

    /// Adds files and folders that were dropped to the folder shown.
    /// @param paths  full ones
    /// @return whether the archive was changed, and is to be listed again
    virtual bool addPaths(const ArchiveScene& scene, const std::vector<std::wstring>& paths) = 0;

    /// Adds the files and folders of the clipboard to the folder shown.
    /// @return whether the archive was changed, and is to be listed again
    virtual bool paste(const ArchiveScene& scene) = 0;

    /// @return whether there are files on the clipboard now
    [[nodiscard]] virtual bool canPaste() const = 0;

    /// @param members  the selected rows from top to bottom, never empty
    /// @return whether the archive was changed, and is to be listed again
    virtual bool deleteMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) = 0;

    /// @return what takes members out of the window, by the mouse and through the clipboard; null: nothing does
    [[nodiscard]] virtual MemberExports* exports() noexcept { return nullptr; }

    /// The window is going, or has gone: the command that runs, if any, closes its dialogs and ends as soon as it can.
    virtual void cancel() noexcept {}
};

}  // namespace tovar
