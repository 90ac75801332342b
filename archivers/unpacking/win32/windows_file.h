#pragma once
#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "archivers/unpacking/target_system.h"

namespace archiver {

/// Makes the file under its own name when nothing stands there, else under another one that becomes its own in the end.
/// @param folder  path of a folder that was looked at
/// @param name    one part
/// @param streams  whether files there can have streams, for the mark of the Web
/// @return null with `code` set
std::unique_ptr<OutputFile> createWindowsFile(std::wstring folder, std::wstring_view name, std::uint64_t expectedSize,
                                              bool replace, bool streams, ReturnCode& code);

/// Gives an open file or folder the times and attributes that there are; what the system cannot keep stays away, for
/// the bytes are whole all the same.
void setProperties(HANDLE handle, const ItemProperties& properties) noexcept;

/// The moment of a file time; none for 0, which says that there is no time.
std::optional<Moment> momentOf(const FILETIME& time) noexcept;

}  // namespace archiver
