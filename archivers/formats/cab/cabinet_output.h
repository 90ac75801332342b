#pragma once
#include <cstdint>
#include <span>

#include "archivers/convention/return_codes.h"

namespace archiver {

/// Where a new cabinet's bytes go.
class CabinetOutput {
public:
    virtual ~CabinetOutput() = default;

    /// Adds bytes behind those that are there.
    /// @return kOk, kDiskSpace, kCannotWrite
    virtual ReturnCode append(std::span<const char> bytes) = 0;

    /// Replaces bytes that were written before.
    /// @param offset  from the cabinet's beginning; all of them lie within what was appended
    virtual ReturnCode patch(std::uint64_t offset, std::span<const char> bytes) = 0;
};

}  // namespace archiver
