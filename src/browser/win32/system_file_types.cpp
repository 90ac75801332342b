#include "browser/win32/system_file_types.h"

#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

/// What the desktop shows of any folder.
SHFILEINFOW anyFolder(UINT flags) {
    SHFILEINFOW info{};
    ::SHGetFileInfoW(L"folder", FILE_ATTRIBUTE_DIRECTORY, &info, sizeof info, flags | SHGFI_USEFILEATTRIBUTES);
    return info;
}

int folderIcon(const std::wstring& folder, UINT flags) {
    SHFILEINFOW info{};
    flags |= SHGFI_SYSICONINDEX | SHGFI_SMALLICON;
    return !folder.empty() && ShellFileInfo(folder, flags, info) != 0 ? info.iIcon : anyFolder(flags).iIcon;
}

}  // namespace

FileType SystemFileTypes::ofFile(std::wstring_view fileName) {
    return {SystemIconIndex(shortFileName(fileName), SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES),
            FileTypeName(fileName)};
}

FileType SystemFileTypes::ofFolder() {
    std::wstring name = workFolder_.empty() ? std::wstring() : ShellTypeName(workFolder_);
    if (name.empty()) name = anyFolder(SHGFI_TYPENAME).szTypeName;
    return {folderIcon(workFolder_, 0), std::move(name)};
}

int SystemFileTypes::openFolderIcon() { return folderIcon(workFolder_, SHGFI_OPENICON); }

}  // namespace tovar
