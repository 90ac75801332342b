#pragma once
#include <string>

#include "shell/path_operations.h"

namespace tovar {

/// The dialog that asks for the name of a new folder, as its caller sees it.
class NewFolderDialog {
public:
    virtual ~NewFolderDialog() = default;
    /// Shows the dialog, centred and modal.
    /// @return its NewFolder: the name, empty when it was cancelled
    virtual std::wstring ask() = 0;
};

/// Lets the user make a folder inside another one.
/// @param parentFolder  gets a separator at its end
/// @return the new folder's name; empty when there is no such parent folder, the user cancelled, or the folder could
///         not be made, of which the user has been told
std::wstring PromptNewFolder(std::wstring& parentFolder, NewFolderDialog& dialog, PathOperations& paths);

}  // namespace tovar
