#pragma once
#include <functional>
#include <memory>
#include <string>

#include "browser/archive_changes.h"
#include "browser/browser_actions.h"
#include "browser/member_exports.h"
#include "browser/member_opener.h"
#include "browser/unpack_presenter.h"
#include "shell/file_clipboard.h"

namespace tovar {

/// Shows the extraction dialog.
class UnpackDialogs {
public:
    virtual ~UnpackDialogs() = default;
    /// Returns when the dialog is closed, its work included.
    /// @param folder    target folder that it begins with
    /// @param files     the selected members; empty when there are none
    /// @param fontName  face name that the host wants; empty = the dialog's own
    /// @return the folder that it ended with
    virtual std::wstring show(const UnpackJob& job, const std::wstring& folder, const std::wstring& files,
                              const std::wstring& fontName) = 0;
    /// Closes the dialog that is shown, if any, as its Cancel button does.
    virtual void closeAll() noexcept = 0;
};

/// What browsers' commands work with. Lives as long as the component, and so do the things it refers to.
struct ArchiveActionsPorts {
    WorkFolder& workFolder;
    PathOperations& paths;
    FileSystem& files;
    MessageBoxes& messages;
    MessagePump& pump;
    ProgressDialogs& progress;
    ProgramLauncher& launcher;
    UnpackDialogs& dialogs;
    OpenedCopies& copies;
    std::wstring& lastFolder;            ///< target folder chosen last, for all browsers; empty at first
    ArchiveChanges* changes = nullptr;   ///< null: archives cannot be changed
    FileClipboard* clipboard = nullptr;  ///< null: nothing is pasted
    /// Makes what takes members out of one browser's window; nothing: none leave it.
    std::function<std::unique_ptr<MemberExports>(Extraction& extraction)> makeExports = {};
};

/// What the commands of one browser do.
class ArchiveActions final : public BrowserActions {
public:
    ArchiveActions(const ArchiveActionsPorts& ports, std::wstring fontName);
    ~ArchiveActions() override;
    ArchiveActions(const ArchiveActions&) = delete;
    ArchiveActions& operator=(const ArchiveActions&) = delete;

    [[nodiscard]] bool offers(BrowserCommand command) const override {
        const bool changes = command == mnuEditAdd || command == kAddFolder || command == mnuEditDelete;
        return command == mnuEditExtract || command == kOpen || (changes && ports_.changes != nullptr) ||
               (command == kPaste && ports_.changes != nullptr && ports_.clipboard != nullptr);
    }
    void extract(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override;
    void openMember(const ArchiveScene& scene, std::uint32_t entry) override { opener_.open(scene, entry); }
    bool addFiles(const ArchiveScene& scene) override;
    bool addFolder(const ArchiveScene& scene) override;
    bool addPaths(const ArchiveScene& scene, const std::vector<std::wstring>& paths) override;
    bool paste(const ArchiveScene& scene) override;
    [[nodiscard]] bool canPaste() const override;
    bool deleteMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override;
    [[nodiscard]] MemberExports* exports() noexcept override { return exports_.get(); }
    void cancel() noexcept override;

private:
    /// Runs a change; not while members are extracted.
    bool change(const ArchiveScene& scene, const std::function<bool(ArchiveChanges&)>& run);

    ArchiveActionsPorts ports_;
    std::wstring fontName_;
    Extraction extraction_;
    MemberOpener opener_;
    std::unique_ptr<MemberExports> exports_;
    bool changing_ = false;
    WindowHandle changedOver_ = nullptr;  ///< the window of the change that runs
};

}  // namespace tovar
