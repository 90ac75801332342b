#pragma once
#include <string_view>

namespace tovar {

/// @return whether the path depends on no current folder or drive: "C:\x", "C:/x" or "\\server\share"
inline bool isFullPath(std::wstring_view path) noexcept {
    const auto isSeparator = [](wchar_t character) { return character == L'\\' || character == L'/'; };
    return (path.size() > 2 && path[1] == L':' && isSeparator(path[2])) || path.starts_with(L"\\\\");
}

}  // namespace tovar
