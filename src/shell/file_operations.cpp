#include "shell/file_operations.h"

#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::wstring_view kListEnd{L"\0\0", 2};

/// Nothing goes further: the desktop's windows run the host's code, and texts can be too long for the memory.
template <class Work>
bool trapped(Work work) noexcept {
    try {
        return work();
    } catch (...) {
        return false;
    }
}

}  // namespace

bool FileOperations::ShellFileOperation(WindowHandle owner, FileFunction function, std::wstring_view sourceList,
                                        std::wstring_view target, std::uint16_t flags) noexcept {
    return trapped([&] { return run(owner, function, sourceList, target, flags); });
}

bool FileOperations::CopyFiles(WindowHandle owner, std::wstring_view sourceFolder, std::wstring& targetFolder,
                               std::wstring_view files, std::uint16_t flags) noexcept {
    return trapped([&] { return transfer(owner, FileFunction::Copy, sourceFolder, targetFolder, files, flags); });
}

bool FileOperations::MoveFiles(WindowHandle owner, std::wstring_view sourceFolder, std::wstring& targetFolder,
                               std::wstring_view files, bool showProgress) noexcept {
    const std::uint16_t flags = showProgress ? 0 : file_flags::kUnseen;
    return trapped([&] { return transfer(owner, FileFunction::Move, sourceFolder, targetFolder, files, flags); });
}

bool FileOperations::DeleteFiles(WindowHandle owner, std::wstring_view folder, std::wstring_view files,
                                 bool toRecycleBin) noexcept {
    constexpr std::uint16_t kForEver = file_flags::kSilent | file_flags::kNoConfirmation;
    return trapped([&] {
        if (!paths_.IsFolder(folder)) return false;
        paths_.SetWorkingFolder(AddTrailingSeparator(folder));
        return run(owner, FileFunction::Delete, files, {}, toRecycleBin ? file_flags::kAllowUndo : kForEver);
    });
}

bool FileOperations::transfer(WindowHandle owner, FileFunction function, std::wstring_view sourceFolder,
                              std::wstring& targetFolder, std::wstring_view files, std::uint16_t flags) {
    if (!paths_.IsFolder(sourceFolder) || !paths_.IsFolder(targetFolder)) return false;
    paths_.SetWorkingFolder(AddTrailingSeparator(sourceFolder));
    targetFolder = AddTrailingSeparator(targetFolder);
    return run(owner, function, files, targetFolder, flags);
}

bool FileOperations::run(WindowHandle owner, FileFunction function, std::wstring_view sourceList,
                         std::wstring_view target, std::uint16_t flags) {
    FileOperation operation;
    operation.owner = owner;
    operation.function = function;
    operation.sources = std::wstring(sourceList).append(kListEnd);
    operation.target = std::wstring(target).append(kListEnd);
    operation.flags = flags;
    const DesktopFiles::Result result = desktop_.run(operation);
    pump_.processPending();
    return result.code == 0 && !result.aborted;
}

std::wstring fileListOf(std::wstring_view lines) {
    std::wstring list;
    for (const std::wstring_view name : splitText(lines, L"\r\n")) {
        if (name.empty()) continue;
        if (!list.empty()) list += L'\0';
        list += name;
    }
    return list;
}

}  // namespace tovar
