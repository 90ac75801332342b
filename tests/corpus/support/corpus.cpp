#include "corpus/support/corpus.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace archiver::test {

namespace fs = std::filesystem;

fs::path corpus(const std::string& library) {
    const char* const folder = std::getenv("TOVAREX_CORPUS");
    if (folder == nullptr || *folder == '\0') return {};
    const fs::path found = fs::path(folder) / library;
    return fs::is_directory(found) ? found : fs::path();
}

std::vector<fs::path> filesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace archiver::test
