#include "browser/archive_actions.h"

#include <exception>

#include "browser/member_list.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"

namespace tovar {

ArchiveActions::ArchiveActions(const ArchiveActionsPorts& ports, std::wstring fontName)
    : ports_(ports),
      fontName_(std::move(fontName)),
      extraction_(ports.messages, ports.pump, ports.progress),
      opener_({extraction_, ports.workFolder, ports.paths, ports.files, ports.messages, ports.launcher, ports.copies}) {
    if (ports_.makeExports) exports_ = ports_.makeExports(extraction_);
    ports_.copies.removeRecorded(ports_.workFolder.path());
}

ArchiveActions::~ArchiveActions() {
    try {
        ports_.copies.remove();
    } catch (const std::exception&) {
        // They go at the next chance.
    }
}

void ArchiveActions::extract(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    if (extraction_.running()) return;
    // People look for what they unpack beside the archive; who has chosen another place has a reason, and mostly more
    // archives to unpack there.
    const std::wstring folder = ports_.paths.IsFolder(ports_.lastFolder)
                                    ? ports_.lastFolder
                                    : StripTrailingSeparator(ParentPath(scene.archiveFile));
    const UnpackJob job{scene.owner,       scene.driver, scene.archiveFile, extraction_,
                        ports_.workFolder, ports_.paths, ports_.files,      ports_.messages};
    std::wstring chosen = ports_.dialogs.show(job, folder, memberListOf(scene, members), fontName_);
    if (chosen != folder) ports_.lastFolder = std::move(chosen);
}

bool ArchiveActions::change(const ArchiveScene& scene, const std::function<bool(ArchiveChanges&)>& run) {
    if (ports_.changes == nullptr || extraction_.running() || changing_) return false;
    const ScopedFlag changing(changing_);
    changedOver_ = scene.owner;
    return run(*ports_.changes);
}

bool ArchiveActions::addFiles(const ArchiveScene& scene) {
    return change(scene, [&](ArchiveChanges& changes) { return changes.pickAndAdd(scene, Pick::Files); });
}

bool ArchiveActions::addFolder(const ArchiveScene& scene) {
    return change(scene, [&](ArchiveChanges& changes) { return changes.pickAndAdd(scene, Pick::InFolder); });
}

bool ArchiveActions::addPaths(const ArchiveScene& scene, const std::vector<std::wstring>& paths) {
    return change(scene, [&](ArchiveChanges& changes) { return changes.add(scene, paths); });
}

bool ArchiveActions::paste(const ArchiveScene& scene) {
    if (ports_.clipboard == nullptr) return false;
    std::vector<std::wstring> paths;
    try {
        ports_.clipboard->GetFilesFromClipboard(paths);
    } catch (const EmptyFileList&) {
        return false;  // there is nothing to add, and nothing to say of it
    }
    return addPaths(scene, paths);
}

bool ArchiveActions::canPaste() const { return ports_.clipboard != nullptr && ports_.clipboard->hasFiles(); }

bool ArchiveActions::deleteMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    return change(scene, [&](ArchiveChanges& changes) { return changes.remove(scene, members); });
}

void ArchiveActions::cancel() noexcept {
    extraction_.cancel();
    ports_.dialogs.closeAll();
    if (exports_) exports_->cancel();
    if (changing_) ports_.changes->cancel(changedOver_);
}

}  // namespace tovar
