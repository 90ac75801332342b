#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "create/zip_library.h"
#include "drivers/extraction.h"
#include "front/automation/change_words.h"
#include "front/kind_table.h"
#include "shell/arc_progress.h"
#include "shell/work_folder.h"

namespace tovar {

/// How a job ended.
enum class JobEnd {
    Done,
    NoFile,       ///< there is no such archive
    NoKind,       ///< no kind of archives is called so
    NoLibrary,    ///< missing or too old
    SwitchedOff,  ///< the user does not want the kind
    BadArchive,   ///< not one of its kind, or damaged
    Unsupported,  ///< nothing that the kind can do
    BadName,      ///< of a file or a member, and nobody can be told of it
    NoSource,     ///< a file to pack is not there
    Exists,       ///< what was to be created is there already
    NoMember,     ///< no member, or no file to pack, is called so
    NoPassword,   ///< one is needed, or is not the right one
    Failed,       ///< the library says why
};

struct JobResult {
    JobEnd end = JobEnd::Done;
    std::wstring problem = {};   ///< why, as a sentence that begins small and has no full stop; empty when done
    std::wstring about = {};     ///< whom the problem is about; empty: the archive
    ExtractResult library = {};  ///< what it said, where it was reached
    bool reached = false;        ///< the library was

    [[nodiscard]] bool done() const noexcept { return end == JobEnd::Done; }
};

/// Whether archives of a kind can be worked with.
enum class KindUse { Ready, Missing, SwitchedOff };

/// What jobs stand on; all of it outlives them.
struct JobPorts {
    DriverServices drivers;
    ZipLibraries& zipLibraries;
    ProgressDialogs& zipProgress;
    WorkFolder& workFolder;  ///< for list files
    SystemPaths& paths;
    std::function<KindUse(ArchiveKind bit)> use;  ///< asked for a reading or a creating bit
    ExtractProgressSink progress = {};            ///< of everything but ZIP archives that change; nothing = nobody
};

/// What extracting goes by.
struct ExtractJob {
    std::wstring folder = {};                ///< full path
    std::vector<std::wstring> members = {};  ///< none: all
    bool keepFolders = true;
    ExistingFiles existing = ExistingFiles::Skip;
    std::wstring_view password = {};  ///< empty: none
    WindowHandle owner = nullptr;     ///< of the libraries' questions; null: nothing is asked
};

/// What programs without windows of their own do with archives: each operation from its checks to the library's answer,
/// told in one result. One job at a time.
class ArchiveJobs {
public:
    explicit ArchiveJobs(JobPorts ports) : ports_(std::move(ports)) {}

    /// A good archive, with the driver of its kind.
    struct Opened {
        JobResult result;
        std::wstring file;  ///< full path
        const KindRow* row = nullptr;
        std::unique_ptr<ArchiveDriver> driver;  ///< null unless the result is good
    };
    [[nodiscard]] Opened open(const std::wstring& file);

    /// Lists into the driver; a listing that breaks off is there as far as it came, and the result is not good.
    [[nodiscard]] JobResult list(const Opened& archive);

    /// Reads and checks every member; encrypted ones only with a password.
    [[nodiscard]] JobResult test(const Opened& archive, std::wstring_view password = {});

    [[nodiscard]] JobResult extract(const Opened& archive, const ExtractJob& job);

    /// @return nullopt when there is no password
    using NewPassword = std::function<std::optional<std::wstring>()>;

    /// Makes or changes an archive.
    /// @param archive   full path
    /// @param base      full path of the folder that names of files count from
    /// @param password  called once everything else is well, if the change encrypts
    /// @param owner     as with extracting
    [[nodiscard]] JobResult change(const std::wstring& archive, const std::wstring& base, const ArchiveChange& change,
                                   const NewPassword& password, WindowHandle owner = nullptr);

private:
    struct Change {
        const ArchiveChange& wanted;
        const KindRow& row;
        const std::wstring& archive;
        const std::wstring& base;
        WindowHandle owner;
    };

    [[nodiscard]] JobResult unusable(ArchiveKind bit, std::wstring_view library) const;
    [[nodiscard]] JobResult changeZip(const Change& change, const std::vector<std::wstring>& names,
                                      const NewPassword& password);
    [[nodiscard]] JobResult changeByDriver(const Change& change, const std::vector<std::wstring>& names);

    JobPorts ports_;
};

}  // namespace tovar
