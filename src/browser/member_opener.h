#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "browser/browser_actions.h"
#include "browser/opened_copies.h"
#include "browser/run_extract.h"
#include "shell/path_operations.h"
#include "shell/program_launcher.h"
#include "shell/work_folder.h"

namespace tovar {

/// What opening a member stands on; all of it outlives its user.
struct MemberOpenerPorts {
    Extraction& extraction;
    WorkFolder& workFolder;
    PathOperations& paths;
    FileSystem& files;
    MessageBoxes& messages;
    ProgramLauncher& launcher;
    OpenedCopies& copies;
};

/// Opens a member of an archive: unpacks it into the work folder and has the desktop open it there.
class MemberOpener {
public:
    explicit MemberOpener(const MemberOpenerPorts& ports) : ports_(ports) {}

    /// @param entry  a file's index in the driver's table
    /// @return whether a program was started; a file that is not there after unpacking is not opened, without a word
    bool open(const ArchiveScene& scene, std::uint32_t entry);

private:
    bool unpack(const ArchiveScene& scene, const std::wstring& member);
    [[nodiscard]] std::size_t missingFolders(const std::wstring& path) const;

    MemberOpenerPorts ports_;
};

}  // namespace tovar
