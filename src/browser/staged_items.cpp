#include "browser/staged_items.h"

#include <exception>
#include <unordered_set>

#include "drivers/member_path.h"
#include "shell/file_tree.h"
#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kSeparator = L"\\";
constexpr SystemErrorCode kPathNotFound = 3;  ///< in Windows
constexpr SystemErrorCode kInvalidName = 123;

}  // namespace

StagedItems::StagedItems(const Ports& ports, std::wstring_view folderKey) : ports_(ports) {
    const std::wstring& work = ports_.workFolder.path();
    // The system finds the free name; it makes a file of it, and a folder takes its place.
    const std::wstring name = ports_.workFolder.MakeTempFileName(work, L"VTL");
    if (name.empty()) throw SystemError(kPathNotFound);
    ports_.files.deleteFile(name);
    if (const SystemErrorCode error = ports_.files.createFolder(name); error != 0) throw SystemError(error);
    base_ = AddTrailingSeparator(name);
    try {
        makeFolders(folderKey);
    } catch (...) {
        remove();
        throw;
    }
}

StagedItems::~StagedItems() { remove(); }

void StagedItems::makeFolders(std::wstring_view folderKey) {
    for (const std::wstring_view part : splitText(folderKey, kSeparator)) {
        if (part.empty()) continue;
        // A folder that Windows would name otherwise cannot stand for the archive's.
        if (safeMemberPath(part, true, L'\\') != std::wstring(part)) throw SystemError(kInvalidName);
        below_.append(part);
        if (const SystemErrorCode error = ports_.files.createFolder(base_ + below_); error != 0) {
            throw SystemError(error);
        }
        below_.append(kSeparator);
    }
}

bool StagedItems::add(WindowHandle owner, const std::vector<std::wstring>& paths, const std::wstring& leftOut) {
    Copies copies;
    std::unordered_set<std::wstring> known;
    for (const std::wstring& each : paths) {
        const std::wstring path = StripTrailingSeparator(each);
        const std::wstring name = FileNamePart(path);
        if (name.empty() || name == path || !known.insert(upperCase(name)).second) return false;
        if (!plan(copies, ParentPath(path), name, leftOut)) return false;
        names_.push_back(below_ + name);
    }
    for (const auto& [places, names] : copies) {
        std::wstring target = places.second;
        if (!ports_.operations.CopyFiles(owner, places.first, target, names, file_flags::kUnseen)) return false;
    }
    return true;
}

// A folder that holds the file is made anew, and so on down to the one where the file is; all others are copied whole.
bool StagedItems::plan(Copies& copies, std::wstring folder, std::wstring name, const std::wstring& leftOut) {
    const auto note = [&copies](const std::wstring& from, const std::wstring& to, std::wstring_view what) {
        std::wstring& names = copies[{from, to}];
        if (!names.empty()) names.push_back(L'\0');
        names.append(what);
    };
    std::wstring target = base_ + below_;
    while (isWithin(leftOut, folder + name)) {
        folder.append(name).append(kSeparator);
        target.append(name);
        if (ports_.files.createFolder(target) != 0) return false;
        target.append(kSeparator);
        std::vector<FolderEntry> entries;
        if (ports_.files.listFolder(folder, entries) != 0) return false;
        name.clear();
        for (const FolderEntry& entry : entries) {
            if (entry.name == L"." || entry.name == L"..") continue;
            if (!isWithin(leftOut, folder + entry.name)) {
                note(folder, target, entry.name);
            } else if ((entry.attributes & attribute::kFolder) != 0) {
                name = entry.name;
            }
        }
        if (name.empty()) return true;
    }
    note(folder, target, name);
    return true;
}

void StagedItems::remove() noexcept {
    try {
        removeTree(ports_.files, base_);
    } catch (const std::exception&) {
        // For want of memory they stay in the folder for temporary files.
    }
}

bool isWithin(std::wstring_view path, std::wstring_view folder) {
    const std::wstring one = upperCase(StripTrailingSeparator(path)), all = upperCase(StripTrailingSeparator(folder));
    return one.starts_with(all) && (one.size() == all.size() || one[all.size()] == L'\\');
}

}  // namespace tovar
