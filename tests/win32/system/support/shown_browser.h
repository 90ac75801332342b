#pragma once
#include <windows.h>

#include <string>
#include <vector>

namespace tovar::test {

using Texts = std::vector<std::wstring>;

/// What an archive browser of this process shows, read from its controls, and what its user does there. A browser that
/// is gone shows nothing.
class ShownBrowser {
public:
    explicit ShownBrowser(HWND window) : window_(window) {}
    /// The browser in a host's window.
    static ShownBrowser in(HWND host) { return ShownBrowser(::FindWindowExW(host, nullptr, L"fArcMain", nullptr)); }

    [[nodiscard]] HWND window() const { return window_; }
    [[nodiscard]] bool isThere() const { return window_ != nullptr && ::IsWindow(window_) != FALSE; }
    [[nodiscard]] bool isVisible() const { return isThere() && ::IsWindowVisible(window_) != FALSE; }
    [[nodiscard]] std::wstring title() const;

    [[nodiscard]] HWND list() const { return control(L"SysListView32"); }
    [[nodiscard]] HWND tree() const { return control(L"SysTreeView32"); }
    [[nodiscard]] std::wstring status() const;
    [[nodiscard]] std::wstring address() const;

    [[nodiscard]] Texts headers() const;
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] std::wstring cell(int row, int column) const;
    /// All cells of a row.
    [[nodiscard]] Texts row(int row) const;
    /// The first column of every row.
    [[nodiscard]] Texts names() const;

    [[nodiscard]] std::wstring selectedFolder() const;
    /// The folders below the root, one level deep.
    [[nodiscard]] Texts folders() const;

    void openRow(int row) const;
    void selectRow(int row) const;
    void close() const { ::SendMessageW(window_, WM_CLOSE, 0, 0); }

private:
    [[nodiscard]] HWND control(const wchar_t* className) const {
        return ::FindWindowExW(window_, nullptr, className, nullptr);
    }
    [[nodiscard]] std::wstring folderText(LPARAM item) const;

    HWND window_;
};

/// The text of a window or control of this process.
[[nodiscard]] std::wstring windowText(HWND window);

/// The text of a status bar's first part.
[[nodiscard]] std::wstring statusText(HWND statusBar);

/// One cell of a list.
[[nodiscard]] std::wstring listText(HWND list, int row, int column);

/// Double-clicks a row of a list at the place where it is.
void doubleClickRow(HWND list, int row);

}  // namespace tovar::test
