#include "archivers/unpacking/win32/places.h"

#include <windows.h>

#include <algorithm>
#include <atomic>

#include "archivers/unpacking/win32/handle.h"

namespace archiver {
namespace {

/// A tag that says it stands for another place, or none that can be read.
bool leadsElsewhere(const std::wstring& path) noexcept {
    const UniqueHandle handle = adoptHandle(
        ::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILE_ATTRIBUTE_TAG_INFO info{};
    if (!handle || !::GetFileInformationByHandleEx(handle.get(), FileAttributeTagInfo, &info, sizeof info)) return true;
    return info.ReparseTag == 0 || IsReparseTagNameSurrogate(info.ReparseTag);
}

}  // namespace

PlaceKind kindOf(const std::wstring& path, unsigned long attributes) noexcept {
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && leadsElsewhere(path)) return PlaceKind::kLink;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PlaceKind::kFolder : PlaceKind::kFile;
}

PlaceKind kindOf(const std::wstring& path) noexcept {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? PlaceKind::kNothing : kindOf(path, attributes);
}

std::wstring longPathOf(const std::filesystem::path& path) {
    std::wstring full;
    if (const std::wstring& native = path.native(); native.starts_with(L"\\\\?\\")) {
        full = native;
    } else {
        full.resize(::GetFullPathNameW(native.c_str(), 0, nullptr, nullptr));
        const DWORD length = ::GetFullPathNameW(native.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length == 0 || length >= full.size()) return {};
        full.resize(length);
        const bool network = full.starts_with(L"\\\\");
        full.replace(0, network ? 2 : 0, network ? L"\\\\?\\UNC\\" : L"\\\\?\\");
    }
    full.erase(full.find_last_not_of(L'\\') + 1);
    return full;
}

bool isPlainPart(std::wstring_view part) noexcept {
    constexpr std::wstring_view kEndsName(L"\\/:\0", 4);
    return !part.empty() && part != L"." && part != L".." && part.find_first_of(kEndsName) == part.npos;
}

std::wstring temporaryName() {
    static std::atomic<unsigned> next{0};
    return L"~tovarex-" + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(next++) + L".tmp";
}

bool renameOver(const std::wstring& from, const std::wstring& to) noexcept {
    if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    const DWORD error = ::GetLastError();
    const DWORD attributes = ::GetFileAttributesW(to.c_str());
    const bool isProtected = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0 &&
                             (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (isProtected && ::SetFileAttributesW(to.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY})) {
        if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
        ::SetFileAttributesW(to.c_str(), attributes);
    }
    ::SetLastError(error);
    return false;
}

}  // namespace archiver
