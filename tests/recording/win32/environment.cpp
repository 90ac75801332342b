#include <windows.h>

#include <stdexcept>
#include <string>

#include "recording/session.h"

namespace recording {

std::filesystem::path programFolder() {
    wchar_t path[MAX_PATH] = {};
    const DWORD length = ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    if (length == 0 || length == MAX_PATH) throw std::runtime_error("the program's path is not known");
    return std::filesystem::path(path).parent_path();
}

std::filesystem::path makeTemporaryFolder() {
    const std::filesystem::path above = std::filesystem::temp_directory_path();
    // A run that was ended may have left its folders behind: only one that was not there is ours.
    std::filesystem::path made;
    unsigned number = ::GetTickCount();
    do {
        made = above / (L"rec" + std::to_wstring(number++));
    } while (!std::filesystem::create_directory(made));
    return made;
}

void setEnvironment(const char* variable, const std::filesystem::path& value) {
    const std::wstring name(variable, variable + std::char_traits<char>::length(variable));
    ::SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
}

}  // namespace recording
