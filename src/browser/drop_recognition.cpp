#include "browser/drop_recognition.h"

#include "shell/paths.h"

namespace tovar {
namespace {

/// The folder in the short form, too: the shell may tell of it in another form than the host has named it in.
bool isSameFolder(const std::wstring& one, const std::wstring& other, const PathOperations& paths) {
    return upperCase(one) == upperCase(other) || upperCase(AddTrailingSeparator(paths.ShortPathName(one))) ==
                                                     upperCase(AddTrailingSeparator(paths.ShortPathName(other)));
}

bool isInBin(const std::wstring& path) {
    const std::wstring upper = upperCase(path);
    // The first is how Windows 95 to Me name it on every disk. Since Windows Vista it is the second, which the first
    // does not occur in.
    return upper.find(L"RECYCLED") != upper.npos || upper.find(L"\\$RECYCLE.BIN\\") != upper.npos;
}

}  // namespace

std::optional<DropPlace> recogniseDrop(std::wstring_view placeholder, const std::wstring& first,
                                       const std::wstring& second, const PathOperations& paths) {
    const std::wstring name = upperCase(FileNamePart(placeholder));
    const std::wstring home = ParentPath(placeholder);
    std::optional<DropPlace> bin;
    for (const std::wstring& path : {first, second}) {
        if (upperCase(FileNamePart(path)) != name || !paths.IsPlainFile(path)) continue;
        if (isSameFolder(ParentPath(path), home, paths)) continue;
        if (!isInBin(path)) return DropPlace{path, true};
        if (!bin) bin = DropPlace{path, false};
    }
    return bin;
}

}  // namespace tovar
