// Opens an archive in the browser window and extracts it with the real dialog, as a user would:
//    bench_extraction ARCHIVE FOLDER [selected]
//
// FOLDER must be there. All members are extracted, or, with "selected", all rows of the list are selected before, so
// that the names go over in a list file. Prints what was done and the milliseconds from OK until the dialog is gone.
// Nothing else posts messages meanwhile: they would be part of the time.

#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <filesystem>
#include <string>

#include "benchmarks/win32/stopwatch.h"
#include "browser/archive_actions.h"
#include "browser/browser_commands.h"
#include "browser/win32/browser_controls.h"
#include "browser/win32/browser_factory.h"
#include "browser/win32/unpack_dialog.h"
#include "browser/win32/unpack_dialog_controls.h"
#include "browser/win32/windows_progress_dialogs.h"
#include "host/console/system_services.h"
#include "shell/win32/pending_messages.h"
#include "shell/win32/regional_settings.h"
#include "shell/win32/system_message_boxes.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_programs.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"
#include "shell/work_folder.h"

namespace {

using tovar::bench::Clock;

class Pump final : public tovar::MessagePump {
public:
    void processPending() override { tovar::runPendingMessages(); }
};

/// Presses OK in the extraction dialog once it can be pressed.
class Hand {
public:
    Hand() { timer_ = ::SetTimer(nullptr, 0, 10, &onTimer); }
    ~Hand() { ::KillTimer(nullptr, timer_); }
    Hand(const Hand&) = delete;
    Hand& operator=(const Hand&) = delete;

    static inline HWND dialog = nullptr;  ///< the one whose OK was pressed
    static inline Clock::time_point pressed{};

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (dialog == nullptr) ::EnumThreadWindows(::GetCurrentThreadId(), &onWindow, 0);
    }
    static BOOL CALLBACK onWindow(HWND window, LPARAM) {
        const HWND ok = ::GetDlgItem(window, IDOK);
        if (::GetDlgItem(window, IDC_WEN_FOLDER_TREE_VIEW1) == nullptr || !::IsWindowEnabled(ok)) return TRUE;
        dialog = window;
        pressed = Clock::now();
        ::PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), reinterpret_cast<LPARAM>(ok));
        return FALSE;
    }

    UINT_PTR timer_ = 0;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3 && count != 4) {
        std::fprintf(stderr, "bench_extraction ARCHIVE FOLDER [selected]\n");
        return 2;
    }
    tovar::SystemMessageBoxes messages;
    tovar::host::SystemServices system(messages);
    const std::wstring file = std::filesystem::absolute(arguments[1]).wstring();
    std::wstring folder = std::filesystem::absolute(arguments[2]).wstring();
    const tovar::KindRow* const row = tovar::kindByName(file);
    if (row == nullptr || row->makeDriver == nullptr) return 1;
    const auto driver = row->makeDriver(system.drivers());
    const HWND host = ::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1000, 700,
                                        nullptr, nullptr, nullptr, nullptr);
    tovar::WindowsSystemPaths paths;
    tovar::WindowsSystemInformation information;
    tovar::WindowsFileSystem files;
    tovar::PathOperations operations(files, paths, information, messages);
    tovar::WorkFolder workFolder(operations, files, paths);
    workFolder.resetToTempFolder();
    Pump pump;
    tovar::WindowsPrograms programs;
    tovar::ProgramLauncher launcher(programs, pump);
    tovar::WindowsUnpackDialogs dialogs;
    tovar::OpenedCopies copies(files);
    const tovar::RegionalSettings regional = tovar::loadRegionalSettings();
    tovar::WindowsProgressDialogs progress(regional, [] { return std::wstring(); });
    const tovar::ArchiveActionsPorts ports{workFolder, operations, files,   messages, pump,
                                           progress,   launcher,   dialogs, copies,   folder};
    tovar::WindowsBrowserFactory factory(files, messages, [&](const tovar::BrowserRequest& request) {
        return std::make_unique<tovar::ArchiveActions>(ports, request.fontName);
    });
    const auto browser = factory.create({file, driver.get(), workFolder.path(), {}}, nullptr);
    if (browser == nullptr) return 1;
    const auto window = static_cast<HWND>(browser->hWnd());
    ::SetWindowLongPtrW(window, GWL_STYLE, ::GetWindowLongPtrW(window, GWL_STYLE) | WS_CHILD);
    ::SetParent(window, host);
    ::SetWindowPos(window, nullptr, 0, 0, 900, 600, SWP_NOZORDER);
    browser->FillControl(L"\\");
    browser->showModeless();
    if (count == 4) ::SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(tovar::mnuEditSelectAll), 0);
    tovar::bench::WaitProbe::processMessages();
    {
        const Hand hand;
        ::PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(tovar::mnuEditExtract), 0);
        // The command returns to this loop once the dialog is gone.
        while (Hand::dialog == nullptr) {
            ::WaitMessage();
            tovar::bench::WaitProbe::processMessages();
        }
        std::printf("extract %s\t%.1f\n", count == 4 ? "the selected" : "all",
                    tovar::bench::millisecondsSince(Hand::pressed));
    }
    browser->unload();
    ::DestroyWindow(host);
    return 0;
}
