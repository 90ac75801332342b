// SampleHost.exe [--report] [--compress] [--configure [--details]] [--extract] [ARCHIVE or FOLDER]
//
// --compress, --configure, --details and --extract press the buttons of those names, so that scripts see the dialogs.
//
// --report writes one line to standard output as soon as the window shows what it was started with: scripts wait for it
// before they take a picture or a time.

#include <windows.h>

#include <commctrl.h>
#include <ole2.h>

#include <cstdio>
#include <cwchar>
#include <string>

#include "host/sample/win32/host_window.h"

namespace {

/// The window of a message that waits for an answer, or null.
HWND shownMessage() {
    HWND found = nullptr;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM result) WINAPI -> BOOL {
            wchar_t name[16];
            if (::GetClassNameW(window, name, 16) == 0 || std::wcscmp(name, L"#32770") != 0) return TRUE;
            if (!::IsWindowVisible(window)) return TRUE;
            *reinterpret_cast<HWND*>(result) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

/// Reports a message box that came up instead of the archive: its own loop keeps the start from returning.
void CALLBACK reportMessage(HWND, UINT, UINT_PTR timer, DWORD) {
    if (shownMessage() == nullptr) return;
    ::KillTimer(nullptr, timer);
    std::printf("a message is shown\n");
    std::fflush(stdout);
}

void press(HWND parent, const wchar_t* button) {
    ::SendMessageW(::FindWindowExW(parent, nullptr, WC_BUTTONW, button), BM_CLICK, 0, 0);
}

/// Presses Details in the dialog that a button brings up.
void CALLBACK pressDetails(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = shownMessage();
    if (dialog == nullptr) return;
    ::KillTimer(nullptr, timer);
    press(dialog, L"&Details >>");
}

/// Selects all that is in the folder and presses Compress.
void compressAll(HWND host) {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED;
    ::SendMessageW(::FindWindowExW(host, nullptr, WC_LISTVIEWW, nullptr), LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                   reinterpret_cast<LPARAM>(&item));
    press(host, L"&Compress");
}

/// Reports the dialog that a button has brought up.
void CALLBACK reportDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    if (shownMessage() == nullptr) return;
    ::KillTimer(nullptr, timer);
    std::printf("a dialog is shown\n");
    std::fflush(stdout);
}

/// Presses the browser's Extract, once messages run.
BOOL CALLBACK pressExtract(HWND window, LPARAM) {
    wchar_t name[32];
    if (::GetClassNameW(window, name, 32) == 0 || std::wcscmp(name, TOOLBARCLASSNAMEW) != 0) return TRUE;
    TBBUTTON button{};
    for (WPARAM i = 0; ::SendMessageW(window, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button)) != FALSE; ++i) {
        wchar_t text[64] = L"";
        const auto command = static_cast<WPARAM>(button.idCommand);
        const LRESULT length = ::SendMessageW(window, TB_GETBUTTONTEXTW, command, 0);
        if (length < 0 || length >= 64) continue;
        ::SendMessageW(window, TB_GETBUTTONTEXTW, command, reinterpret_cast<LPARAM>(text));
        if (std::wcscmp(text, L"Extract") != 0) continue;
        ::PostMessageW(::GetParent(window), WM_COMMAND, command, reinterpret_cast<LPARAM>(window));
        return FALSE;
    }
    return TRUE;
}

double millisecondsSince(const LARGE_INTEGER& start) {
    LARGE_INTEGER now, frequency;
    ::QueryPerformanceCounter(&now);
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart - start.QuadPart) * 1000.0 / static_cast<double>(frequency.QuadPart);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    bool report = false, compress = false, configure = false, details = false, extract = false;
    std::wstring path;
    for (int i = 1; i < count; ++i) {
        if (std::wcscmp(arguments[i], L"--report") == 0) {
            report = true;
        } else if (std::wcscmp(arguments[i], L"--compress") == 0) {
            compress = true;
        } else if (std::wcscmp(arguments[i], L"--configure") == 0) {
            configure = true;
        } else if (std::wcscmp(arguments[i], L"--details") == 0) {
            details = true;
        } else if (std::wcscmp(arguments[i], L"--extract") == 0) {
            extract = true;
        } else {
            path = arguments[i];
        }
    }
    if (FAILED(::OleInitialize(nullptr))) return 1;
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);

    int result = 1;
    {
        tovar::host::HostWindow window;
        if (window.create(::GetModuleHandleW(nullptr))) {
            ::ShowWindow(window.hwnd(), SW_SHOW);
            if (details) ::SetTimer(nullptr, 0, 50, &pressDetails);
            const UINT_PTR timer = report ? ::SetTimer(nullptr, 0, 100, &reportMessage) : 0;
            const std::wstring archive = window.showStart(path);
            window.paintNow();
            LARGE_INTEGER begin;
            ::QueryPerformanceCounter(&begin);
            if (compress) compressAll(window.hwnd());
            if (configure) press(window.hwnd(), L"Con&figure");
            const bool shown = !archive.empty() && window.open(archive);
            window.paintNow();
            if (extract) ::EnumChildWindows(window.hwnd(), &pressExtract, 0);
            if (report) ::KillTimer(nullptr, timer);
            if (report && extract) {
                ::SetTimer(nullptr, 0, 100, &reportDialog);
            } else if (report) {
                std::printf("%s after %.1f ms\n", shown ? "the archive is shown" : "no archive is shown",
                            millisecondsSince(begin));
                std::fflush(stdout);
            }
            result = window.run();
        }
    }
    ::OleUninitialize();
    return result;
}
