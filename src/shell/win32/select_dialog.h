#pragma once
#include <windows.h>

#include <string>
#include <string_view>

#include "shell/select_presenter.h"
#include "shell/win32/dialog.h"
#include "shell/win32/folder_browser.h"

namespace tovar {

/// Lets the user pick a folder, and names of what is inside it: set the folder, show the dialog, read the results.
class fSelect final : public Dialog, private SelectView {
public:
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = the dialog's own
    /// @param paths     must outlive the object
    fSelect(HWND owner, std::wstring_view fontName, PathOperations& paths)
        : owner_(owner), fontName_(fontName), presenter_(*this, paths) {}

    /// Returns when the dialog is closed. One that cannot be shown is canceled.
    void show();

    [[nodiscard]] bool Canceled() const noexcept { return presenter_.Canceled(); }
    [[nodiscard]] const std::wstring& Folder() const noexcept { return presenter_.Folder(); }
    void setFolder(std::wstring_view folder) { presenter_.setFolder(folder); }
    [[nodiscard]] const std::wstring& FileList() const noexcept { return presenter_.FileList(); }

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> onSize(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> onLimits(WPARAM wParam, LPARAM lParam);
    void onOk();
    void onCancel() { presenter_.onCancel(); }

    void enableOk(bool enabled) override;
    void showFolder(const std::wstring& folder) override { browser_.SelectFolder(folder); }
    void close() override { ::EndDialog(hwnd(), 0); }

    HWND owner_;
    std::wstring fontName_;
    SelectPresenter presenter_;
    WenFolderBrowser browser_;
    SIZE least_{};
};

}  // namespace tovar
