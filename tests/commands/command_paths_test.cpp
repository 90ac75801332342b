#include "archivers/commands/command_paths.h"

#include <gtest/gtest.h>

#include "commands/scratch_folder.h"

namespace archiver {
namespace {

using std::string_view_literals::operator""sv;

TEST(CommandPaths, EndAtANul) { EXPECT_EQ(pathOf("a.zip\0b"sv), "a.zip"); }

TEST(CommandPaths, TakeFoldersWithEitherSeparator) {
    EXPECT_EQ(folderOf("out/"), "out");
    EXPECT_EQ(folderOf("out\\"), "out");
    EXPECT_EQ(folderOf("out"), "out");
    EXPECT_EQ(folderOf("a b/c d/"), std::filesystem::path("a b") / "c d");
    EXPECT_EQ(folderOf("/").generic_string(), "/");
    EXPECT_EQ(folderOf("\\").generic_string(), "/");
    EXPECT_EQ(folderOf(""), "");
}

TEST(CommandPaths, KeepUtf8) {
    const std::string name = "\xE8\xA1\xA8 \xF0\x9F\x98\x80.zip";
    EXPECT_EQ(utf8Of(pathOf(name)), name);
}

TEST(CommandPaths, AddTheExtensionOfTheLanguage) {
    const testing::ScratchFolder folder("command-paths");
    EXPECT_EQ(archiveOf("docs", ".zip"), "docs.zip");
    EXPECT_EQ(archiveOf("docs.lzh", ".zip"), "docs.lzh");
    EXPECT_EQ(archiveOf("docs", ""), "docs");
    EXPECT_EQ(archiveOf("conf.d/docs", ".zip").generic_string(), "conf.d/docs.zip");
    EXPECT_EQ(archiveOf("docs/", ".zip").generic_string(), "docs/");
    folder.write("docs", "an archive without an extension");
    EXPECT_EQ(archiveOf("docs", ".zip"), "docs");
}

TEST(CommandPaths, KnowFiles) {
    const testing::ScratchFolder folder("command-paths");
    folder.write("a.txt", "x");
    EXPECT_TRUE(isFile("a.txt"));
    EXPECT_FALSE(isFile("b.txt"));
    EXPECT_FALSE(isFile(folder.path()));
    EXPECT_FALSE(isFile(""));
    EXPECT_FALSE(isFile(std::string(100'000, 'n')));
}

}  // namespace
}  // namespace archiver
