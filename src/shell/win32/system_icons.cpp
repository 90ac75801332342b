#include "shell/win32/system_icons.h"

#include <array>

#include "shell/paths.h"

namespace tovar {
namespace {

// IImageList, in commoncontrols.h
constexpr GUID kIidImageList{0x46EB5926, 0x582E, 0x4017, {0x9F, 0xDF, 0xE8, 0x99, 0x8D, 0xAA, 0x09, 0x50}};

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

// The shell makes its small and large lists for the scale of the main screen. For other scales there are larger ones;
// icons between two sizes stay sharp when the smaller ones are shown as they are.
HIMAGELIST SystemImageListOfSize(int pixels) {
    constexpr std::array kLists = {SHIL_SMALL, SHIL_LARGE, SHIL_EXTRALARGE, SHIL_JUMBO};
    HIMAGELIST best = nullptr;
    int bestSize = 0;
    for (const int which : kLists) {
        void* answer = nullptr;
        if (::SHGetImageList(which, kIidImageList, &answer) != S_OK || answer == nullptr) continue;
        const auto images = static_cast<HIMAGELIST>(answer);
        int width = 0, height = 0;
        const bool known = ::ImageList_GetIconSize(images, &width, &height) != FALSE;
        static_cast<IUnknown*>(answer)->Release();  // the shell keeps its own
        const bool better =
            best == nullptr || (bestSize > pixels ? width < bestSize : width <= pixels && width > bestSize);
        if (!known || !better) continue;
        best = images;
        bestSize = width;
        if (width == pixels) break;  // each of the others costs the shell a while when it is asked for the first time
    }
    return best != nullptr ? best : SystemImageList(SHGFI_SMALLICON);
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
