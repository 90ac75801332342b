#include "shell/win32/windows_file_system.h"

#include <windows.h>

#include <algorithm>

#include "shell/win32/handles.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

constexpr std::size_t kPieceSize = 65536;

std::uint64_t joined(DWORD high, DWORD low) noexcept { return (static_cast<std::uint64_t>(high) << 32) | low; }

// A reparse point whose tag says that it stands for another name. Wine tells no tag.
bool isLink(const WIN32_FIND_DATAW& found) noexcept {
    const DWORD tag = found.dwReserved0;
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && (tag == 0 || IsReparseTagNameSurrogate(tag));
}

// Local time by the rules of the file's own date, as the system's folder windows show it.
void putLocalTime(const FILETIME& time, FileStatus& status) noexcept {
    SYSTEMTIME universal{}, local{};
    if (::FileTimeToSystemTime(&time, &universal) == FALSE ||
        ::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local) == FALSE) {
        return;
    }
    status.modifiedDate = {local.wYear, local.wMonth, local.wDay};
    status.modifiedTime = {local.wHour, local.wMinute, local.wSecond};
}

// A device ("CON", "COM1") is no file to read or write: it can make the caller wait for ever.
UniqueHandle openFile(const std::wstring& path, DWORD access, DWORD share, DWORD creation, SystemErrorCode& error) {
    UniqueHandle file = adoptHandle(
        ::CreateFileW(systemPath(path).c_str(), access, share, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr));
    error = file ? 0 : lastError();
    if (file && ::GetFileType(file.get()) != FILE_TYPE_DISK) {
        file.reset();
        error = ERROR_ACCESS_DENIED;
    }
    return file;
}

}  // namespace

std::optional<FileAttributes> WindowsFileSystem::attributes(const std::wstring& path) const {
    const QuietSystem quiet;
    const DWORD attributes =
        isSystemText(path) ? ::GetFileAttributesW(systemPath(path).c_str()) : INVALID_FILE_ATTRIBUTES;
    if (attributes == INVALID_FILE_ATTRIBUTES) return std::nullopt;
    return attributes;
}

std::optional<FileStatus> WindowsFileSystem::status(const std::wstring& path) const {
    const QuietSystem quiet;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!isSystemText(path) ||
        ::GetFileAttributesExW(systemPath(path).c_str(), GetFileExInfoStandard, &data) == FALSE) {
        return std::nullopt;
    }
    FileStatus status;
    status.attributes = data.dwFileAttributes;
    status.size = joined(data.nFileSizeHigh, data.nFileSizeLow);
    putLocalTime(data.ftLastWriteTime, status);
    return status;
}

SystemErrorCode WindowsFileSystem::setAttributes(const std::wstring& path, FileAttributes attributes) {
    const QuietSystem quiet;
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    return ::SetFileAttributesW(systemPath(path).c_str(), attributes) == FALSE ? lastError() : 0;
}

SystemErrorCode WindowsFileSystem::createFolder(const std::wstring& path) {
    const QuietSystem quiet;
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    return ::CreateDirectoryW(systemPath(path).c_str(), nullptr) == FALSE ? lastError() : 0;
}

SystemErrorCode WindowsFileSystem::listFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) const {
    const QuietSystem quiet;
    if (!isSystemText(folder)) return ERROR_INVALID_NAME;
    WIN32_FIND_DATAW found{};
    const UniqueFind search = adoptFind(::FindFirstFileW(systemPath(folder + L"*.*").c_str(), &found));
    if (!search) return lastError();
    do {
        entries.push_back({std::wstring(found.cFileName), found.dwFileAttributes,
                           joined(found.nFileSizeHigh, found.nFileSizeLow), isLink(found)});
    } while (::FindNextFileW(search.get(), &found) != FALSE);
    const SystemErrorCode error = lastError();
    return error == ERROR_NO_MORE_FILES ? 0 : error;
}

SystemErrorCode WindowsFileSystem::readFile(const std::wstring& path, std::string& bytes) const {
    const QuietSystem quiet;
    bytes.clear();
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    SystemErrorCode error = 0;
    const UniqueHandle file =
        openFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING, error);
    if (!file) return error;
    std::string piece(kPieceSize, '\0');
    for (;;) {
        DWORD length = 0;
        if (::ReadFile(file.get(), piece.data(), kPieceSize, &length, nullptr) == FALSE) return lastError();
        if (length == 0) return 0;
        bytes.append(piece, 0, length);
    }
}

SystemErrorCode WindowsFileSystem::writeFile(const std::wstring& path, std::string_view bytes) {
    const QuietSystem quiet;
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    SystemErrorCode error = 0;
    // Truncated after opening: CREATE_ALWAYS refuses a hidden file.
    const UniqueHandle file = openFile(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS, error);
    if (!file) return error;
    if (::SetEndOfFile(file.get()) == FALSE) return lastError();
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kPieceSize));
        DWORD length = 0;
        if (::WriteFile(file.get(), bytes.data(), size, &length, nullptr) == FALSE) return lastError();
        if (length == 0) return ERROR_WRITE_FAULT;
        bytes.remove_prefix(length);
    }
    return 0;
}

SystemErrorCode WindowsFileSystem::deleteFile(const std::wstring& path) {
    const QuietSystem quiet;
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    return ::DeleteFileW(systemPath(path).c_str()) == FALSE ? lastError() : 0;
}

SystemErrorCode WindowsFileSystem::removeFolder(const std::wstring& path) {
    const QuietSystem quiet;
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    return ::RemoveDirectoryW(systemPath(path).c_str()) == FALSE ? lastError() : 0;
}

}  // namespace tovar
