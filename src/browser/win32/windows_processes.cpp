#include "browser/win32/windows_processes.h"

#include <windows.h>
// windows.h first
#include <objbase.h>

#include <array>
#include <span>

#include "shell/win32/handles.h"

namespace tovar {

std::uint32_t WindowsProcesses::current() const { return ::GetCurrentProcessId(); }

bool WindowsProcesses::isRunning(std::uint32_t process) const {
    const UniqueHandle handle(::OpenProcess(SYNCHRONIZE, FALSE, process));
    // Only a number of no process is known to be of none: that of another user's cannot be opened.
    if (!handle) return ::GetLastError() != ERROR_INVALID_PARAMETER;
    return ::WaitForSingleObject(handle.get(), 0) == WAIT_TIMEOUT;
}

std::wstring WindowsProcesses::unguessable() {
    // The system makes these of random numbers (version 4 of RFC 4122).
    GUID number{};
    if (FAILED(::CoCreateGuid(&number))) return {};
    constexpr wchar_t kDigits[] = L"0123456789abcdef";
    std::wstring text;
    for (const unsigned char byte : std::span(reinterpret_cast<const unsigned char*>(&number), sizeof number)) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0xF];
    }
    return text;
}

}  // namespace tovar
