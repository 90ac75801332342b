#pragma once
#include <string>

#include "archivers/formats/lzh/header.h"

namespace archiver::lzh {

/// Gives a member's name with its folder in UTF-8; the result is always valid and holds no NUL, at which names end
/// (some archivers keep a comment behind it).
///
/// The first that applies to each of the two: its wide form; code page 65001 told by the header; all ASCII; valid UTF-8
/// from another system than those of MS-DOS and Windows; the ANSI code page, 932 on a Japanese system. Separators in a
/// name are as stored; those between the parts of a folder, which are no characters, become "/". A folder ends with a
/// separator. A symbolic link, stored as "name|target", goes by its name.
/// @param linkTarget  what a symbolic link leads to, in UTF-8; empty for anything else
std::string memberName(const Header& header, std::string& linkTarget);

}  // namespace archiver::lzh
