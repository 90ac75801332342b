#pragma once
#include <string>

#include "shell/file_system.h"

namespace tovar {

/// Removes a folder with all that is in it, as far as that goes. Links go, and what they lead to stays.
/// @param root  ends with a separator
void removeTree(FileSystem& files, const std::wstring& root);

}  // namespace tovar
