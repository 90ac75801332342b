#include "archivers/scratch_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace archiver::testing {

ScratchFile::ScratchFile(const char* name, const std::string& bytes)
    : path_(std::filesystem::temp_directory_path() / (std::string("tovarex-archivers-") + name)) {
    std::ofstream file(path_, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.good());
}

ScratchFile::~ScratchFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

std::string bytesOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    EXPECT_FALSE(bytes.empty()) << file;
    return bytes;
}

}  // namespace archiver::testing
