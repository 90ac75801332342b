#pragma once
#include <string>
#include <string_view>

namespace tovar {

/// The desktop shell's words for types of files and folders; empty when it has none.
class ShellTypeNames {
public:
    virtual ~ShellTypeNames() = default;
    /// By the name alone, as if it were a file's; nothing needs to exist.
    [[nodiscard]] virtual std::wstring ofName(std::wstring_view name) const = 0;
    /// Of the system's temporary folder, which stands for any folder.
    [[nodiscard]] virtual std::wstring ofTempFolder() const = 0;
};

/// @return the type name of a file that need not exist: the shell's, or made of the extension and the shell's own word
///         for "file", which its name for a folder begins with ("XYZ File" for "a.xyz"); empty without either
/// @param name  bare name of the file
[[nodiscard]] std::wstring FileTypeName(std::wstring_view name, const ShellTypeNames& shell);

}  // namespace tovar
