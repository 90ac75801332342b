#include "shell/win32/windows_programs.h"

#include <windows.h>
// windows.h first
#include <shellapi.h>

#include <array>

#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

constexpr INT_PTR kLastError = 32;  ///< what the shell answers above it is no error

bool succeeded(HINSTANCE answer) { return reinterpret_cast<INT_PTR>(answer) > kLastError; }

}  // namespace

bool WindowsPrograms::hasProgramFor(const std::wstring& path) const {
    if (!isSystemText(path) || path.size() >= MAX_PATH) return false;  // the shell knows no longer ones here
    std::array<wchar_t, MAX_PATH> program{};
    return succeeded(::FindExecutableW(path.c_str(), nullptr, program.data()));
}

bool WindowsPrograms::open(const std::wstring& path) {
    if (path.empty() || !isSystemText(path)) return false;
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    // The host's process may end, or this thread stop to run messages, before a conversation with a program is over.
    request.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    request.hwnd = ::GetDesktopWindow();
    request.lpFile = path.c_str();
    request.nShow = SW_SHOWNORMAL;
    // Where no program is registered the user may choose one.
    for (const wchar_t* const verb : {L"open", L"openas"}) {
        request.lpVerb = verb;
        request.hInstApp = nullptr;
        if (::ShellExecuteExW(&request) != FALSE) return succeeded(request.hInstApp);
        const auto error = reinterpret_cast<INT_PTR>(request.hInstApp);
        if (error != SE_ERR_NOASSOC && error != SE_ERR_ASSOCINCOMPLETE) return false;
    }
    return false;
}

}  // namespace tovar
