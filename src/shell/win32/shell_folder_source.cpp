#include "shell/win32/shell_folder_source.h"

#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include "shell/paths.h"
#include "shell/win32/com_object.h"
#include "shell/win32/folder_search.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/system_calls.h"
#include "shell/win32/system_icons.h"

namespace tovar {
namespace {

struct FreeWithShell {
    void operator()(void* memory) const noexcept { ::CoTaskMemFree(memory); }
};
using UniqueItem = std::unique_ptr<ITEMIDLIST, FreeWithShell>;

UniqueItem specialItem(int folder) {
    LPITEMIDLIST item = nullptr;
    return ::SHGetSpecialFolderLocation(nullptr, folder, &item) == S_OK ? UniqueItem(item) : nullptr;
}

std::wstring specialPath(int folder) {
    std::array<wchar_t, MAX_PATH> path{};
    if (::SHGetFolderPathW(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, path.data()) != S_OK) return {};
    return StripTrailingSeparator(path.data());
}

/// @param fallback  the place's name where the shell has none
FolderPlace specialPlace(int folder, std::wstring path, std::wstring_view fallback) {
    FolderPlace place{std::wstring(fallback), std::move(path), 0};
    const UniqueItem item = specialItem(folder);
    SHFILEINFOW info{};
    constexpr UINT kAsked = SHGFI_DISPLAYNAME | SHGFI_SYSICONINDEX | SHGFI_SMALLICON;
    if (!item || ShellFileInfo(ShellItem(item.get()), kAsked, info) == 0) return place;
    place.icon = info.iIcon;
    std::wstring name = CutAtNull(std::wstring_view(info.szDisplayName, std::size(info.szDisplayName)));
    if (!name.empty()) place.name = std::move(name);
    return place;
}

int driveIcon(const std::wstring& root) {
    // By its kind alone where looking at the disk would take long.
    return SystemIconIndex(root, SHGFI_SMALLICON | (isSlowPlace(root) ? SHGFI_USEFILEATTRIBUTES : 0));
}

std::wstring textOfItem(IShellFolder& folder, PCUITEMID_CHILD item, SHGDNF kind) {
    STRRET text{};
    if (folder.GetDisplayNameOf(item, kind, &text) != S_OK) return {};
    wchar_t* characters = nullptr;
    if (::StrRetToStrW(&text, item, &characters) != S_OK) return {};
    const std::unique_ptr<wchar_t, FreeWithShell> owner(characters);
    return characters;
}

ComOwner<IShellFolder> computerFolder() {
    IShellFolder* desktop = nullptr;
    if (::SHGetDesktopFolder(&desktop) != S_OK) return nullptr;
    const ComOwner<IShellFolder> above(desktop);
    const UniqueItem item = specialItem(CSIDL_DRIVES);
    void* computer = nullptr;
    if (!item || above->BindToObject(item.get(), nullptr, IID_IShellFolder, &computer) != S_OK) return nullptr;
    return ComOwner<IShellFolder>(static_cast<IShellFolder*>(computer));
}

std::vector<FolderPlace> drivesOfShell() {
    std::vector<FolderPlace> drives;
    const ComOwner<IShellFolder> computer = computerFolder();
    IEnumIDList* listed = nullptr;
    if (!computer || computer->EnumObjects(nullptr, SHCONTF_FOLDERS | SHCONTF_INCLUDEHIDDEN, &listed) != S_OK) {
        return drives;
    }
    const ComOwner<IEnumIDList> items(listed);
    for (LPITEMIDLIST next = nullptr; items->Next(1, &next, nullptr) == S_OK;) {
        const UniqueItem item(next);
        std::wstring path = textOfItem(*computer, next, SHGDN_FORPARSING);
        // Others that the computer shows, such as cameras and libraries, are no folders to unpack into.
        if (path.size() != 3 || !HasDriveRoot(path)) continue;
        std::wstring name = textOfItem(*computer, next, SHGDN_NORMAL);
        if (name.empty()) name = path;
        const int icon = driveIcon(path);
        drives.push_back({std::move(name), std::move(path), icon});
    }
    return drives;
}

std::vector<FolderPlace> drivesOfSystem() {
    std::vector<FolderPlace> drives;
    const DWORD letters = ::GetLogicalDrives();
    for (int number = 0; number < 26; ++number) {
        if ((letters >> number & 1) == 0) continue;
        std::wstring path = std::wstring(1, static_cast<wchar_t>(L'A' + number)) + LR"(:\)";
        const int icon = driveIcon(path);
        drives.push_back({path, path, icon});
    }
    return drives;
}

constexpr int kMostLookedAt = 500;  // entries, before a folder counts as one that takes long

bool isFolderNow(const std::wstring& path) {
    if (!isSystemText(path)) return false;
    const QuietSystem quiet;
    const DWORD attributes = ::GetFileAttributesW(extendedPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

FolderLook readFolder(const std::wstring& path) {
    FolderLook look;
    const bool slow = isSlowPlace(path);
    const FolderVisibility visibility;
    look.error = searchFolder(path, SearchFor::Folders, [&](const WIN32_FIND_DATAW& entry) {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 || !visibility.shows(entry)) return true;
        SubFolder folder;
        folder.name = entry.cFileName;
        folder.hidden = (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
        // The shell reads a file in each of them to tell, in the thread of the windows.
        folder.customised = !slow && (entry.dwFileAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM)) != 0;
        folder.created = std::uint64_t{entry.ftCreationTime.dwHighDateTime} << 32 | entry.ftCreationTime.dwLowDateTime;
        look.folders.push_back(std::move(folder));
        return true;
    });
    if (look.error != 0) {
        look.folders.clear();
        look.exists = isFolderNow(path);
    }
    std::sort(look.folders.begin(), look.folders.end(), [](const SubFolder& left, const SubFolder& right) {
        return ::StrCmpLogicalW(left.name.c_str(), right.name.c_str()) < 0;
    });
    return look;
}

}  // namespace

ShellFolderSource::ShellFolderSource(Reader reader)
    : folders_(reader ? std::move(reader) : Reader(&readFolder), [] {
          FolderLook look;
          look.error = ERROR_NOT_ENOUGH_MEMORY;
          return look;
      }) {}

FolderPlace ShellFolderSource::desktop() {
    return specialPlace(CSIDL_DESKTOP, specialPath(CSIDL_DESKTOPDIRECTORY), L"Desktop");
}

FolderPlace ShellFolderSource::documents() {
    return specialPlace(CSIDL_PERSONAL, specialPath(CSIDL_PERSONAL), L"Documents");
}

FolderPlace ShellFolderSource::computer() { return specialPlace(CSIDL_DRIVES, {}, L"Computer"); }

std::vector<FolderPlace> ShellFolderSource::drives() {
    const QuietSystem quiet;
    std::vector<FolderPlace> drives = drivesOfShell();
    if (drives.empty()) drives = drivesOfSystem();
    std::sort(drives.begin(), drives.end(),
              [](const FolderPlace& left, const FolderPlace& right) { return left.path < right.path; });
    return drives;
}

bool ShellFolderSource::isSlow(const std::wstring& path) { return isSlowPlace(path); }

std::optional<FolderLook> ShellFolderSource::lookInto(FolderWatchKey key, const std::wstring& path) {
    return folders_.look(key, path);
}

std::vector<FolderSource::LateLook> ShellFolderSource::takeLate() {
    std::vector<LateLook> late;
    for (auto& [key, look] : folders_.takeLate()) late.push_back({key, std::move(look)});
    return late;
}

bool ShellFolderSource::mayHaveFolders(const std::wstring& path) {
    if (path.empty() || isSlowPlace(path)) return true;
    const QuietSystem quiet;
    const DWORD attributes = ::GetFileAttributesW(extendedPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    // It can lead to another computer, or lie on one.
    if ((attributes & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_OFFLINE)) != 0) return true;
    const FolderVisibility visibility;
    bool may = false;
    int looked = 0;
    searchFolder(path, SearchFor::Folders, [&](const WIN32_FIND_DATAW& entry) {
        may = ++looked > kMostLookedAt ||
              ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && visibility.shows(entry));
        return !may;
    });
    return may;
}

bool ShellFolderSource::isFolder(const std::wstring& path) { return isSlow(path) || isFolderNow(path); }

void ShellFolderSource::watchFolder(FolderWatchKey key, const std::wstring& path) {
    if (!path.empty()) folders_.watch(key, path);
}

void ShellFolderSource::watchDrives(FolderWatchKey key) { drives_ = {key, ::GetLogicalDrives()}; }

void ShellFolderSource::unwatch(FolderWatchKey key) {
    folders_.unwatch(key);
    if (drives_ && drives_->key == key) drives_.reset();
}

std::vector<FolderWatchKey> ShellFolderSource::takeChanges() {
    std::vector<FolderWatchKey> changed = folders_.takeChanges();
    const DWORD letters = ::GetLogicalDrives();
    if (drives_ && std::exchange(drives_->letters, letters) != letters) changed.push_back(drives_->key);
    return changed;
}

}  // namespace tovar
