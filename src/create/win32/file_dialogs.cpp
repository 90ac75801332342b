#include "create/win32/file_dialogs.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>
#include <string_view>

#include "shell/paths.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

constexpr std::size_t kRoomForPath = 32768;
constexpr std::size_t kRoomForPaths = 1U << 20U;
constexpr DWORD kCommonFlags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;

/// The system's form of a filter: a NUL behind each text and each pattern, and one more.
std::wstring filterOf(std::wstring_view filter) {
    std::wstring text(filter);
    std::ranges::replace(text, L'|', L'\0');
    return text + std::wstring(2, L'\0');
}

}  // namespace

std::wstring askForArchive(HWND owner, const ArchiveQuestion& question) {
    const std::wstring title(question.title), filter = filterOf(question.filter), extension(question.extension);
    const std::wstring name = FileNamePart(question.archive);
    const std::wstring folder = name == question.archive ? std::wstring() : ParentPath(question.archive);
    std::wstring path(kRoomForPath, L'\0');
    std::ranges::copy(name.substr(0, kRoomForPath - 1), path.begin());

    OPENFILENAMEW data{};
    data.lStructSize = sizeof data;
    data.hwndOwner = owner;
    data.lpstrFilter = filter.c_str();
    data.nFilterIndex = 2;  // archives of the kind
    data.lpstrFile = path.data();
    data.nMaxFile = static_cast<DWORD>(path.size());
    data.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    data.lpstrTitle = title.c_str();
    data.lpstrDefExt = extension.c_str();
    // No question about an archive that is there: files can be added to it.
    data.Flags = kCommonFlags;
    const VisualStyles styles;
    BOOL chosen = ::GetSaveFileNameW(&data);
    if (!chosen && ::CommDlgExtendedError() == FNERR_INVALIDFILENAME) {
        path.front() = L'\0';  // a name that was typed, and cannot be one
        chosen = ::GetSaveFileNameW(&data);
    }
    return chosen ? CutAtNull(path) : std::wstring();
}

std::vector<std::wstring> askForFiles(HWND owner, const std::wstring& folder) {
    static constexpr std::wstring_view kAllFiles = L"All Files (*.*)|*.*";
    const std::wstring filter = filterOf(kAllFiles);
    std::wstring list(kRoomForPaths, L'\0');
    OPENFILENAMEW data{};
    data.lStructSize = sizeof data;
    data.hwndOwner = owner;
    data.lpstrFilter = filter.c_str();
    data.lpstrFile = list.data();
    data.nMaxFile = static_cast<DWORD>(list.size());
    data.lpstrInitialDir = folder.c_str();
    data.lpstrTitle = L"Add Files";
    data.Flags = kCommonFlags | OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST;
    const VisualStyles styles;
    std::vector<std::wstring> paths;
    if (!::GetOpenFileNameW(&data)) return paths;
    // One file: its path. Several: their folder and their names, with a NUL behind each and one more.
    const std::wstring first = CutAtNull(list);
    for (std::size_t at = first.size() + 1; at < list.size() && list[at] != L'\0';) {
        const std::wstring name = CutAtNull(std::wstring_view(list).substr(at));
        paths.push_back(first + (first.ends_with(L'\\') ? L"" : L"\\") + name);
        at += name.size() + 1;
    }
    if (paths.empty()) paths.push_back(first);
    return paths;
}

}  // namespace tovar
