#pragma once
#include <string>
#include <string_view>

#include "archivers/formats/zip/central_directory.h"

namespace archiver::zip {

/// Gives a member's name in UTF-8; the result is always valid and holds no NUL (which becomes "_").
///
/// The first that applies: flag bit 11 says UTF-8; a Unicode Path field that belongs to the name; all ASCII; valid
/// UTF-8 from a Unix system; otherwise the code page of the system that made the member.
/// @param unicodePath  data of the Info-ZIP Unicode Path extra field; empty when there is none
/// @param name         replaced; its memory is used again
/// Source: PKWARE APPNOTE 6.3.10, 4.4.4 and appendix D; Info-ZIP, extrafld.txt
void decodeMemberName(const CentralHeader& header, std::string_view unicodePath, std::string& name);

}  // namespace archiver::zip
