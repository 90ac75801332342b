#pragma once
#include <string>

#include "archivers/formats/rar/header_walk.h"

/// Headers of an archive that holds nothing but what unpacking needs: one volume, one header a file, no names.
namespace archiver::rar {

/// Signature and main header.
/// @param solid  of the new layout: files are packed with the dictionary of those before
std::string plainStart(Generation generation, bool solid);

/// What stands before the parts of a file: its header, and at times packed bytes that unpack to nothing.
std::string plainFile(Generation generation, const PackedFile& file, bool solid);

/// The end mark.
std::string plainEnd(Generation generation);

}  // namespace archiver::rar
