#pragma once
#include <windows.h>

#include <memory>
#include <string>

#include "host/sample/disk_folder_reader.h"
#include "host/sample/host_presenter.h"
#include "host/sample/win32/com_component.h"
#include "host/sample/win32/host_object.h"

namespace tovar::host {

/// The host's window: a row of buttons, the path, the list of a folder, and a status bar. The archive browser comes up
/// inside it.
class HostWindow final : private HostView {
public:
    HostWindow() = default;
    ~HostWindow() override;
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    /// @return whether the window could be made; says why on standard error when not
    bool create(HINSTANCE instance);

    /// Shows the folder that the program was started with, or the one in which its archive lies.
    /// @return the archive's full path; empty for a folder
    std::wstring showStart(const std::wstring& path);

    /// @return whether the archive browser came up
    bool open(const std::wstring& archive);

    /// Runs until the window is closed.
    int run();

    [[nodiscard]] HWND hwnd() const { return window_; }
    /// Draws everything that is still to be drawn, children included.
    void paintNow() const;

private:
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool onCreate();
    void onSize();
    void onCommand(int control);
    void onClose();
    LRESULT onNotify(const NMHDR& header);
    void openSelected();
    template <class Operation>
    void operate(Operation operation);
    HWND makeChild(const wchar_t* className, const wchar_t* text, DWORD style, int id);
    [[nodiscard]] int scaled(int pixels) const;

    void showFolder(const std::wstring& path, const std::vector<FolderItem>& items) override;
    void showStatus(const std::wstring& text) override;

    HINSTANCE instance_ = nullptr;
    HWND window_ = nullptr, list_ = nullptr, path_ = nullptr, status_ = nullptr;
    HFONT font_ = nullptr;
    std::unique_ptr<HostObject> object_;
    std::unique_ptr<ComComponent> component_;
    DiskFolderReader reader_;
    std::unique_ptr<HostPresenter> presenter_;
    bool operating_ = false, closeWanted_ = false;
};

}  // namespace tovar::host
