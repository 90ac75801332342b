// An ordinary list view of nine columns, beside which the browser window is measured: bench_list_view ROWS
//
// It is filled row by row without repainting in between, keeps all its texts itself, and is sorted by its own sorting.
// The lines are those of bench_browser_window.

#include <windows.h>
// windows.h first
#include <commctrl.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "benchmarks/win32/stopwatch.h"

namespace {

using tovar::bench::measure;

constexpr const wchar_t* kHeaders[] = {
    L"Name", L"Original (Bytes)", L"Packed (Bytes)", L"Ratio", L"File Type", L"Modified", L"Attr", L"Type", L"CRC32"};
constexpr int kColumns = static_cast<int>(std::size(kHeaders));

std::wstring cell(int row, int column) {
    wchar_t text[64];
    switch (column) {
        case 0:
            std::swprintf(text, std::size(text), L"source_file_%07d.txt", row);
            break;
        case 1:
        case 2:
            std::swprintf(text, std::size(text), L"%10d", 15 + static_cast<int>(std::to_wstring(row).size()));
            break;
        case 5:
            std::swprintf(text, std::size(text), L"5/%d/2001 %02d:%02d", 17 + row / 86400, row / 3600 % 24,
                          row / 60 % 60);
            break;
        case 8:
            std::swprintf(text, std::size(text), L"%04X", static_cast<unsigned>(row) * 2654435761U >> 16);
            break;
        default:
            static constexpr const wchar_t* kTexts[] = {L"100.0%", L"txt file", L"", L"a--w", L"Store"};
            return kTexts[column == 3 ? 0 : column == 4 ? 1 : column == 6 ? 3 : 4];
    }
    return text;
}

void fill(HWND list, int rows) {
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(rows), 0);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            std::wstring text = cell(row, column);
            LVITEMW item{};
            item.mask = column == 0 ? LVIF_TEXT | LVIF_PARAM : LVIF_TEXT;
            item.iItem = row;
            item.lParam = row;
            item.iSubItem = column;
            item.pszText = text.data();
            ::SendMessageW(list, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    }
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    ::UpdateWindow(list);
}

/// Rows tell their numbers as their parameter; the texts are those that the program filled the list from.
int CALLBACK compare(LPARAM left, LPARAM right, LPARAM data) {
    const auto& texts = *reinterpret_cast<const std::vector<std::wstring>*>(data);
    return -::lstrcmpiW(texts[static_cast<std::size_t>(left)].c_str(), texts[static_cast<std::size_t>(right)].c_str());
}

void sort(HWND list, int rows, int column) {
    std::vector<std::wstring> texts;
    for (int row = 0; row < rows; ++row) texts.push_back(cell(row, column));
    ::SendMessageW(list, LVM_SORTITEMS, reinterpret_cast<WPARAM>(&texts), reinterpret_cast<LPARAM>(&compare));
    ::UpdateWindow(list);
}

void selectAll(HWND list) {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_SELECTED;
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ::SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    ::UpdateWindow(list);
}

}  // namespace

int main(int count, char** arguments) {
    const int rows = count == 2 ? std::atoi(arguments[1]) : 0;
    if (rows <= 0) {
        std::fprintf(stderr, "bench_list_view ROWS\n");
        return 2;
    }
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&classes);
    const HWND host = ::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1200, 900,
                                        nullptr, nullptr, nullptr, nullptr);
    const HWND list = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS, 0,
                                        0, 700, 600, host, nullptr, nullptr, nullptr);
    for (int column = 0; column < kColumns; ++column) {
        LVCOLUMNW shown{};
        shown.mask = LVCF_TEXT | LVCF_WIDTH;
        shown.cx = 100;
        shown.pszText = const_cast<wchar_t*>(kHeaders[column]);
        ::SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&shown));
    }
    tovar::bench::WaitProbe probe;
    measure(probe, "show the folder", [&] { fill(list, rows); });
    for (int column = 0; column < kColumns; ++column) {
        const std::wstring header = kHeaders[column];
        measure(probe, ("sort by " + std::string(header.begin(), header.end())).c_str(),
                [&] { sort(list, rows, column); });
    }
    measure(probe, "select all", [&] { selectAll(list); });
    std::printf("peak memory, MiB\t%.1f\t\n", tovar::bench::peakMebibytes());
    ::DestroyWindow(host);
    return 0;
}
