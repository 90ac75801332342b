#include <windows.h>

#include <stdexcept>

#include "recording/session.h"

namespace recording {

std::filesystem::path programFolder() {
    wchar_t path[MAX_PATH] = {};
    const DWORD length = ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    if (length == 0 || length == MAX_PATH) throw std::runtime_error("the program's path is not known");
    return std::filesystem::path(path).parent_path();
}

std::filesystem::path makeTemporaryFolder() {
    wchar_t folder[MAX_PATH] = {};
    wchar_t name[MAX_PATH] = {};
    if (::GetTempPathW(MAX_PATH, folder) == 0 || ::GetTempFileNameW(folder, L"rec", 0, name) == 0) {
        throw std::runtime_error("no temporary folder");
    }
    // The file keeps the name ours while a folder of a longer name is made.
    const std::filesystem::path made = std::wstring(name) + L".folder";
    std::filesystem::create_directory(made);
    std::filesystem::remove(name);
    return made;
}

void setEnvironment(const char* variable, const std::filesystem::path& value) {
    const std::wstring name(variable, variable + std::char_traits<char>::length(variable));
    ::SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
}

}  // namespace recording
