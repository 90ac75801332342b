#include "archivers/commands/library_settings.h"

namespace archiver {

LibrarySettings loadLibrarySettings(std::string_view) noexcept { return {}; }

bool storeLibrarySettings(std::string_view, const LibrarySettings&) noexcept { return false; }

bool showConfigDialog(WindowHandle, const std::string&, LibrarySettings&) noexcept { return false; }

bool configureLibrary(WindowHandle, const char*) noexcept { return false; }

}  // namespace archiver
