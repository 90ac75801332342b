#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace archiver::test {

/// The folder of a library's sources, below that which TOVAREX_CORPUS names; empty when there is none.
std::filesystem::path corpus(const std::string& library);

/// All files below a folder, sorted.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder);

std::string contentOf(const std::filesystem::path& file);

}  // namespace archiver::test
