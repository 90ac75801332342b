#pragma once
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "shell/system_error.h"

namespace tovar {

/// @return the calling thread's last error; never 0, which would mean success
inline SystemErrorCode lastError() noexcept {
    const DWORD error = ::GetLastError();
    return error == ERROR_SUCCESS ? ERROR_GEN_FAILURE : error;
}

/// A NUL would cut a path on its way to the system: what is then opened is not what was asked for.
inline bool isSystemText(const std::wstring& text) noexcept { return text.find(L'\0') == text.npos; }

/// Keeps the system from asking the user for a disk while it lives; the calling thread only.
class QuietSystem {
public:
    QuietSystem() noexcept { ::SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &previous_); }
    ~QuietSystem() { ::SetThreadErrorMode(previous_, nullptr); }
    QuietSystem(const QuietSystem&) = delete;
    QuietSystem& operator=(const QuietSystem&) = delete;

private:
    DWORD previous_ = 0;
};

/// Calls a function of the form "fill this buffer, or say how long it must be" until the text fits.
/// @param call  DWORD(wchar_t* buffer, DWORD size): 0 on failure, the length of the text, or the size it needs; for a
///              text that was cut `size` will do, as GetModuleFileNameW answers
/// @return empty on failure
template <class Call>
std::wstring textOfSystem(Call call) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const auto size = static_cast<DWORD>(text.size());
        const DWORD length = call(text.data(), size);
        if (length < size) {
            text.resize(length);
            return text;
        }
        text.resize(std::max<std::size_t>(std::size_t{length} + 1, 2 * text.size()));
    }
}

/// @param module  null for the program
/// @return the full path of the module's file; empty on failure
inline std::wstring moduleFile(HMODULE module) {
    return textOfSystem([module](wchar_t* buffer, DWORD size) { return ::GetModuleFileNameW(module, buffer, size); });
}

}  // namespace tovar
