// Another program beside the tests:
//   win32_drag_helper take X Y FOLDER      writes the streams that are dropped on a window there into the folder
//   win32_drag_helper paste FILE           writes the names of the clipboard's list of files into a file
//   win32_drag_helper hold FILE            holds the clipboard
// "take" and "hold" make a file "ready" beside the folder or file, and end when it is deleted.
#include <windows.h>
// windows.h first
#include <ole2.h>
#include <shellapi.h>

#include <filesystem>
#include <fstream>
#include <string_view>

#include "win32/drag/support/drop_window.h"

namespace {

namespace fs = std::filesystem;

void runUntilGone(const fs::path& ready) {
    std::ofstream(ready) << "ready";
    while (fs::exists(ready)) {
        for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) ::DispatchMessageW(&message);
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}

int take(int x, int y, const fs::path& folder) {
    if (FAILED(::OleInitialize(nullptr))) return 2;
    {
        const tovar::test::DropWindow window(folder, tovar::test::Taking::Streams, {x, y});
        if (!window.isReady()) return 2;
        runUntilGone(folder.parent_path() / L"ready");
    }
    ::OleUninitialize();
    return 0;
}

int paste(const fs::path& file) {
    std::ofstream out(file, std::ios::binary);
    if (!::OpenClipboard(nullptr)) return 2;
    if (const auto drop = static_cast<HDROP>(::GetClipboardData(CF_HDROP)); drop != nullptr) {
        const UINT count = ::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
        for (UINT each = 0; each < count; ++each) {
            wchar_t path[MAX_PATH];
            ::DragQueryFileW(drop, each, path, MAX_PATH);
            const std::u8string name = fs::path(path).u8string();
            out.write(reinterpret_cast<const char*>(name.data()), static_cast<std::streamsize>(name.size()));
            out << '\n';
        }
    }
    ::CloseClipboard();
    return 0;
}

int hold(const fs::path& file) {
    // Some systems take all programs that open it without a window for the same one.
    const tovar::UniqueWindow window(
        ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
    if (!::OpenClipboard(window.get())) return 2;
    runUntilGone(file.parent_path() / L"ready");
    ::CloseClipboard();
    return 0;
}

}  // namespace

int main() {
    int count = 0;
    wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    const std::wstring_view command = count > 1 ? words[1] : L"";
    int result = 1;
    if (command == L"take" && count == 5) result = take(_wtoi(words[2]), _wtoi(words[3]), words[4]);
    if (command == L"paste" && count == 3) result = paste(words[2]);
    if (command == L"hold" && count == 3) result = hold(words[2]);
    ::LocalFree(words);
    return result;
}
