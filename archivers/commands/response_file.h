#pragma once
#include <cstddef>
#include <filesystem>
#include <string>
#include <variant>
#include <vector>

#include "archivers/convention/return_codes.h"
#include "archivers/convention/text_codec.h"

namespace archiver {

/// Bytes that a response file may have.
inline constexpr std::size_t kLargestResponseFile = std::size_t{64} << 20;

/// The words of a response file, by the rules of commandWords; UTF-8. A word is a name as it stands: a leading "@"
/// names no further file.
/// @param codec  of files without a byte order mark; with one they are UTF-8, or UTF-16 with its low byte first
/// @return the words, or kResponseRead: not there, no file, not readable, larger than kLargestResponseFile
std::variant<std::vector<std::string>, ReturnCode> readResponseFile(const std::filesystem::path& file,
                                                                    const TextCodec& codec);

/// The same for the bytes of one.
std::vector<std::string> responseWords(std::string_view bytes, const TextCodec& codec);

}  // namespace archiver
