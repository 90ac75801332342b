#include "archivers/formats/input_file.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "formats/support/files.h"

namespace archiver {
namespace {

std::string read(const InputFile& file, std::uint64_t offset, std::size_t size) {
    std::string bytes(size, '?');
    const auto got = file.readAt(offset, bytes);
    EXPECT_TRUE(got.has_value());
    bytes.resize(got.value_or(0));
    return bytes;
}

TEST(InputFile, ReadsAtAnyOffset) {
    const test::TemporaryFolder folder;
    const InputFileResult opened = openInputFile(folder.write("file", std::string_view("0123456789")));
    ASSERT_TRUE(opened.file);
    EXPECT_EQ(opened.code, kOk);
    EXPECT_EQ(opened.file->size(), 10U);
    EXPECT_EQ(read(*opened.file, 0, 10), "0123456789");
    EXPECT_EQ(read(*opened.file, 7, 2), "78");
    EXPECT_EQ(read(*opened.file, 8, 10), "89");
    EXPECT_EQ(read(*opened.file, 10, 1), "");
    EXPECT_EQ(read(*opened.file, std::uint64_t{1} << 40, 1), "");
    EXPECT_EQ(read(*opened.file, UINT64_MAX, 1), "");
}

TEST(InputFile, ReadAllNeedsAllOfIt) {
    const test::TemporaryFolder folder;
    const InputFileResult opened = openInputFile(folder.write("file", "0123456789"));
    ASSERT_TRUE(opened.file);
    std::array<char, 4> four{};
    EXPECT_TRUE(opened.file->readAll(6, four));
    EXPECT_EQ(std::string_view(four.data(), 4), "6789");
    EXPECT_FALSE(opened.file->readAll(7, four));
}

TEST(InputFile, TellsWhenTheFileWasChanged) {
    const test::TemporaryFolder folder;
    const auto path = folder.write("file", "x");
    // 2001-05-17 17:30:58 UTC, by way of a clock whose start differs between systems.
    const auto sinceNow = std::chrono::system_clock::from_time_t(990120658) - std::chrono::system_clock::now();
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() +
                  std::chrono::duration_cast<std::filesystem::file_time_type::duration>(sinceNow));
    const InputFileResult opened = openInputFile(path);
    ASSERT_TRUE(opened.file);
    EXPECT_NEAR(static_cast<double>(opened.file->modified().seconds), 990120658.0, 2.0);
}

TEST(InputFile, OpensNamesOfAllScripts) {
    const test::TemporaryFolder folder;
    const InputFileResult opened = openInputFile(folder.write(std::filesystem::path(u8"Grüße 日本語 😀.zip"), "x"));
    ASSERT_TRUE(opened.file);
    EXPECT_EQ(read(*opened.file, 0, 9), "x");
}

TEST(InputFile, RefusesWhatIsNotThere) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(openInputFile(folder.path() / "missing").code, kNotFindArcFile);
    EXPECT_EQ(openInputFile(folder.path() / "missing" / "file").code, kNotFindArcFile);
}

TEST(InputFile, RefusesAFolder) {
    const test::TemporaryFolder folder;
    const InputFileResult opened = openInputFile(folder.path());
    EXPECT_FALSE(opened.file);
    EXPECT_EQ(opened.code, kArcFileOpen);
}

}  // namespace
}  // namespace archiver
