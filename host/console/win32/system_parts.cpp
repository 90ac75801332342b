#include <windows.h>

#include <filesystem>

#include "host/console/system_services.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/regional_settings.h"
#include "shell/win32/system_calls.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_information.h"
#include "shell/win32/windows_system_paths.h"

namespace tovar::host {
SystemParts systemParts() {
    SystemParts parts;
    parts.paths = std::make_unique<WindowsSystemPaths>();
    parts.files = std::make_unique<WindowsFileSystem>();
    parts.information = std::make_unique<WindowsSystemInformation>();
    parts.ansi = std::make_unique<AnsiCodec>();
    parts.regional = loadRegionalSettings();
    parts.programFolder = std::filesystem::path(moduleFile(nullptr)).parent_path().wstring();
    parts.questionOwner = std::shared_ptr<void>(
        ::CreateWindowExW(0, L"STATIC", L"tovar", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr),
        [](void* window) {
            if (window != nullptr) ::DestroyWindow(static_cast<HWND>(window));
        });
    parts.secrets = systemSecretInput();
    return parts;
}

}  // namespace tovar::host
