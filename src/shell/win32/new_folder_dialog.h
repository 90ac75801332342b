#pragma once
#include <windows.h>

#include <string>
#include <string_view>

#include "shell/new_folder_presenter.h"
#include "shell/prompt_new_folder.h"
#include "shell/win32/dialog.h"

namespace tovar {

/// Asks for the name of a new folder.
class fNewFolder final : public Dialog, public NewFolderDialog, private NewFolderView {
public:
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = the dialog's own
    fNewFolder(HWND owner, std::wstring_view fontName) : owner_(owner), fontName_(fontName) {}

    std::wstring ask() override;
    [[nodiscard]] const std::wstring& NewFolder() const noexcept { return presenter_.NewFolder(); }

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onNameChanged();
    void onOk();
    void onCancel() { presenter_.onCancel(); }

    void setName(std::wstring_view name) override;
    void enableOk(bool enabled) override;
    void focusName() override;
    void warn(std::wstring_view text) override;
    void close() override { ::EndDialog(hwnd(), 0); }

    HWND owner_;
    std::wstring fontName_;
    NewFolderPresenter presenter_{*this};
};

}  // namespace tovar
