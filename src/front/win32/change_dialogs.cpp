#include "front/win32/change_dialogs.h"

#include "shell/paths.h"
#include "shell/text_split.h"
#include "shell/win32/select_dialog.h"

namespace tovar {
namespace {

/// @return the names that were picked in the folder, else the folder itself
std::vector<std::wstring> pickedIn(const fSelect& dialog) {
    std::vector<std::wstring> paths;
    if (dialog.Canceled()) return paths;
    for (const std::wstring_view name : splitText(dialog.FileList(), L"\r\n")) {
        if (!name.empty()) paths.push_back(AddTrailingSeparator(dialog.Folder()).append(name));
    }
    if (paths.empty()) paths.push_back(StripTrailingSeparator(dialog.Folder()));
    return paths;
}

}  // namespace

std::vector<std::wstring> DialogFileQuestions::ask(WindowHandle owner, const std::wstring& folder, Pick pick) {
    const auto window = static_cast<HWND>(owner);
    asking_ = owner;
    open_.emplace();
    struct End {
        std::optional<NewDialogs>& open;
        ~End() { open.reset(); }
    } const end{open_};
    if (pick == Pick::Files) return askForFiles(window, folder);
    fSelect dialog(window, fontName_(), paths_);
    dialog.setFolder(folder);
    dialog.show();
    return pickedIn(dialog);
}

void DialogFileQuestions::close(WindowHandle owner) noexcept {
    if (open_ && owner == asking_) open_->cancel();
}

}  // namespace tovar
