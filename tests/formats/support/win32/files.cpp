#include "formats/support/files.h"

#include <windows.h>

#include <stdlib.h>
#include <time.h>

namespace archiver::test {

std::filesystem::path programFolder() {
    std::wstring path(32768, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path();
}

unsigned codePageOf(LegacyPage page) {
    const unsigned current = page == LegacyPage::kOem ? ::GetOEMCP() : ::GetACP();
    if (current != CP_UTF8) return current;
    return page == LegacyPage::kOem ? 437 : 1252;
}

void TimeZone::set(const char* zone) {
    ::_putenv_s("TZ", zone);
    ::_tzset();
}

}  // namespace archiver::test
