#pragma once
#include <functional>
#include <string>
#include <vector>

#include "browser/browser_actions.h"
#include "create/zip_engine.h"
#include "shell/confirmation.h"
#include "shell/file_operations.h"
#include "shell/work_folder.h"

namespace tovar {

/// What the user picks to add: the system's dialog for files has no folders.
enum class Pick { Files, InFolder };

/// Asks for files and folders that are to be added.
class FileQuestions {
public:
    virtual ~FileQuestions() = default;
    /// @param folder  where to begin
    /// @return full paths: files, or for Pick::InFolder a folder or several files and folders in one; empty when the
    /// user
    ///         chooses none
    [[nodiscard]] virtual std::vector<std::wstring> ask(WindowHandle owner, const std::wstring& folder, Pick pick) = 0;
    /// Closes the dialog that is shown over a window, if any, as its Cancel button does.
    virtual void close(WindowHandle owner) noexcept = 0;
};

/// Deletes members of archives and adds files to them, for all browsers of the component. ZIP archives are changed by
/// the zip engine, LZH archives by their driver's library; nothing happens to those of other kinds. One change at a
/// time: libraries let messages run while they work.
class ArchiveChanges {
public:
    /// What changes work with; all of it outlives the object.
    struct Ports {
        ZipEngine& zip;
        Confirmations& confirmations;
        FileQuestions& questions;
        FileOperations& operations;
        WorkFolder& workFolder;
        PathOperations& paths;
        FileSystem& files;
        SystemPaths& system;
        MessageBoxes& messages;
    };
    explicit ArchiveChanges(const Ports& ports) : ports_(ports) {}

    /// Deletes members once the user has agreed.
    /// @return whether the archive is to be listed again
    bool remove(const ArchiveScene& scene, const std::vector<ArchiveMember>& members);

    /// Asks for files, or for a folder, and adds them.
    /// @return whether the archive is to be listed again
    bool pickAndAdd(const ArchiveScene& scene, Pick pick);

    /// Adds files and folders to the folder shown, once the user has agreed.
    /// @param paths  full paths; the archive itself is left out, also of a folder that holds it
    /// @return whether the archive is to be listed again
    bool add(const ArchiveScene& scene, std::vector<std::wstring> paths);

    /// Closes what is asked over a window now, as if its user had declined. What is at work ends when its windows go.
    void cancel(WindowHandle owner) noexcept;

private:
    [[nodiscard]] bool mayChange(const ArchiveScene& scene) const;
    [[nodiscard]] bool isReadOnly(const ArchiveScene& scene) const;
    /// Asks, and does the work with one change at a time. What fails in it is told.
    bool change(const ArchiveScene& scene, const Confirmation& confirmation,
                const std::function<bool(WindowHandle window)>& work);
    bool removeFrom(const ArchiveScene& scene, WindowHandle window, const std::vector<ArchiveMember>& members,
                    const std::wstring& list);
    bool addTo(const ArchiveScene& scene, WindowHandle window, const std::vector<std::wstring>& paths);
    bool runLha(const ArchiveScene& scene, WindowHandle window, const std::wstring& line);
    void tell(const ArchiveScene& scene, WindowHandle window, std::wstring_view text);

    Ports ports_;
    std::wstring lastFolder_;  ///< files were chosen there last
    bool running_ = false;
};

}  // namespace tovar
