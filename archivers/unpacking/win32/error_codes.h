#pragma once
#include <windows.h>

#include "archivers/convention/return_codes.h"

namespace archiver {

/// Why a file or a link could not be made, by GetLastError.
ReturnCode codeOfCreating(DWORD error) noexcept;

/// Why a folder could not be made, by GetLastError.
ReturnCode codeOfFolder(DWORD error) noexcept;

/// Why bytes could not be written, or a file be given its name, by GetLastError.
ReturnCode codeOfWriting(DWORD error) noexcept;

}  // namespace archiver
