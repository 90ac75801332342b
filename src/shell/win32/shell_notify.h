#pragma once
#include <windows.h>

#include <optional>
#include <string>

#include "shell/win32/window.h"

namespace tovar {

/// Hears what the shell tells of files.
class ShellNotifyListener {
public:
    virtual ~ShellNotifyListener() = default;
    /// @param first   full path of the file; empty when it has none
    /// @param second  the path that it has got; empty when it has no other one
    virtual void onShellNotify(const std::wstring& first, const std::wstring& second) = 0;
};

/// The control `WenShellNotify`: tells its window of files that come, change or get another name, wherever that is on
/// the desktop. It shows nothing.
/// Source: Windows SDK documentation, SHChangeNotifyRegister
class WenShellNotify final : private Window {
public:
    /// @param listener  outlives the control
    explicit WenShellNotify(ShellNotifyListener& listener) : listener_(listener) {}
    ~WenShellNotify() override { destroy(); }

    /// @param parent  its window, with which it goes
    /// @return false on failure
    bool create(HWND parent, int id);
    using Window::hwnd;

    /// Begins to watch.
    /// @return false on failure
    bool start();
    void stop() noexcept;

private:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void tell(HANDLE change, DWORD process);

    ShellNotifyListener& listener_;
    ULONG registration_ = 0;
};

}  // namespace tovar
