#pragma once
#include <string>
#include <string_view>

namespace archiver {

/// Whether files in a folder can have streams. Where they cannot, a stream's name is that of another file.
bool keepsStreams(const std::wstring& folder) noexcept;

/// What the mark of the Web in a file passes on; empty when it has none, and where files have no streams.
std::string readWebMark(const std::wstring& file);

/// Marks a file. When that fails, the user gets the file without its mark rather than none.
void writeWebMark(const std::wstring& file, std::string_view mark);

}  // namespace archiver
