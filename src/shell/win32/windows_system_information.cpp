#include "shell/win32/windows_system_information.h"

#include <windows.h>

#include <array>
#include <vector>

#include "shell/win32/system_calls.h"

namespace tovar {
namespace {

constexpr DWORD kUserLanguage = MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT);  // 0x0400
constexpr DWORD kVersionSignature = 0xFEEF04BD;
static_assert(sizeof(VS_FIXEDFILEINFO) == 52);

}  // namespace

std::wstring WindowsSystemInformation::errorText(SystemErrorCode code) const {
    std::array<wchar_t, 256> buffer{};
    ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                     nullptr, code, kUserLanguage, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    return buffer.data();
}

std::optional<FileVersion> WindowsSystemInformation::fileVersion(const std::wstring& path) const {
    const QuietSystem quiet;
    DWORD unused = 0;
    const DWORD size = isSystemText(path) ? ::GetFileVersionInfoSizeW(path.c_str(), &unused) : 0;
    if (size == 0) return std::nullopt;
    std::vector<BYTE> block(size);
    void* record = nullptr;
    UINT length = 0;
    if (::GetFileVersionInfoW(path.c_str(), 0, size, block.data()) == FALSE ||
        ::VerQueryValueW(block.data(), LR"(\)", &record, &length) == FALSE || length < sizeof(VS_FIXEDFILEINFO)) {
        return std::nullopt;
    }
    const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(record);
    if (version.dwSignature != kVersionSignature) return std::nullopt;
    return FileVersion{version.dwFileVersionMS, version.dwFileVersionLS};
}

}  // namespace tovar
