#include "formats/support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>

namespace archiver::test {

std::filesystem::path dataFile(std::string_view name) { return programFolder() / "data" / name; }

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::optional<std::size_t> MemoryFile::readAt(std::uint64_t offset, std::span<char> into) const noexcept {
    if (offset >= bytes_.size()) return 0;
    const std::size_t count = std::min(into.size(), bytes_.size() - static_cast<std::size_t>(offset));
    std::memcpy(into.data(), bytes_.data() + offset, count);
    return count;
}

std::unique_ptr<InputFile> inMemory(std::string bytes) { return std::make_unique<MemoryFile>(std::move(bytes)); }

std::optional<std::size_t> SparseFile::readAt(std::uint64_t offset, std::span<char> into) const noexcept {
    if (offset >= size_) return 0;
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(into.size(), size_ - offset));
    std::fill_n(into.begin(), count, '\0');
    for (const auto& [start, text] : texts_) {
        const std::uint64_t from = std::max(offset, start);
        const std::uint64_t to = std::min(offset + count, start + text.size());
        if (from >= to) continue;
        std::memcpy(into.data() + (from - offset), text.data() + (from - start), static_cast<std::size_t>(to - from));
    }
    return count;
}

TemporaryFolder::TemporaryFolder() {
    const std::filesystem::path base = std::filesystem::temp_directory_path();
    for (unsigned number = 0;; ++number) {
        path_ = base / ("formats_test_" + std::to_string(number));
        if (std::filesystem::create_directory(path_)) return;
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryFolder::write(const std::filesystem::path& name, std::string_view bytes) const {
    std::filesystem::path file = path_ / name;
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(stream.good()) << file;
    return file;
}

TimeZone::TimeZone(const char* zone) {
    if (const char* const previous = std::getenv("TZ")) previous_ = previous;
    set(zone);
}

TimeZone::~TimeZone() { set(previous_.c_str()); }

}  // namespace archiver::test
