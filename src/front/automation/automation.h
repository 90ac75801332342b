#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "front/automation/archive_jobs.h"
#include "front/automation/given_password.h"
#include "front/automation/kept_messages.h"

namespace tovar {

/// Hears how an operation gets on.
class ProgressListener {
public:
    enum class Answer { GoOn, Cancel, Failed };
    virtual ~ProgressListener() = default;
    /// @param path   of the member or file that the operation is at
    /// @param done   bytes of the whole operation
    /// @param total  likewise; 0 where it is not known
    /// @return Failed ends the operation as Cancel does; failure() tells why
    virtual Answer onProgress(std::wstring_view path, double done, double total) = 0;
    [[nodiscard]] virtual std::wstring failure() const { return {}; }
};

/// How an operation of the automation ended, in what a script is told.
struct AutomationResult {
    enum class End { Done, Cancelled, Busy, BadArgument, ListenerFailed, Job };
    End end = End::Done;
    JobEnd job = JobEnd::Done;  ///< with End::Job
    std::wstring text = {};     ///< what happened, a whole sentence; empty when done

    [[nodiscard]] bool done() const noexcept { return end == End::Done; }
};

/// What automation stands on; all of it outlives it.
struct AutomationPorts {
    ArchiverLibraries& libraries;
    const RegionalSettings& regional;
    FileSystem& files;
    SystemPaths& paths;
    ZipLibraries& zipLibraries;
    WorkFolder& workFolder;
    std::function<KindUse(ArchiveKind bit)> use;
    bool& working;  ///< an operation is going on, of whichever object: libraries run one command at a time
};

/// A listed archive. The driver's texts and entries stay as they are.
using ListedArchive = std::shared_ptr<ArchiveDriver>;

/// Work on archives without any window: nothing is shown and nobody is asked. A library that would ask is told "no".
class Automation {
public:
    explicit Automation(AutomationPorts ports) : ports_(std::move(ports)) {}
    Automation(const Automation&) = delete;
    Automation& operator=(const Automation&) = delete;

    /// @param file  full path, or one that counts from the current folder, here and below
    AutomationResult list(std::wstring_view file, ListedArchive& archive);

    /// @param good  whether every member came out right. An archive that is damaged is an answer, and no failure.
    AutomationResult test(std::wstring_view file, std::wstring_view password, bool& good);

    struct Extraction {
        std::wstring_view file;
        std::wstring_view target;                ///< folder; made when it is not there
        std::vector<std::wstring> members = {};  ///< none: all
        bool overwrite = false;                  ///< files that are there are replaced; else they stay
        bool keepFolders = true;
        std::wstring_view password = {};
    };
    AutomationResult extract(const Extraction& extraction);

    /// @param base      folder that names count from; empty: that of the first name when it is a full path, else the
    ///                  current folder
    /// @param password  empty: the archive is not encrypted
    AutomationResult change(std::wstring_view file, std::wstring_view base, const ArchiveChange& change,
                            std::wstring_view password);

    /// Ends the operation that is going on, at its next step. Without one nothing happens.
    void cancel() noexcept { cancelled_ = ports_.working; }

    /// Why the last operation was not done; empty when it was.
    [[nodiscard]] const std::wstring& lastErrorText() const noexcept { return lastError_; }

    void setListener(std::shared_ptr<ProgressListener> listener) { listener_ = std::move(listener); }

private:
    class Steps;
    class ZipSteps;

    template <class Body>
    AutomationResult run(std::wstring_view file, Body body);
    [[nodiscard]] AutomationResult told(const JobResult& job, const std::wstring& file, const Steps& steps) const;
    [[nodiscard]] AutomationResult kept(AutomationResult result);
    [[nodiscard]] JobPorts jobPorts(Steps& steps, ProgressDialogs& dialogs);
    [[nodiscard]] std::wstring fullPath(std::wstring_view path) const;

    AutomationPorts ports_;
    std::shared_ptr<ProgressListener> listener_;
    KeptMessages messages_;
    GivenPassword password_;
    std::wstring lastError_;
    bool cancelled_ = false;
};

}  // namespace tovar
