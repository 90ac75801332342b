#include "browser/win32/windows_progress_dialogs.h"

#include "browser/win32/progress_dialog.h"

namespace tovar {

std::unique_ptr<ArcProgress> WindowsProgressDialogs::show(WindowHandle owner) {
    auto dialog = std::make_unique<fArcProgress>(regional_);
    dialog->load(static_cast<HWND>(owner), fontName_());
    dialog->show();
    return dialog;
}

}  // namespace tovar
