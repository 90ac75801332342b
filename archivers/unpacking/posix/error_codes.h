#pragma once
#include "archivers/convention/return_codes.h"

namespace archiver {

/// Why a file could not be made, by errno.
ReturnCode codeOfCreating(int error) noexcept;

/// Why a folder could not be made or entered, by errno.
ReturnCode codeOfFolder(int error) noexcept;

/// Why bytes could not be written, or a file be given its name, by errno.
ReturnCode codeOfWriting(int error) noexcept;

/// Why a link could not be made, by errno.
ReturnCode codeOfLinking(int error) noexcept;

}  // namespace archiver
