#pragma once
#include <string>
#include <string_view>

/// Paths as texts: nothing here looks at a file system. Two separators are known, "\" and "/". A path's own one is "\"
/// when it holds one, otherwise "/" when it holds one; a path that mixes both counts as a "\" path. No function changes
/// case, collapses separators or removes "." and ".." segments.
namespace tovar {

/// @return whether characters 2 and 3 are ":\", as in "C:\x"; not so for "C:" and "C:dir"
[[nodiscard]] bool HasDriveRoot(std::wstring_view path) noexcept;

/// @return whether the path starts with "\\"
[[nodiscard]] bool IsUncPath(std::wstring_view path) noexcept;

/// Takes one separator off the end. A drive root ("C:\") and "\\" alone stay whole.
[[nodiscard]] std::wstring StripTrailingSeparator(std::wstring_view path);

/// Puts the path's own separator at the end where it is missing. A path without any separator stays as it is.
[[nodiscard]] std::wstring AddTrailingSeparator(std::wstring_view path);

/// @return the part up to and including the last separator; the whole path when it has none
[[nodiscard]] std::wstring ParentPath(std::wstring_view path);

/// @return the part behind the last separator; the whole path when it has none
[[nodiscard]] std::wstring FileNamePart(std::wstring_view path);

/// @return the file-name part up to its last "."
[[nodiscard]] std::wstring BaseName(std::wstring_view path);

/// @return the text behind the last "." of the whole path without a trailing separator, so that "C:\my.dir\file" gives
///         "dir\file": who needs the extension of a file passes its bare name. Empty when there is no ".".
[[nodiscard]] std::wstring ExtensionPart(std::wstring_view path);

/// @return the text before its first NUL
[[nodiscard]] std::wstring CutAtNull(std::wstring_view text);

/// Puts a text with a blank or a comma into double quotes, unless its first or last character is one already.
[[nodiscard]] std::wstring QuoteIfNeeded(std::wstring_view text);

/// @return the text between apostrophes
[[nodiscard]] std::wstring SingleQuote(std::wstring_view text);

/// @return the text without the blanks (U+0020) at its ends
[[nodiscard]] std::wstring_view trimBlanks(std::wstring_view text) noexcept;

/// Upper case of the letters a to z, whatever the user's language: a Turkish system must know "zip" for "ZIP" too.
[[nodiscard]] std::wstring upperCase(std::wstring_view text);

}  // namespace tovar
