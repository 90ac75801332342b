#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "create/pack_view.h"

namespace tovar {

/// Asks for the name of an archive, which may be there or not. Leaves the current folder as it is.
/// @return empty when the user gives none
[[nodiscard]] std::wstring askForArchive(HWND owner, const ArchiveQuestion& question);

/// Asks for files.
/// @param folder  where to begin
/// @return full paths
[[nodiscard]] std::vector<std::wstring> askForFiles(HWND owner, const std::wstring& folder);

}  // namespace tovar
