#include <gtest/gtest.h>

#include "archivers/formats/zip/zip_reader.h"
#include "unpacking/support/real_scene.h"

namespace archiver::test {
namespace {

std::string manyFiles(std::size_t count) {
    ZipBuilder builder;
    for (std::size_t number = 0; number < count; ++number) {
        std::string name = "d";
        name += std::to_string(number % 7) + "/f" + std::to_string(number);
        builder.add({.name = name, .content = std::string(number % 3000, 'x')});
    }
    return builder.build();
}

TEST(RealTarget, GetsEveryFileWhole) {
    RealScene scene(manyFiles(500));
    scene.options.threads = 4;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.names().size(), 507U);
    for (std::size_t number = 0; number < 500; number += 37) {
        std::string name = "d";
        name += std::to_string(number % 7) + "/f" + std::to_string(number);
        EXPECT_EQ(scene.read(name), std::string(number % 3000, 'x'));
    }
}

TEST(RealTarget, KeepsTheOldFileWhenTheNewOneIsDamaged) {
    RealScene scene(zipOf({{.name = "a", .content = "new", .crc = 0x12345678}, {.name = "b", .content = "b"}}));
    scene.write("a", "old");
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.names(), (Lines{"a", "b"}));
    EXPECT_EQ(scene.read("a"), "old");
}

class RealCancel : public testing::TestWithParam<std::uint64_t> {};

// Wherever it comes, each file that is there is whole and told.
TEST_P(RealCancel, LeavesNoHalfFile) {
    RealScene scene(manyFiles(500));
    scene.options.threads = 3;
    scene.events.onProgress = [](const UnpackProgress& progress) { return progress.members < GetParam(); };
    EXPECT_EQ(scene.unpack(), kUserCancel);
    std::size_t files = 0;
    for (const std::string& name : scene.names()) {
        if (name.ends_with('/')) continue;
        ++files;
        const std::size_t number = std::stoul(name.substr(name.find('f') + 1));
        EXPECT_EQ(scene.read(name).size(), number % 3000) << name;
    }
    std::size_t told = 0;
    for (const std::string& report : scene.events.reports) told += report.starts_with("unpacked ") ? 1 : 0;
    EXPECT_EQ(files, told);
    EXPECT_LT(files, 500U);
}

INSTANTIATE_TEST_SUITE_P(After, RealCancel, testing::Values(0, 1, 2, 50, 200));

TEST(RealTarget, ThatIsAFileTakesNothing) {
    RealScene scene(zipOf({{.name = "a", .content = "1"}}));
    scene.write("file", "old");
    scene.options.target /= "file";
    EXPECT_EQ(scene.unpack(), kMakeDirectory);
    scene.options.target = scene.options.target.parent_path();
    EXPECT_EQ(scene.read("file"), "old");
}

TEST(RealTarget, IsMadeWithTheFoldersAboveIt) {
    RealScene scene(zipOf({{.name = "a", .content = "1"}}));
    scene.options.target = scene.options.target / "x" / "y";
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.read("a"), "1");
}

TEST(RealTarget, KnowsThatAClaimDoesNotFit) {
    RealScene scene(
        zipOf({{.name = "a", .content = "tiny", .sizesInZip64 = true, .originalSize = std::uint64_t{1} << 62}}));
    EXPECT_EQ(scene.unpack(), kDiskSpace);
    EXPECT_EQ(scene.events.spaceQuestions.size(), 1U);
    EXPECT_TRUE(scene.names().empty());
}

TEST(RealTarget, ReplacesAWriteProtectedFile) {
    RealScene scene(zipOf({{.name = "a", .content = "new"}}));
    scene.write("a", "old");
    std::filesystem::permissions(scene.target() / "a", std::filesystem::perms::owner_read,
                                 std::filesystem::perm_options::replace);
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.read("a"), "new");
}

}  // namespace
}  // namespace archiver::test
