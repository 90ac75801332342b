#include "browser/staged_items.h"

#include <exception>
#include <map>
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

bool StagedItems::add(WindowHandle owner, const std::vector<std::wstring>& paths) {
    std::map<std::wstring, std::wstring> namesByFolder;  // a NUL between names
    std::unordered_set<std::wstring> known;
    for (const std::wstring& each : paths) {
        const std::wstring path = StripTrailingSeparator(each);
        const std::wstring name = FileNamePart(path);
        if (name.empty() || name == path || !known.insert(upperCase(name)).second) return false;
        std::wstring& names = namesByFolder[ParentPath(path)];
        if (!names.empty()) names.push_back(L'\0');
        names.append(name);
        names_.push_back(below_ + name);
    }
    for (const auto& [folder, names] : namesByFolder) {
        std::wstring target = base_ + below_;
        if (!ports_.operations.CopyFiles(owner, folder, target, names, file_flags::kUnseen)) return false;
    }
    return true;
}

void StagedItems::remove() noexcept {
    try {
        removeTree(ports_.files, base_);
    } catch (const std::exception&) {
        // For want of memory they stay in the folder for temporary files.
    }
}

}  // namespace tovar
