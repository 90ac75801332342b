// Opens an archive in the browser window and works with one of its folders as a user would:
//    bench_browser_window ARCHIVE [FOLDER]
//
// FOLDER is an address inside the archive, such as \all\. Each line that is printed says what was done, how long it
// took until everything was painted, and how long a message waited at most; the last one the peak memory in MiB.

#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <filesystem>
#include <memory>
#include <string>

#include "benchmarks/win32/bare_window.h"
#include "benchmarks/win32/stopwatch.h"
#include "browser/browser_commands.h"
#include "browser/win32/browser_controls.h"
#include "browser/win32/browser_factory.h"
#include "host/console/system_services.h"
#include "shell/win32/windows_file_system.h"

namespace {

using tovar::bench::measure;

class SilentMessages final : public tovar::MessageBoxes {
public:
    void show(tovar::WindowHandle, std::wstring_view, std::wstring_view, tovar::MessageIcon) override {}
};

class Window {
public:
    explicit Window(HWND window) : window_(window) {}

    [[nodiscard]] HWND control(int id) const { return ::GetDlgItem(window_, id); }
    LRESULT send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(control(id), message, wParam, lParam);
    }
    void paint() const { ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN); }
    void run(tovar::BrowserCommand command) const {
        ::SendMessageW(window_, WM_COMMAND, static_cast<WPARAM>(command), 0);
        paint();
    }
    void goTo(const wchar_t* address) const {
        COMBOBOXINFO parts{};
        parts.cbSize = sizeof parts;
        ::GetComboBoxInfo(control(tovar::cmbURL), &parts);
        ::SetWindowTextW(parts.hwndItem, address);
        ::SendMessageW(parts.hwndItem, WM_KEYDOWN, VK_RETURN, 0);
        paint();
    }
    void clickHeader(int column) const {
        NMLISTVIEW click{};
        click.hdr = {control(tovar::LV1), tovar::LV1, static_cast<UINT>(LVN_COLUMNCLICK)};
        click.iItem = -1;
        click.iSubItem = column;
        ::SendMessageW(window_, WM_NOTIFY, tovar::LV1, reinterpret_cast<LPARAM>(&click));
        paint();
    }
    [[nodiscard]] std::string header(int column) const {
        wchar_t text[64] = {};
        LVCOLUMNW shown{};
        shown.mask = LVCF_TEXT;
        shown.pszText = text;
        shown.cchTextMax = static_cast<int>(std::size(text));
        if (!send(tovar::LV1, LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&shown))) return {};
        return {text, text + std::wcslen(text)};
    }

private:
    HWND window_;
};

void work(const Window& window, tovar::bench::WaitProbe& probe, const wchar_t* folder) {
    if (folder != nullptr) measure(probe, "show the folder", [&] { window.goTo(folder); });
    for (int column = 0; !window.header(column).empty(); ++column) {
        measure(probe, ("sort by " + window.header(column)).c_str(), [&] { window.clickHeader(column); });
    }
    measure(probe, "show exact details", [&] { window.run(tovar::mnuViewStyleExactDetails); });
    for (int column = 0; !window.header(column).empty(); ++column) {
        measure(probe, ("sort exactly by " + window.header(column)).c_str(), [&] { window.clickHeader(column); });
    }
    measure(probe, "select all", [&] { window.run(tovar::mnuEditSelectAll); });
    measure(probe, "invert the selection", [&] { window.run(tovar::mnuEditSelectInvert); });
    measure(probe, "show small icons", [&] { window.run(tovar::mnuViewStyleSmallIcons); });
    measure(probe, "show as a list", [&] { window.run(tovar::mnuViewStyleList); });
    measure(probe, "show details again", [&] { window.run(tovar::mnuViewStyleDetails); });
    const auto last = static_cast<WPARAM>(window.send(tovar::LV1, LVM_GETITEMCOUNT) - 1);
    measure(probe, "go to the last row", [&] {
        window.send(tovar::LV1, LVM_ENSUREVISIBLE, last, FALSE);
        window.paint();
    });
    measure(probe, "list again", [&] { window.run(tovar::kRefresh); });
    if (folder != nullptr) measure(probe, "show the root", [&] { window.goTo(L"\\"); });
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2 && count != 3) {
        std::fprintf(stderr, "bench_browser_window ARCHIVE [FOLDER]\n");
        return 2;
    }
    SilentMessages messages;
    tovar::host::SystemServices system(messages);
    const std::wstring file = std::filesystem::absolute(arguments[1]).wstring();
    const tovar::KindRow* const row = tovar::kindByName(file);
    if (row == nullptr || row->makeDriver == nullptr) return 1;
    const auto driver = row->makeDriver(system.drivers());
    const HWND host = ::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1200, 900,
                                        nullptr, nullptr, nullptr, nullptr);
    tovar::bench::WaitProbe probe;
    const auto bringUpBareControls = [&] { tovar::bench::BareWindow(host).show(); };
    // The first window of a process loads the desktop's icons and styles.
    measure(probe, "bare controls, the first time", bringUpBareControls);
    measure(probe, "bare controls", bringUpBareControls);
    // Once before it counts: the window's own listing also finds the library loaded and the file in memory.
    const std::uint32_t members = driver->SetArcFile(file);
    measure(probe, "listing alone", [&] { driver->SetArcFile(file); });
    tovar::WindowsFileSystem files;
    tovar::WindowsBrowserFactory factory(files, messages);
    const std::wstring workFolder = std::filesystem::temp_directory_path().wstring();
    std::unique_ptr<tovar::ArchiveBrowser> browser;
    measure(probe, "open and paint", [&] {
        browser = factory.create({file, driver.get(), workFolder, {}}, nullptr);
        if (browser == nullptr) return;
        const auto handle = static_cast<HWND>(browser->hWnd());
        ::SetWindowLongPtrW(handle, GWL_STYLE, ::GetWindowLongPtrW(handle, GWL_STYLE) | WS_CHILD);
        ::SetParent(handle, host);
        ::SetWindowPos(handle, nullptr, 0, 0, 1000, 700, SWP_NOZORDER);
        browser->FillControl(L"\\");
        browser->showModeless();  // paints
    });
    if (browser == nullptr) return 1;
    const Window window(static_cast<HWND>(browser->hWnd()));
    work(window, probe, count == 3 ? arguments[2] : nullptr);
    std::printf("peak memory, MiB\t%.1f\t\n", tovar::bench::peakMebibytes());
    browser->unload();
    ::DestroyWindow(host);
    return members == 0 ? 1 : 0;
}
