#include "browser/win32/system_file_types.h"

#include <iterator>

#include "shell/paths.h"
#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

/// What the desktop shows of a folder, and of any folder where it is gone.
SHFILEINFOW infoOfFolder(const std::wstring& folder, UINT flags) {
    SHFILEINFOW info{};
    if (folder.empty() || ShellFileInfo(folder, flags, info) == 0) {
        ::SHGetFileInfoW(L"folder", FILE_ATTRIBUTE_DIRECTORY, &info, sizeof info, flags | SHGFI_USEFILEATTRIBUTES);
    }
    return info;
}

}  // namespace

FileType SystemFileTypes::ofFile(std::wstring_view fileName) {
    return {SystemIconIndex(shortFileName(fileName), SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES),
            FileTypeName(fileName)};
}

FileType SystemFileTypes::ofFolder() {
    if (!folder_) {
        const SHFILEINFOW info = infoOfFolder(workFolder_, SHGFI_TYPENAME | SHGFI_SYSICONINDEX | SHGFI_SMALLICON);
        folder_ = {info.iIcon, CutAtNull(std::wstring_view(info.szTypeName, std::size(info.szTypeName)))};
    }
    return *folder_;
}

int SystemFileTypes::openFolderIcon() {
    return infoOfFolder(workFolder_, SHGFI_OPENICON | SHGFI_SYSICONINDEX | SHGFI_SMALLICON).iIcon;
}

}  // namespace tovar
