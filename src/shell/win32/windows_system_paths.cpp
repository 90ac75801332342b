#include "shell/win32/windows_system_paths.h"

#include <windows.h>

#include <array>

#include "shell/paths.h"
#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

bool isDriveLetter(wchar_t letter) noexcept {
    return (letter >= L'A' && letter <= L'Z') || (letter >= L'a' && letter <= L'z');
}

}  // namespace

std::wstring WindowsSystemPaths::currentFolder() const {
    return textOfSystem([](wchar_t* buffer, DWORD size) { return ::GetCurrentDirectoryW(size, buffer); });
}

SystemErrorCode WindowsSystemPaths::setCurrentFolder(const std::wstring& path) {
    const QuietSystem quiet;
    if (!isSystemText(path)) return ERROR_INVALID_NAME;
    if (::SetCurrentDirectoryW(path.c_str()) == FALSE) return lastError();
    // Windows keeps one current folder; those of the other drives are hidden variables of the environment, which the
    // run-time libraries of most languages keep up, and from which the system resolves "X:".
    const std::wstring folder = currentFolder();
    if (HasDriveRoot(folder)) {
        const std::wstring variable = L"=" + upperCase(folder.substr(0, 2));
        ::SetEnvironmentVariableW(variable.c_str(), folder.c_str());
    }
    return 0;
}

SystemErrorCode WindowsSystemPaths::setCurrentDrive(wchar_t letter) {
    const QuietSystem quiet;
    if (!isDriveLetter(letter)) return ERROR_INVALID_DRIVE;
    const std::array<wchar_t, 3> drive = {letter, L':', L'\0'};
    return ::SetCurrentDirectoryW(drive.data()) == FALSE ? lastError() : 0;
}

std::optional<std::wstring> WindowsSystemPaths::shortPathName(const std::wstring& path) const {
    const QuietSystem quiet;
    if (path.empty() || !isSystemText(path)) return std::nullopt;
    std::wstring name =
        textOfSystem([&path](wchar_t* buffer, DWORD size) { return ::GetShortPathNameW(path.c_str(), buffer, size); });
    if (name.empty()) return std::nullopt;
    return name;
}

std::wstring WindowsSystemPaths::searchPath(const std::wstring& name) const {
    const QuietSystem quiet;
    if (name.empty() || !isSystemText(name)) return {};
    return textOfSystem([&name](wchar_t* buffer, DWORD size) {
        return ::SearchPathW(nullptr, name.c_str(), nullptr, size, buffer, nullptr);
    });
}

std::wstring WindowsSystemPaths::tempFolder() const {
    std::wstring folder = textOfSystem([](wchar_t* buffer, DWORD size) { return ::GetTempPathW(size, buffer); });
    if (folder.empty()) throw SystemError(lastError());
    return folder;
}

std::wstring WindowsSystemPaths::createTempFile(const std::wstring& folder, const std::wstring& prefix) {
    const QuietSystem quiet;
    if (!isSystemText(folder) || !isSystemText(prefix)) throw SystemError(ERROR_INVALID_NAME);
    std::array<wchar_t, MAX_PATH> name{};
    if (::GetTempFileNameW(folder.c_str(), prefix.c_str(), 0, name.data()) == 0) throw SystemError(lastError());
    return name.data();
}

}  // namespace tovar
