#pragma once
#include <string>
#include <string_view>

namespace tovar {

class SystemPaths;

/// Finds archiver libraries.
class LibraryFinder {
public:
    /// @param system     outlives the finder
    /// @param ownFolder  the component's own folder, with or without a separator at its end; empty = none
    LibraryFinder(const SystemPaths& system, std::wstring ownFolder);

    /// Looks in the system's standard search order, but not in the process's current folder: that may be an archive's,
    /// and hold a library planted there. The component's own folder comes last.
    /// @param library  file name, such as "UnZip32.dll"
    /// @return the full path, or an empty text
    [[nodiscard]] std::wstring find(std::wstring_view library) const;

private:
    const SystemPaths& system_;
    std::wstring ownFolder_;
};

}  // namespace tovar
