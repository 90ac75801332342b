#pragma once
#include <cstddef>
#include <string>

#include "archivers/unpacking/posix/folder_cache.h"
#include "archivers/unpacking/target_system.h"

namespace archiver {

/// A place in a folder.
struct PosixPlace {
    SharedFolder folder;
    std::string name;  ///< one part
};

/// A name beside a file for what will take its place; no two are alike in this process.
std::string temporaryName();

/// Whether a folder stands there; a link to one is none.
bool isFolder(const PosixPlace& place) noexcept;

/// Makes the file under its own name when nothing stands there, else under another one that becomes its own in the end.
/// @return null with `code` set
std::unique_ptr<OutputFile> createPosixFile(PosixPlace place, bool replace, ReturnCode& code);

/// Gives the times that there are; a system that cannot keep one keeps its own, for the bytes are whole all the same.
void setTimes(int descriptor, const ItemProperties& properties) noexcept;

}  // namespace archiver
