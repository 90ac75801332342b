#pragma once
#include <string>

namespace tovar {

/// An absolute path as the system takes it at any length, and with names that end in a blank or a dot.
[[nodiscard]] std::wstring extendedPath(const std::wstring& path);

/// A path as the system takes it whatever its length: one that is short enough as it is, with all that the system makes
/// of it; a longer one absolute, and extended.
[[nodiscard]] std::wstring systemPath(const std::wstring& path);

/// @return whether what a folder holds may only be asked for when the user wants it: its disk may be absent or far away
[[nodiscard]] bool isSlowPlace(const std::wstring& path);

/// The path by which the shell's namespace knows a folder: absolute, with "\" and long names, without a separator at
/// its end but for a drive root.
[[nodiscard]] std::wstring plainPath(const std::wstring& path);

}  // namespace tovar
