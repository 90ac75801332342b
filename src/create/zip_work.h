#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "create/zip_command.h"
#include "shell/file_system.h"

namespace tovar {

/// What one zip command works on.
struct ZipWork {
    std::vector<std::wstring> names;  ///< for the library
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;  ///< exact; for deleting the number of names
};

/// Makes the library's names of the lines of a file list, and counts what there is to do. A folder becomes its name, a
/// separator and "*.*".
/// @param list     relative to the base folder, separated by CR LF; empty lines do not count
/// @param base     with a separator at its end
/// @param goesOn   asked now and then; false ends the counting, and the names do not matter any more
[[nodiscard]] ZipWork gatherZipWork(const ZipCommand& command, std::wstring_view list, const std::wstring& base,
                                    const FileSystem& files, const std::function<bool()>& goesOn);

}  // namespace tovar
