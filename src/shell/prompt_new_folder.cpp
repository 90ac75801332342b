#include "shell/prompt_new_folder.h"

#include "shell/paths.h"

namespace tovar {

std::wstring PromptNewFolder(std::wstring& parentFolder, NewFolderDialog& dialog, PathOperations& paths) {
    parentFolder = AddTrailingSeparator(parentFolder);
    if (!paths.IsFolder(parentFolder)) return {};
    std::wstring name = dialog.ask();
    if (name.empty() || !paths.CreateFolderTree(parentFolder + name)) return {};
    return name;
}

}  // namespace tovar
