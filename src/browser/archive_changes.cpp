#include "browser/archive_changes.h"

#include <unordered_set>

#include "browser/change_lines.h"
#include "browser/member_list.h"
#include "browser/staged_items.h"
#include "drivers/un_lha.h"
#include "drivers/un_zip.h"
#include "shell/current_folder.h"
#include "shell/current_folder_keeper.h"
#include "shell/list_file.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"

namespace tovar {
namespace {

constexpr std::wstring_view kNotCopied = L"The files could not be copied into the folder for temporary files.";
constexpr std::wstring_view kIntoItself = L"An archive cannot be added to itself.";
constexpr SystemErrorCode kNotFound = 2;  ///< in Windows and elsewhere

bool isOf(const ArchiveScene& scene, const DriverDescription& kind) { return &scene.driver.description() == &kind; }

bool isChangeable(const ArchiveScene& scene) {
    return isOf(scene, cUnZip::kDescription) ||
           (isOf(scene, cUnLHA::kDescription) && dynamic_cast<CommonDriver*>(&scene.driver) != nullptr);
}

/// The library compares a name without folders with the last part of every member's path, and would delete files of
/// other folders as well.
bool choosesOthers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    const EntryTable& entries = scene.driver.entries();
    std::unordered_set<std::wstring> names;
    std::unordered_set<std::uint32_t> chosen;
    for (const ArchiveMember& member : members) {
        if (member.folder) continue;
        chosen.insert(member.entry);
        const std::wstring path = memberPath(scene, member);
        if (path.find_first_of(L"\\/") == path.npos) names.insert(upperCase(path));
    }
    if (names.empty()) return false;
    for (std::uint32_t entry = 0; entry < entries.size(); ++entry) {
        if (!chosen.contains(entry) && names.contains(upperCase(std::wstring(entries.name(entry))))) return true;
    }
    return false;
}

}  // namespace

bool ArchiveChanges::remove(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    if (members.empty()) return false;
    const std::wstring list = memberListOf(scene, members);
    return change(scene, confirmDeletion(list),
                  [&](WindowHandle window) { return removeFrom(scene, window, members, list); });
}

bool ArchiveChanges::pickAndAdd(const ArchiveScene& scene) {
    if (running_ || !isChangeable(scene)) return false;
    const std::wstring folder =
        ports_.paths.IsFolder(lastFolder_) ? lastFolder_ : StripTrailingSeparator(ParentPath(scene.archiveFile));
    std::vector<std::wstring> paths;
    {
        const ScopedFlag running(running_);
        paths = ports_.questions.ask(scene.owner, folder);
    }
    if (paths.empty()) return false;
    lastFolder_ = StripTrailingSeparator(ParentPath(paths.front()));
    return add(scene, std::move(paths));
}

bool ArchiveChanges::add(const ArchiveScene& scene, std::vector<std::wstring> paths) {
    if (paths.empty()) return false;
    const std::size_t itself =
        std::erase_if(paths, [&](const std::wstring& path) { return upperCase(path) == upperCase(scene.archiveFile); });
    if (paths.empty() && itself != 0 && !running_ && isChangeable(scene)) tell(scene, scene.owner, kIntoItself);
    if (paths.empty()) return false;
    return change(scene, confirmCompression(paths.size()),
                  [&](WindowHandle window) { return addTo(scene, window, paths); });
}

bool ArchiveChanges::change(const ArchiveScene& scene, const Confirmation& confirmation,
                            const std::function<bool(WindowHandle window)>& work) {
    if (running_ || ports_.zip.running() || !isChangeable(scene)) return false;
    const ScopedFlag running(running_);
    bool changed = false;
    ports_.confirmations.ask(scene.owner, confirmation, [&](WindowHandle window) {
        try {
            changed = work(window);
        } catch (const SystemError& error) {
            tell(scene, window, ports_.paths.SystemErrorText(error.code()));
        }
    });
    return changed;
}

bool ArchiveChanges::removeFrom(const ArchiveScene& scene, WindowHandle window,
                                const std::vector<ArchiveMember>& members, const std::wstring& list) {
    if (isOf(scene, cUnZip::kDescription)) {
        const std::wstring names = zipDeletionList(list);
        const std::wstring base = ParentPath(scene.archiveFile);
        return ports_.zip
            .run({.owner = window,
                  .command = kZipDelete,
                  .archive = scene.archiveFile,
                  .files = names,
                  .baseFolder = base})
            .value_or(false);
    }
    const ListFile file(list, scene.driver.listCodec(), ports_.workFolder, ports_.files);
    return runLha(scene, window, lhaDeletionLine(scene.archiveFile, file.argument(), choosesOthers(scene, members)));
}

// Even a library that reports an error may have added some of the items: the archive is listed again in any case.
bool ArchiveChanges::addTo(const ArchiveScene& scene, WindowHandle window, const std::vector<std::wstring>& paths) {
    StagedItems staged({ports_.workFolder, ports_.files, ports_.operations}, scene.folders.key(scene.folder));
    // Copying leaves the process in the folder of the originals. It must not stand among the copies when they go.
    const CurrentFolderKeeper keeper(ports_.system);
    if (!staged.add(window, paths)) {
        tell(scene, window, kNotCopied);
        return false;
    }
    const std::wstring names = linesOf(staged.names());
    if (isOf(scene, cUnZip::kDescription)) {
        return ports_.zip
            .run({.owner = window,
                  .command = kZipAdd,
                  .archive = scene.archiveFile,
                  .files = names,
                  .baseFolder = staged.base()})
            .has_value();
    }
    const std::wstring list = ports_.workFolder.BuildListFileText(staged.base(), names, L"");
    // Some libraries take an empty list for everything that is there.
    if (list.empty()) throw SystemError(kNotFound);
    const ListFile file(list, scene.driver.listCodec(), ports_.workFolder, ports_.files);
    const CurrentFolder current(ports_.system, staged.base());
    runLha(scene, window, lhaAdditionLine(scene.archiveFile, file.argument()));
    return true;
}

bool ArchiveChanges::runLha(const ArchiveScene& scene, WindowHandle window, const std::wstring& line) {
    const WindowHandle before = scene.driver.hWnd();
    const ExtractResult result = dynamic_cast<CommonDriver&>(scene.driver).runLine(window, line);
    // The window that the library's dialogs had goes with the work.
    scene.driver.setHWnd(before);
    if (result.code != 0) tell(scene, window, result.message);
    return result.code == 0;
}

void ArchiveChanges::tell(const ArchiveScene& scene, WindowHandle window, std::wstring_view text) {
    ports_.messages.show(window, text, scene.driver.description().messageTitle, MessageIcon::Exclamation);
}

}  // namespace tovar
