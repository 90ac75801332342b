#pragma once
#include <string>
#include <vector>

#include "browser/browser_actions.h"

namespace tovar {

/// @return the member's path inside the archive: that of a folder with "\" at both ends, that of a file without one
///         before it
[[nodiscard]] std::wstring memberPath(const ArchiveScene& scene, const ArchiveMember& member);

/// @return the members as libraries are told of them: one a line, each line with CR LF at its end, "/" between folders,
///         in quotes where a path has a blank or a comma; of a folder all that lies in it
[[nodiscard]] std::wstring memberListOf(const ArchiveScene& scene, const std::vector<ArchiveMember>& members);

}  // namespace tovar
