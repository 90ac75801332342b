#pragma once
#include <string>
#include <string_view>

namespace archiver {

/// What the mark of the Web in a file passes on; empty when it has none, and where files have no streams.
std::string readWebMark(const std::wstring& file);

/// Marks a file. A file system without streams cannot keep the mark, which is no reason to keep the file from the user.
void writeWebMark(const std::wstring& file, std::string_view mark);

}  // namespace archiver
