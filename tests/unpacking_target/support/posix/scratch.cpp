#include "unpacking_target/support/scratch.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace archiver::test {
namespace {

struct stat factsOf(const std::filesystem::path& file) {
    struct stat facts {};
    EXPECT_EQ(::lstat(file.c_str(), &facts), 0) << file;
    return facts;
}

}  // namespace

Scratch::Scratch() {
    std::string name = (std::filesystem::temp_directory_path() / "unpacking-XXXXXX").string();
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    path_ = name;
}

Scratch::~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void Scratch::write(std::string_view name, std::string_view bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
}

void Scratch::makeFolder(std::string_view name) const { std::filesystem::create_directories(path_ / name); }

void Scratch::protect(std::string_view name) const { ::chmod((path_ / name).c_str(), 0444); }

std::string Scratch::read(std::string_view name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << name;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool Scratch::isProtected(std::string_view name) const { return (factsOf(path_ / name).st_mode & 0222) == 0; }

std::int64_t Scratch::seconds(std::string_view name) const { return factsOf(path_ / name).st_mtim.tv_sec; }

std::uint32_t Scratch::nanoseconds(std::string_view name) const {
    return static_cast<std::uint32_t>(factsOf(path_ / name).st_mtim.tv_nsec);
}

std::vector<std::string> Scratch::names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
        const bool folder = entry.is_directory() && !entry.is_symlink();
        names.push_back(entry.path().lexically_relative(path_).string() + (folder ? "/" : ""));
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace archiver::test
