#include "shell/win32/folder_search.h"

#include <shlobj.h>

#include <string_view>

#include "shell/win32/handles.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/system_calls.h"

namespace tovar {

FolderVisibility::FolderVisibility() {
    SHELLSTATEW state{};
    ::SHGetSetSettings(&state, SSF_SHOWALLOBJECTS | SSF_SHOWSUPERHIDDEN, FALSE);
    hidden_ = state.fShowAllObjects != 0;
    system_ = state.fShowSuperHidden != 0;
}

bool FolderVisibility::shows(const WIN32_FIND_DATAW& entry) const noexcept {
    constexpr DWORD kProtected = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) == 0) return true;
    return hidden_ && (system_ || (entry.dwFileAttributes & kProtected) != kProtected);
}

SystemErrorCode searchFolder(const std::wstring& path, SearchFor what,
                             const std::function<bool(const WIN32_FIND_DATAW&)>& entry) {
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    const QuietSystem quiet;
    const FINDEX_SEARCH_OPS kind = what == SearchFor::Folders ? FindExSearchLimitToDirectories : FindExSearchNameMatch;
    const std::wstring pattern = extendedPath(path) + (path.ends_with(L'\\') ? L"*" : LR"(\*)");
    WIN32_FIND_DATAW found{};
    const UniqueFind search = adoptFind(
        ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found, kind, nullptr, FIND_FIRST_EX_LARGE_FETCH));
    // The root of an empty drive has not even the entries for itself and the folder above.
    if (!search) return lastError() == ERROR_FILE_NOT_FOUND ? 0 : lastError();
    do {
        const std::wstring_view name = found.cFileName;
        if (name != L"." && name != L".." && !entry(found)) return 0;
    } while (::FindNextFileW(search.get(), &found) != FALSE);
    const SystemErrorCode error = lastError();
    return error == ERROR_NO_MORE_FILES ? 0 : error;
}

}  // namespace tovar
