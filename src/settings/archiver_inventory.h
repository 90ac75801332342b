#pragma once
#include <string>

#include "settings/archive_kind.h"

namespace tovar {

/// The archiver libraries as the configuration dialog sees them. What a library is used for is said by one bit.
class ArchiverInventory {
public:
    virtual ~ArchiverInventory() = default;

    /// @return file name of the library that serves the use, such as "UnZip32.dll"
    [[nodiscard]] virtual std::wstring libraryOf(ArchiveKind use) const = 0;
    /// @return file version of the library as it was found when the component started; empty when it cannot serve
    [[nodiscard]] virtual std::wstring versionOf(ArchiveKind use) const = 0;
    /// Looks for the library now.
    /// @return full path, also of one that cannot serve; empty when there is none
    [[nodiscard]] virtual std::wstring pathOf(ArchiveKind use) const = 0;
    /// @return the availability mask
    [[nodiscard]] virtual ArchiveKind available() const = 0;
    /// From now on these kinds may be used.
    virtual void setEffective(ArchiveKind mask) = 0;
};

}  // namespace tovar
