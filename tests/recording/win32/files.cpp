#include "recording/files.h"

#include <windows.h>

namespace recording {

// The process's own environment, not the C library's copy: a test sets it while the library is loaded.
UniqueFile openFileNamedBy(const char* variable, const char* mode) {
    const std::wstring name(variable, variable + std::char_traits<char>::length(variable));
    const std::wstring wideMode(mode, mode + std::char_traits<char>::length(mode));
    wchar_t path[MAX_PATH] = {};
    const DWORD length = ::GetEnvironmentVariableW(name.c_str(), path, MAX_PATH);
    return UniqueFile(length > 0 && length < MAX_PATH ? ::_wfopen(path, wideMode.c_str()) : nullptr);
}

}  // namespace recording
