#include "unace/unace_fixture.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace archiver::test {

namespace fs = std::filesystem;

UnAceFixture::UnAceFixture() {
    for (int number = 0; folder.empty(); ++number) {
        const fs::path candidate = fs::temp_directory_path() / ("tovarex-unace-" + std::to_string(number));
        if (fs::create_directory(candidate)) folder = candidate;
    }
    out = folder / "out";
    setUnicodeMode(1);
}

UnAceFixture::~UnAceFixture() {
    for (const ArchiveHandle archive : opened_) close(archive);
    setUnicodeMode(0);
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

ArchiveHandle UnAceFixture::openBytes(const std::string& bytes, std::uint32_t mode) {
    const fs::path file = folder / "archive.ace";
    write(file, bytes);
    std::int32_t result = -1;
    const ArchiveHandle archive = openFile(file, result, mode);
    EXPECT_EQ(result, 0);
    EXPECT_NE(archive, nullptr);
    return archive;
}

ArchiveHandle UnAceFixture::openFile(const fs::path& file, std::int32_t& result, std::uint32_t mode) {
    std::string name = text(file);
    abi::OpenArchiveData data{};
    data.archiveName = name.data();
    data.openMode = mode;
    data.openResult = -1;
    const ArchiveHandle archive = open(&data);
    result = data.openResult;
    if (archive != nullptr) opened_.push_back(archive);
    return archive;
}

ArchiveHandle UnAceFixture::openSample(const std::string& file) {
    std::int32_t result = -1;
    const ArchiveHandle archive = openFile(archiver::testing::programFolder() / "data" / "ace" / file, result);
    EXPECT_EQ(result, 0) << file;
    return archive;
}

abi::HeaderData UnAceFixture::header(ArchiveHandle archive) {
    abi::HeaderData data{};
    EXPECT_EQ(readHeader(archive, &data), 0);
    return data;
}

void UnAceFixture::goTo(ArchiveHandle archive, const std::string& name) {
    abi::HeaderData data{};
    do {
        ASSERT_EQ(readHeader(archive, &data), 0) << name;
    } while (data.fileName != name);
}

void UnAceFixture::write(const fs::path& file, const std::string& bytes) const {
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(stream.flush().good()) << file;
}

std::string UnAceFixture::read(const fs::path& file) const {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<std::string> UnAceFixture::tree(const fs::path& top) const {
    std::vector<std::string> names;
    if (!fs::exists(top)) return names;
    for (const fs::directory_entry& each : fs::recursive_directory_iterator(top)) {
        const std::u8string name = each.path().lexically_relative(top).generic_u8string();
        names.emplace_back(reinterpret_cast<const char*>(name.data()), name.size());
        if (each.is_directory()) names.back() += '/';
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string UnAceFixture::text(const fs::path& path) const {
    const std::u8string name = path.u8string();
    return {reinterpret_cast<const char*>(name.data()), name.size()};
}

}  // namespace archiver::test
