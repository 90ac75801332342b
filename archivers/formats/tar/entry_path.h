#pragma once
#include <archive_entry.h>

#include <string>

namespace archiver::tar {

/// Texts of an entry that name something.
enum class EntryText { kPath, kSymbolicLink, kHardLink };

/// Copies one of an entry's texts in the form that libarchive converts without loss on this system.
/// @param text  replaced; UTF-8, or the stored bytes when libarchive could not convert that of a pax header
/// @return false when libarchive has none: there is none, or it could not convert the stored bytes
/// Implemented in win32/ and posix/.
bool copyEntryText(struct archive_entry* entry, EntryText which, std::string& text);

}  // namespace archiver::tar
