#include "drivers/library_folders.h"

#include <windows.h>

#include <algorithm>

#include "shell/paths.h"

namespace tovar {
namespace {

/// Calls a system function that fills a buffer and answers the length it needs; empty when it fails.
template <class Fill>
std::wstring filledBy(Fill fill) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = fill(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size()) {
            text.resize(length);
            return text;
        }
        text.resize(length > text.size() ? length : text.size() * 2);
    }
}

std::wstring programFolder() {
    const std::wstring program =
        filledBy([](wchar_t* buffer, DWORD size) { return ::GetModuleFileNameW(nullptr, buffer, size); });
    return program.empty() ? program : ParentPath(program);
}

/// The folders of the PATH variable. Those that are named relative to the current folder are left out.
void appendPathVariable(std::vector<std::wstring>& folders) {
    const std::wstring path =
        filledBy([](wchar_t* buffer, DWORD size) { return ::GetEnvironmentVariableW(L"PATH", buffer, size); });
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(L';', start), path.size());
        std::wstring_view folder = trimBlanks(std::wstring_view(path).substr(start, end - start));
        if (folder.size() > 1 && folder.front() == L'"' && folder.back() == L'"') {
            folder = folder.substr(1, folder.size() - 2);
        }
        if (HasDriveRoot(folder) || IsUncPath(folder)) {
            folders.emplace_back(folder);
        }
        start = end + 1;
    }
}

/// Source: Windows SDK documentation, SearchPathW
class WindowsLibraryFolders final : public LibraryFolders {
public:
    std::vector<std::wstring> searchOrder() const override {
        std::vector<std::wstring> folders;
        folders.push_back(programFolder());
        folders.push_back(filledBy(&::GetSystemDirectoryW));
        const std::wstring windows = filledBy(&::GetWindowsDirectoryW);
        folders.push_back(windows.empty() ? windows : windows + L"\\system");
        folders.push_back(windows);
        appendPathVariable(folders);
        return folders;
    }
};

}  // namespace

std::unique_ptr<LibraryFolders> systemLibraryFolders() { return std::make_unique<WindowsLibraryFolders>(); }

}  // namespace tovar
