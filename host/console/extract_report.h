#pragma once
#include <string>
#include <string_view>

#include "drivers/extraction.h"

namespace tovar::host {

/// Appends what came of an extraction: the library's own lines, or a JSON object with the archive, the folder, whether
/// all is good, the library's code and message, and its lines.
void appendResult(std::string& out, std::wstring_view archive, std::wstring_view folder, const ExtractResult& result,
                  bool json);

/// What came of making or changing an archive, likewise.
/// @param folder  what the files' names are relative to; empty where none are packed
void appendChange(std::string& out, std::wstring_view archive, std::wstring_view folder, const ExtractResult& result,
                  bool json);

}  // namespace tovar::host
