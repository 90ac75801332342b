#pragma once
#include <string_view>

namespace archiver {

/// Whether Windows takes a part of a name for a device, as it does in every folder: CON, PRN, AUX, NUL, COM0 to COM9,
/// LPT0 to LPT9 (the digits 1 to 3 also superscript), CONIN$, CONOUT$ and CLOCK$, in any case; also with blanks, an
/// extension or a stream's name behind it, such as "nul .tar.gz" and "aux:x".
/// Source: Windows documentation, "Naming Files, Paths, and Namespaces"
/// @param part  UTF-8
bool isDeviceName(std::string_view part) noexcept;

}  // namespace archiver
