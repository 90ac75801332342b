#pragma once
#include <cstddef>
#include <filesystem>

namespace archiver::rar {

/// The name of a volume.
/// @param first     the one that was opened; its own number, if it has one, is what counting starts from
/// @param index     0 for the first itself
/// @param newNames  true: the last number in the name without its extension counts ("a.part09.rar", "a.part10.rar");
///                  false: the extension does (".rar" or ".exe", ".r00" to ".r99", ".s00" and so on to ".z99")
/// @return an empty path when there is no such name
std::filesystem::path volumePath(const std::filesystem::path& first, std::size_t index, bool newNames);

}  // namespace archiver::rar
