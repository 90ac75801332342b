#include <filesystem>

#include "host/console/system_services.h"
#include "shell/posix/posix_file_system.h"
#include "shell/posix/posix_system_information.h"
#include "shell/posix/posix_system_paths.h"

namespace tovar::host {

SystemParts systemParts() {
    SystemParts parts;
    parts.paths = std::make_unique<PosixSystemPaths>();
    parts.files = std::make_unique<PosixFileSystem>();
    parts.information = std::make_unique<PosixSystemInformation>();
    parts.ansi = std::make_unique<Utf8Codec>();
    parts.programFolder = std::filesystem::read_symlink("/proc/self/exe").parent_path().wstring();
    parts.questionOwner = std::make_shared<char>();
    parts.secrets = systemSecretInput();
    return parts;
}

}  // namespace tovar::host
