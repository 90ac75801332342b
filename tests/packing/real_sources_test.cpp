#include <gtest/gtest.h>

#include <fstream>

#include "archivers/packing/source_walk.h"
#include "formats/support/files.h"

namespace archiver::test {
namespace {

std::vector<std::string> namesOf(SourceWalk& walk) {
    std::vector<std::string> names;
    for (const SourceItem& item : walk.items()) names.push_back(item.name);
    return names;
}

TEST(RealSources, WalksAFolderOfTheSystem) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "sub" / "empty");
    folder.write("a.txt", "12345");
    folder.write("sub/b.txt", "1");
    SourceWalk walk(systemSources(), folder.path(), {.recurse = true});
    EXPECT_TRUE(walk.add("*.*"));
    EXPECT_TRUE(walk.add("sub"));
    EXPECT_FALSE(walk.add("gone"));
    EXPECT_EQ(namesOf(walk), (std::vector<std::string>{"a.txt", "sub/", "sub/b.txt", "sub/empty/"}));
    EXPECT_EQ(walk.items()[0].facts.size, 5U);
    EXPECT_TRUE(walk.items()[0].facts.written.has_value());
    EXPECT_EQ(walk.items()[1].facts.attributes & attribute::kFolder, attribute::kFolder);
}

TEST(RealSources, ReachesPathsOfAnyLength) {
    const TemporaryFolder folder;
    SourceSystem& system = systemSources();
    std::filesystem::path deep = system.absolute(folder.path());
    std::string name;
    for (int level = 0; level < 12; ++level) {
        deep /= std::string(40, 'd');
        std::filesystem::create_directory(deep);
        name += std::string(40, 'd') + "/";
    }
    std::ofstream(deep / "file.txt") << "deep";
    SourceWalk walk(system, folder.path(), {.recurse = true, .folderEntries = false});
    EXPECT_TRUE(walk.add("*.*"));
    ASSERT_EQ(namesOf(walk), std::vector<std::string>{name + "file.txt"});
    InputFileResult opened = system.open(walk.items()[0].path);
    ASSERT_NE(opened.file, nullptr);
    EXPECT_EQ(opened.file->size(), 4U);
    opened.file.reset();
    EXPECT_TRUE(system.removeFile(walk.items()[0].path));
    EXPECT_TRUE(system.removeFolder(deep));
    std::error_code ignored;
    std::filesystem::remove_all(system.absolute(folder.path()) / std::string(40, 'd'), ignored);
}

TEST(RealSources, KeepsNamesInEveryScript) {
    const TemporaryFolder folder;
    folder.write(std::filesystem::path(u8"дом-家.txt"), "x");
    SourceWalk walk(systemSources(), folder.path(), {});
    EXPECT_TRUE(walk.add("*.txt"));
    EXPECT_EQ(namesOf(walk), std::vector<std::string>{reinterpret_cast<const char*>(u8"дом-家.txt")});
}

TEST(RealSources, RemovesAWriteProtectedFile) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.write("p.txt", "x");
    std::filesystem::permissions(file,
                                 std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                                     std::filesystem::perms::others_write,
                                 std::filesystem::perm_options::remove);
    SourceSystem& system = systemSources();
    const std::optional<SourceFacts> facts = system.find(system.absolute(file));
    ASSERT_TRUE(facts.has_value());
    EXPECT_EQ(facts->attributes & attribute::kReadOnly, attribute::kReadOnly);
    EXPECT_TRUE(system.removeFile(system.absolute(file)));
    EXPECT_FALSE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace archiver::test
