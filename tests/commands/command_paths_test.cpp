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

TEST(CommandPaths, AreShownWithoutTheSignOfALongPath) {
    // Elsewhere these are plain names.
    const bool windows = std::filesystem::path::preferred_separator == '\\';
    EXPECT_EQ(utf8Of(R"(\\?\C:\docs\a.txt)"), windows ? R"(C:\docs\a.txt)" : R"(\\?\C:\docs\a.txt)");
    EXPECT_EQ(utf8Of(R"(\\?\UNC\server\docs)"), windows ? R"(\\server\docs)" : R"(\\?\UNC\server\docs)");
    EXPECT_EQ(utf8Of(R"(\\?\Volume{1}\docs)"), R"(\\?\Volume{1}\docs)") << "there is no shorter form";
    EXPECT_EQ(utf8Of(R"(\\server\docs)"), R"(\\server\docs)");
    EXPECT_EQ(utf8Of(R"(\\?\)"), R"(\\?\)");
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
