#include "browser/archive_changes.h"

#include <unordered_set>

#include "browser/change_lines.h"
#include "browser/member_list.h"
#include "browser/own_items.h"
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
constexpr std::wstring_view kReadOnly = L"The archive is read-only. It was not changed.";
constexpr std::wstring_view kHoldsCopies =
    L" holds the folder for temporary files, and cannot be added as a whole. Add what is in it.";
constexpr std::wstring_view kNoName = L" has no name that it could have in the archive. Add what is in it.";
constexpr std::wstring_view kSameName = L" has the same name as another one. Add one of them at a time.";
constexpr std::wstring_view kVanished = L" is not there any more. Nothing was added.";
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

std::wstring quoted(const std::wstring& path) { return L'"' + path + L'"'; }

/// Takes out what need not be said twice: the same path again.
void leaveOutRepeated(std::vector<std::wstring>& paths) {
    std::unordered_set<std::wstring> known;
    std::erase_if(paths, [&](const std::wstring& path) { return !known.insert(upperCase(path)).second; });
}

/// @param workFolder  where copies are made
/// @return why they cannot be added together; empty when they can
std::wstring objectionTo(const std::vector<std::wstring>& paths, std::wstring_view workFolder) {
    std::unordered_set<std::wstring> names;
    for (const std::wstring& path : paths) {
        const std::wstring name = FileNamePart(path);
        if (name.empty() || name == path) return quoted(path).append(kNoName);
        if (isWithin(workFolder, path)) return quoted(path).append(kHoldsCopies);
        if (!names.insert(upperCase(name)).second) return quoted(path).append(kSameName);
    }
    return {};
}

}  // namespace

// The libraries remove an archive with its last member, as their programs always did: an empty one is refused by many
// programs. The window then shows an empty archive, and what is added to it makes the file anew.
bool ArchiveChanges::remove(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    if (members.empty()) return false;
    const std::wstring list = memberListOf(scene, members);
    return change(scene, confirmDeletion(list),
                  [&](WindowHandle window) { return removeFrom(scene, window, members, list); });
}

bool ArchiveChanges::pickAndAdd(const ArchiveScene& scene, Pick pick) {
    if (!mayChange(scene)) return false;
    const std::wstring folder =
        ports_.paths.IsFolder(lastFolder_) ? lastFolder_ : StripTrailingSeparator(ParentPath(scene.archiveFile));
    std::vector<std::wstring> paths;
    {
        const ScopedFlag running(running_);
        paths = ports_.questions.ask(scene.owner, folder, pick);
    }
    if (paths.empty()) return false;
    lastFolder_ = StripTrailingSeparator(ParentPath(paths.front()));
    return add(scene, std::move(paths));
}

bool ArchiveChanges::add(const ArchiveScene& scene, std::vector<std::wstring> paths) {
    if (paths.empty()) return false;
    if (!mayChange(scene)) return false;
    for (std::wstring& path : paths) path = StripTrailingSeparator(path);
    leaveOutRepeated(paths);
    // What is dragged out of a browser is a placeholder, and not meant for the next one.
    std::erase_if(paths, [](const std::wstring& path) { return OwnItems::isOwnName(FileNamePart(path)); });
    if (paths.empty()) return false;
    std::erase_if(paths, [&](const std::wstring& path) { return upperCase(path) == upperCase(scene.archiveFile); });
    const std::wstring objection =
        paths.empty() ? std::wstring(kIntoItself) : objectionTo(paths, ports_.workFolder.path());
    if (!objection.empty()) {
        tell(scene, scene.owner, objection);
        return false;
    }
    return change(scene, confirmCompression(paths.size()),
                  [&](WindowHandle window) { return addTo(scene, window, paths); });
}

void ArchiveChanges::cancel(WindowHandle owner) noexcept {
    ports_.questions.close(owner);
    ports_.confirmations.decline(owner);
}

bool ArchiveChanges::mayChange(const ArchiveScene& scene) const {
    return !running_ && !ports_.zip.running() && isChangeable(scene);
}

bool ArchiveChanges::isReadOnly(const ArchiveScene& scene) const {
    const auto attributes = ports_.files.attributes(scene.archiveFile);
    return attributes && (*attributes & attribute::kReadOnly) != 0;
}

bool ArchiveChanges::change(const ArchiveScene& scene, const Confirmation& confirmation,
                            const std::function<bool(WindowHandle window)>& work) {
    if (!mayChange(scene)) return false;
    if (isReadOnly(scene)) {
        // Before anything is asked or copied for it.
        tell(scene, scene.owner, kReadOnly);
        return false;
    }
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
    for (const std::wstring& path : paths) {
        if (ports_.files.attributes(path)) continue;
        tell(scene, window, quoted(path).append(kVanished));
        return false;
    }
    StagedItems staged({ports_.workFolder, ports_.files, ports_.operations}, scene.folders.key(scene.folder));
    // Copying leaves the process in the folder of the originals. It must not stand among the copies when they go.
    const CurrentFolderKeeper keeper(ports_.system);
    if (!staged.add(window, paths, scene.archiveFile)) {
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
