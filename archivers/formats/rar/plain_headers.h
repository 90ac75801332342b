#pragma once
#include <string>

#include "archivers/formats/rar/file_header.h"

/// Headers of an archive of RAR 5 that holds nothing but what unpacking needs: one volume, one header a file, no names.
namespace archiver::rar {

/// Signature and main header.
/// @param solid  files are packed with the dictionary of those before
std::string plainStart(bool solid);

/// What stands before the parts of a file.
std::string plainFile(const FileHeader& file, bool solid);

/// The end mark.
std::string plainEnd();

}  // namespace archiver::rar
