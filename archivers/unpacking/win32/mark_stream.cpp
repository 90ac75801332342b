#include "archivers/unpacking/win32/mark_stream.h"

#include <windows.h>

#include "archivers/unpacking/web_mark.h"
#include "archivers/unpacking/win32/handle.h"

namespace archiver {
namespace {

constexpr wchar_t kStream[] = L":Zone.Identifier";

}  // namespace

bool keepsStreams(const std::wstring& folder) noexcept {
    const UniqueHandle handle = adoptHandle(::CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES,
                                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                          nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    DWORD flags = 0;
    return handle && ::GetVolumeInformationByHandleW(handle.get(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) &&
           (flags & FILE_NAMED_STREAMS) != 0;
}

std::string readWebMark(const std::wstring& file) {
    std::string mark(kLongestWebMark, '\0');
    const UniqueHandle stream = adoptHandle(::CreateFileW((file + kStream).c_str(), GENERIC_READ,
                                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD got = 0;
    if (!stream || !::ReadFile(stream.get(), mark.data(), static_cast<DWORD>(mark.size()), &got, nullptr)) return {};
    return passedWebMark(std::string_view(mark).substr(0, got));
}

void writeWebMark(const std::wstring& file, std::string_view mark) {
    const UniqueHandle stream = adoptHandle(::CreateFileW((file + kStream).c_str(), GENERIC_WRITE,
                                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                          nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (stream) ::WriteFile(stream.get(), mark.data(), static_cast<DWORD>(mark.size()), &written, nullptr);
}

}  // namespace archiver
