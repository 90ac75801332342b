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

/// The windows of the calling thread that come up as long as the object lives: the system's dialogs cannot be told from
/// those of the host otherwise.
class NewDialogs {
public:
    NewDialogs();
    /// Presses Cancel in all of them.
    void cancel() const noexcept;

private:
    static BOOL CALLBACK note(HWND window, LPARAM windows) noexcept;
    static BOOL CALLBACK cancelNew(HWND window, LPARAM dialogs) noexcept;

    std::vector<HWND> before_;
};

}  // namespace tovar
