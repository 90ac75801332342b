#include "archivers/commands/library_settings.h"

#include <windows.h>

#include <optional>
#include <thread>

#include "archivers/commands/question_texts.h"
#include "archivers/commands/win32/handles.h"
#include "archivers/commands/win32/settings_dialog.h"
#include "archivers/commands/win32/wide_text.h"

namespace archiver {
namespace {

constexpr wchar_t kShowProgress[] = L"ShowProgress";
constexpr wchar_t kProcessors[] = L"Processors";

std::wstring keyOf(std::string_view library) { return L"Software\\TovarEx\\Archivers\\" + wideOf(library); }

std::optional<DWORD> numberOf(HKEY key, const wchar_t* name) noexcept {
    DWORD type = 0, number = 0, size = sizeof number;
    const LSTATUS status = ::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&number), &size);
    if (status != ERROR_SUCCESS || type != REG_DWORD || size != sizeof number) return std::nullopt;
    return number;
}

bool setNumber(HKEY key, const wchar_t* name, DWORD number) noexcept {
    return ::RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number) ==
           ERROR_SUCCESS;
}

}  // namespace

LibrarySettings loadLibrarySettings(std::string_view library) noexcept {
    LibrarySettings settings;
    try {
        HKEY opened = nullptr;
        if (::RegOpenKeyExW(HKEY_CURRENT_USER, keyOf(library).c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) {
            return settings;
        }
        const UniqueKey key(opened);
        settings.showProgress = numberOf(opened, kShowProgress).value_or(1) != 0;
        const DWORD processors = numberOf(opened, kProcessors).value_or(0);
        if (processors <= kMostProcessors) settings.processors = processors;
    } catch (...) {
        // Without memory for the key's name there are the defaults.
    }
    return settings;
}

bool storeLibrarySettings(std::string_view library, const LibrarySettings& settings) noexcept {
    try {
        HKEY opened = nullptr;
        if (::RegCreateKeyExW(HKEY_CURRENT_USER, keyOf(library).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened,
                              nullptr) != ERROR_SUCCESS) {
            return false;
        }
        const UniqueKey key(opened);
        const bool progressKept = setNumber(opened, kShowProgress, settings.showProgress ? 1 : 0);
        const bool processorsKept = setNumber(opened, kProcessors, settings.processors);
        return progressKept && processorsKept;
    } catch (...) {
        return false;
    }
}

bool showConfigDialog(WindowHandle owner, const std::string& title, LibrarySettings& settings) noexcept {
    try {
        const HWND over = ::IsWindow(static_cast<HWND>(owner)) ? static_cast<HWND>(owner) : nullptr;
        const std::string wholeTitle = std::string(texts::kSettingsOf) + title;
        const std::optional<LibrarySettings> chosen =
            SettingsDialog(wholeTitle, settings, std::thread::hardware_concurrency()).ask(over);
        if (!chosen || *chosen == settings) return false;
        settings = *chosen;
        return true;
    } catch (...) {
        return false;
    }
}

bool configureLibrary(WindowHandle owner, const char* library) noexcept {
    try {
        LibrarySettings settings = loadLibrarySettings(library);
        return showConfigDialog(owner, library, settings) && storeLibrarySettings(library, settings);
    } catch (...) {
        return false;
    }
}

}  // namespace archiver
