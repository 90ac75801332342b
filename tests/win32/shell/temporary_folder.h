#pragma once
#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace tovar::test {

/// A new folder in the system's temporary folder; goes with all that lies in it, whatever its attributes and however
/// deep.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const std::filesystem::path above = std::filesystem::temp_directory_path();
        for (unsigned number = ::GetTickCount();; ++number) {
            path_ = above / (L"TovarTest" + std::to_wstring(number));
            if (std::filesystem::create_directory(path_)) return;
        }
    }
    ~TemporaryFolder() { remove(path_.native()); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// @return the folder's path, a "\" and the name
    [[nodiscard]] std::wstring operator/(const std::wstring& name) const { return path_.native() + L'\\' + name; }
    [[nodiscard]] const std::wstring& path() const { return path_.native(); }

private:
    // Not std::filesystem: it gives up on paths that are longer than MAX_PATH.
    static void remove(const std::wstring& folder) {
        WIN32_FIND_DATAW found{};
        const HANDLE search = ::FindFirstFileW((folder + LR"(\*)").c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            do {
                const std::wstring_view name = found.cFileName;
                if (name != L"." && name != L"..") removeEntry(folder + L'\\' + found.cFileName, found);
            } while (::FindNextFileW(search, &found) != FALSE);
            ::FindClose(search);
        }
        ::RemoveDirectoryW(folder.c_str());
    }

    static void removeEntry(const std::wstring& path, const WIN32_FIND_DATAW& found) {
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            remove(path);
        } else {
            ::DeleteFileW(path.c_str());
        }
    }

    std::filesystem::path path_;
};

}  // namespace tovar::test
