#pragma once
#include <functional>
#include <memory>
#include <string>

#include "browser/archive_changes.h"
#include "browser/browser_actions.h"
#include "browser/member_exports.h"
#include "browser/member_opener.h"
#include "browser/unpack_presenter.h"

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
    std::wstring& lastFolder;           ///< target folder chosen last, for all browsers; empty at first
    ArchiveChanges* changes = nullptr;  ///< null: archives cannot be changed
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
        const bool changes = command == mnuEditAdd || command == mnuEditDelete;
        return command == mnuEditExtract || command == kOpen || (changes && ports_.changes != nullptr);
    }
    void extract(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override;
    void openMember(const ArchiveScene& scene, std::uint32_t entry) override { opener_.open(scene, entry); }
    bool addFiles(const ArchiveScene& scene) override {
        return ports_.changes != nullptr && !extraction_.running() && ports_.changes->pickAndAdd(scene);
    }
    bool deleteMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override {
        return ports_.changes != nullptr && !extraction_.running() && ports_.changes->remove(scene, members);
    }
    [[nodiscard]] MemberExports* exports() noexcept override { return exports_.get(); }
    void cancel() noexcept override;

private:
    ArchiveActionsPorts ports_;
    std::wstring fontName_;
    Extraction extraction_;
    MemberOpener opener_;
    std::unique_ptr<MemberExports> exports_;
};

}  // namespace tovar
