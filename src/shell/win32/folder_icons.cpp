#include "shell/win32/folder_icons.h"

#include "shell/paths.h"
#include "shell/win32/system_icons.h"

namespace tovar {

FolderIcons plainFolderIcons() {
    const auto icon = [](UINT state) {
        SHFILEINFOW info{};
        constexpr UINT kAsked = SHGFI_SYSICONINDEX | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES;
        ::SHGetFileInfoW(L"folder", FILE_ATTRIBUTE_DIRECTORY, &info, sizeof info, kAsked | state);
        return info.iIcon;
    };
    return {icon(0), icon(SHGFI_OPENICON)};
}

ShownFolder shownFolder(const std::wstring& path, const std::wstring& name) {
    SHFILEINFOW info{};
    // The shell's namespace ends there.
    if (path.size() >= MAX_PATH) return {name, plainFolderIcons()};
    constexpr UINT kAsked = SHGFI_DISPLAYNAME | SHGFI_SYSICONINDEX | SHGFI_SMALLICON;
    if (ShellFileInfo(path, kAsked, info) == 0) return {name, plainFolderIcons()};
    std::wstring shown = CutAtNull(std::wstring_view(info.szDisplayName, std::size(info.szDisplayName)));
    return {shown.empty() ? name : std::move(shown),
            {info.iIcon, SystemIconIndex(path, SHGFI_SMALLICON | SHGFI_OPENICON)}};
}

}  // namespace tovar
