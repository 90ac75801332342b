#pragma once
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tovar::test {

/// Names with "/" between folders, and contents.
using Members = std::vector<std::pair<std::string, std::string>>;

/// Writes an archive of the kind that the file's extension names: zip, tar or lzh, with all members stored.
void writeArchive(const std::filesystem::path& file, const Members& members);

}  // namespace tovar::test
