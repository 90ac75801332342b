#pragma once
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "create/zip_prompts.h"
#include "shell/win32/dialog.h"

namespace tovar {

/// The input box "Enter the comment". Escape and the close box are Cancel.
class CommentDialog final : private Dialog {
public:
    /// Shows the dialog and returns when it is closed.
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = that of the template
    /// @return nullopt after Cancel, and when the dialog could not be shown
    [[nodiscard]] std::optional<std::wstring> ask(HWND owner, std::wstring_view fontName);

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    void onOk();
    void onCancel() { ::EndDialog(hwnd(), IDCANCEL); }

    HWND owner_ = nullptr;
    std::wstring text_;
};

/// Asks for comments with the input box.
class DialogComments final : public CommentSource {
public:
    /// @param fontName  gives the face name that the host wants at the time; empty = none
    explicit DialogComments(std::function<std::wstring()> fontName) : fontName_(std::move(fontName)) {}

    [[nodiscard]] std::optional<std::wstring> ask(WindowHandle owner) override {
        return CommentDialog().ask(static_cast<HWND>(owner), fontName_());
    }

private:
    std::function<std::wstring()> fontName_;
};

}  // namespace tovar
