#include "shell/file_type_name.h"

#include "shell/letter_case.h"
#include "shell/paths.h"

namespace tovar {

std::wstring FileTypeName(std::wstring_view name, const ShellTypeNames& shell) {
    std::wstring known = shell.ofName(name);
    if (!known.empty()) return known;
    const std::wstring extension = ExtensionPart(name);
    if (extension.empty()) return {};
    const std::wstring folderType = shell.ofTempFolder();
    const std::size_t blank = folderType.find(L' ');
    return raiseCase(extension) + L' ' + (blank == folderType.npos ? L"File" : folderType.substr(0, blank));
}

}  // namespace tovar
