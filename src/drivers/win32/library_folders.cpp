#include "drivers/library_folders.h"

#include <windows.h>

#include <algorithm>

#include "drivers/win32/full_path.h"
#include "shell/paths.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

std::wstring programFolder() {
    const std::wstring program = moduleFile(nullptr);
    return program.empty() ? program : ParentPath(program);
}

/// The folders of the PATH variable. Those that are named relative to the current folder are left out.
void appendPathVariable(std::vector<std::wstring>& folders) {
    const std::wstring path =
        textOfSystem([](wchar_t* buffer, DWORD size) { return ::GetEnvironmentVariableW(L"PATH", buffer, size); });
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(L';', start), path.size());
        std::wstring_view folder = trimBlanks(std::wstring_view(path).substr(start, end - start));
        if (folder.size() > 1 && folder.front() == L'"' && folder.back() == L'"') {
            folder = folder.substr(1, folder.size() - 2);
        }
        if (isFullPath(folder)) {
            folders.emplace_back(folder);
        }
        start = end + 1;
    }
}

/// Source: Windows SDK documentation, SearchPathW
class WindowsLibraryFolders final : public LibraryFolders {
public:
    [[nodiscard]] std::vector<std::wstring> searchOrder() const override {
        std::vector<std::wstring> folders;
        folders.push_back(programFolder());
        folders.push_back(textOfSystem(&::GetSystemDirectoryW));
        const std::wstring windows = textOfSystem(&::GetWindowsDirectoryW);
        folders.push_back(windows.empty() ? windows : windows + L"\\system");
        folders.push_back(windows);
        appendPathVariable(folders);
        return folders;
    }
};

}  // namespace

std::unique_ptr<LibraryFolders> systemLibraryFolders() { return std::make_unique<WindowsLibraryFolders>(); }

}  // namespace tovar
