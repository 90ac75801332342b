#pragma once
#include <archive_entry.h>

#include <string>

namespace archiver::tar {

/// Copies an entry's path in the form that libarchive converts without loss on this system.
/// @param path  replaced; UTF-8, or the stored bytes when libarchive could not convert a pax path
/// @return false when libarchive has no path: it could not convert the stored bytes
/// Implemented in win32/ and posix/.
bool copyEntryPath(struct archive_entry* entry, std::string& path);

}  // namespace archiver::tar
