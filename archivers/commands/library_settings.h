#pragma once
#include <string>
#include <string_view>

#include "archivers/convention/abi.h"

namespace archiver {

/// What a user sets for one library. Every command heeds it that is not told by its line to ignore settings.
struct LibrarySettings {
    bool showProgress = true;  ///< the progress window, where the command has an owner window
    unsigned processors = 0;   ///< to unpack with, 1 to kMostProcessors; 0 = all that the machine has

    bool operator==(const LibrarySettings&) const = default;
};

inline constexpr unsigned kMostProcessors = 16;

/// The settings of the user who runs the process. In Windows they are below
/// HKEY_CURRENT_USER\Software\TovarEx\Archivers\<library>: "ShowProgress" (REG_DWORD, 0 = no) and "Processors"
/// (REG_DWORD); what is missing, of another type or out of range has its default. Natively there are only defaults.
/// @param library  the file's name without its extension, such as "UnZip32"; ASCII letters and digits
LibrarySettings loadLibrarySettings(std::string_view library) noexcept;

/// @return false when they could not be kept; always natively
bool storeLibrarySettings(std::string_view library, const LibrarySettings& settings) noexcept;

/// Asks the user for settings in a window over `owner`, which is disabled meanwhile.
/// @param title     UTF-8
/// @param settings  what is shown at first; changed only when the answer is true
/// @return true when the user confirmed other settings than those given; false when there is no window, natively too
bool showConfigDialog(WindowHandle owner, const std::string& title, LibrarySettings& settings) noexcept;

/// What prefix + "ConfigDialog" does when no command runs: asks, and keeps the answer.
/// @param library  as above; it also is the window's title
/// @return true when settings were changed
bool configureLibrary(WindowHandle owner, const char* library) noexcept;

}  // namespace archiver
