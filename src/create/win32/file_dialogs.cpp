#include "create/win32/file_dialogs.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>
#include <exception>
#include <string_view>

#include "shell/paths.h"
#include "shell/win32/visual_styles.h"

namespace tovar {
namespace {

constexpr std::size_t kRoomForPath = 32768;
constexpr std::size_t kRoomForPaths = 1U << 20U;
constexpr DWORD kCommonFlags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;

/// The system's file dialogs. Their library is loaded with the first of them, since it brings the printing system
/// along, for which a host that never asks for a file need not wait; and it stays, as what a dialog has started may
/// still run.
class FileDialogs {
public:
    using Dialog = BOOL(WINAPI*)(OPENFILENAMEW*);

    static const FileDialogs& get() {
        static const FileDialogs dialogs;
        return dialogs;
    }
    /// @return FALSE also when the system has no such library
    BOOL save(OPENFILENAMEW& data) const { return save_ != nullptr && save_(&data); }
    BOOL open(OPENFILENAMEW& data) const { return open_ != nullptr && open_(&data); }
    [[nodiscard]] DWORD error() const { return error_ != nullptr ? error_() : 0; }

private:
    FileDialogs() {
        const HMODULE library = ::LoadLibraryExW(L"comdlg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        if (library == nullptr) return;
        find(library, "GetSaveFileNameW", save_);
        find(library, "GetOpenFileNameW", open_);
        find(library, "CommDlgExtendedError", error_);
    }
    template <class Function>
    static void find(HMODULE library, const char* name, Function& function) {
        function = reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    }

    Dialog save_ = nullptr, open_ = nullptr;
    DWORD(WINAPI* error_)() = nullptr;
};

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
    const FileDialogs& dialogs = FileDialogs::get();
    const VisualStyles styles;
    BOOL chosen = dialogs.save(data);
    if (!chosen && dialogs.error() == FNERR_INVALIDFILENAME) {
        path.front() = L'\0';  // a name that was typed, and cannot be one
        chosen = dialogs.save(data);
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
    const FileDialogs& dialogs = FileDialogs::get();
    const VisualStyles styles;
    std::vector<std::wstring> paths;
    if (!dialogs.open(data)) return paths;
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

NewDialogs::NewDialogs() {
    ::EnumThreadWindows(::GetCurrentThreadId(), &NewDialogs::note, reinterpret_cast<LPARAM>(&before_));
}

BOOL CALLBACK NewDialogs::note(HWND window, LPARAM windows) noexcept {
    try {
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    } catch (const std::exception&) {
        return FALSE;
    }
    return TRUE;
}

void NewDialogs::cancel() const noexcept {
    ::EnumThreadWindows(::GetCurrentThreadId(), &NewDialogs::cancelNew, reinterpret_cast<LPARAM>(this));
}

BOOL CALLBACK NewDialogs::cancelNew(HWND window, LPARAM dialogs) noexcept {
    const std::vector<HWND>& before = reinterpret_cast<const NewDialogs*>(dialogs)->before_;
    if (std::ranges::find(before, window) == before.end() && ::IsWindowVisible(window)) {
        ::PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    }
    return TRUE;
}

}  // namespace tovar
