#include "shell/win32/system_icons.h"

#include <array>

#include "shell/paths.h"

namespace tovar {
namespace {

std::wstring typeName(const ShellItem& item, UINT flags) {
    SHFILEINFOW info{};
    if (ShellFileInfo(item, flags, info) == 0) return {};
    return CutAtNull(std::wstring_view(info.szTypeName, std::size(info.szTypeName)));
}

}  // namespace

DWORD_PTR ShellFileInfo(const ShellItem& item, UINT flags, SHFILEINFOW& info) {
    return ::SHGetFileInfoW(item.argument(), 0, &info, sizeof info, flags | item.flags());
}

HIMAGELIST SystemImageList(UINT sizeFlag) {
    SHFILEINFOW info{};
    return reinterpret_cast<HIMAGELIST>(ShellFileInfo(L"C:\\", sizeFlag | SHGFI_SYSICONINDEX, info));
}

int SystemIconIndex(const ShellItem& item, UINT flags) {
    SHFILEINFOW info{};
    return ShellFileInfo(item, flags | SHGFI_SYSICONINDEX, info) != 0 ? info.iIcon : 0;
}

std::wstring ShellTypeName(const ShellItem& item) { return typeName(item, SHGFI_TYPENAME); }

std::wstring FileTypeName(std::wstring_view name) { return FileTypeName(name, SystemTypeNames()); }

std::wstring shortFileName(std::wstring_view name) {
    if (name.size() < MAX_PATH) return std::wstring(name);
    const std::wstring extension = ExtensionPart(name);
    // No type is registered for an extension that is longer than any path.
    return extension.empty() || extension.size() + 2 >= MAX_PATH ? L"x" : L"x." + extension;
}

std::wstring SystemTypeNames::ofName(std::wstring_view name) const {
    return typeName(shortFileName(name), SHGFI_TYPENAME | SHGFI_USEFILEATTRIBUTES);
}

std::wstring SystemTypeNames::ofTempFolder() const {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    const DWORD length = ::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    if (length == 0 || length >= folder.size()) return {};
    return ShellTypeName(AddTrailingSeparator(folder.data()));
}

}  // namespace tovar
