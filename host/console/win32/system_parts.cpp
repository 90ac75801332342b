#include <windows.h>

#include <filesystem>

#include "host/console/system_services.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/regional_settings.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"

namespace tovar::host {
namespace {

std::wstring programFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return std::filesystem::path(path).parent_path().wstring();
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace

SystemParts systemParts() {
    SystemParts parts;
    parts.paths = std::make_unique<WindowsSystemPaths>();
    parts.files = std::make_unique<WindowsFileSystem>();
    parts.information = std::make_unique<WindowsSystemInformation>();
    parts.ansi = std::make_unique<AnsiCodec>();
    parts.regional = loadRegionalSettings();
    parts.programFolder = programFolder();
    return parts;
}

}  // namespace tovar::host
