#pragma once
#include <string>
#include <string_view>

namespace archiver::tar {

/// The name of the one member of a compressed file that does not tell it: the file's name without its last extension.
/// A short extension that stands for a compressed tar becomes ".tar": ".tgz", ".taz", ".tbz", ".tbz2", ".tz".
/// A name without an extension, or with nothing before it, stays as it is.
std::string nameWithoutExtension(std::string_view fileName);

/// The name that a gzip header tells, in UTF-8: its last part, as a path there is where the file lay when it was
/// packed.
/// @param stored  bytes as stored
/// @return empty when nothing of it can be a file's name
std::string nameFromHeader(std::string_view stored);

}  // namespace archiver::tar
