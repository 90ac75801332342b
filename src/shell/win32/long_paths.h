#pragma once
#include <string>

namespace tovar {

/// An absolute path as the system takes it at any length, and with names that end in a blank or a dot.
[[nodiscard]] std::wstring extendedPath(const std::wstring& path);

/// The path by which the shell's namespace knows a folder: absolute, with "\" and long names, without a separator at
/// its end but for a drive root.
[[nodiscard]] std::wstring plainPath(const std::wstring& path);

}  // namespace tovar
