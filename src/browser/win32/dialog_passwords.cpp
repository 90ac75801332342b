#include "browser/win32/dialog_passwords.h"

#include "browser/win32/password_dialog.h"

namespace tovar {

std::optional<std::wstring> DialogPasswords::ask(WindowHandle owner, std::wstring_view archive) {
    fArcPassword dialog{std::wstring(archive)};
    dialog.ask(static_cast<HWND>(owner), fontName_());
    if (dialog.Cancelled()) return std::nullopt;
    return dialog.Password();
}

}  // namespace tovar
