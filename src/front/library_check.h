#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "drivers/common_driver.h"
#include "front/kind_table.h"
#include "shell/path_operations.h"

namespace tovar {

/// File versions of the archiver libraries as "a.b.c.d", by the bit that they serve; the creating bits have theirs too.
/// A library that cannot be used has an empty text or none.
using LibraryVersions = std::map<ArchiveKind, std::wstring>;

/// Checks one library that has a driver.
/// @param driver          asked for the library's own version; exactly 1 means unusable, whatever the minimum
/// @return file version of the library, "0.0.0.0" when its file has none; empty when it is missing, unusable or older
///         than the minimum
[[nodiscard]] std::wstring CheckLibrary(std::wstring_view library, CommonDriver& driver, std::uint16_t minimumVersion,
                                        const ArchiverLibraries& libraries, const PathOperations& paths);

/// Checks the library of one row.
/// @return its file version; empty when it cannot serve
[[nodiscard]] std::wstring CheckKind(const KindRow& row, const DriverServices& services, const PathOperations& paths);

/// Checks every library of the kind table.
[[nodiscard]] LibraryVersions CheckArchiverLibraries(const DriverServices& services, const PathOperations& paths);

/// @return the bits whose version text is not empty
[[nodiscard]] ArchiveKind availabilityMask(const LibraryVersions& versions) noexcept;

}  // namespace tovar
