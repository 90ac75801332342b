#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "shell/win32/dialog.h"
#include "shell/win32/form_anchors.h"

namespace tovar {

/// Shows a long text, for reading and copying. Its window can be resized.
class MessagesDialog final : private Dialog {
public:
    explicit MessagesDialog(std::wstring text) : text_(std::move(text)) {}

    /// Shows the dialog and returns when it is closed.
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = that of the template
    void show(HWND owner, std::wstring_view fontName);

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onCopy();
    void onClose() { ::EndDialog(hwnd(), IDOK); }

    std::wstring text_;
    HWND owner_ = nullptr;
    FormAnchors anchors_;
};

}  // namespace tovar
