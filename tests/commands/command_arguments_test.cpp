#include "archivers/commands/command_arguments.h"

#include <gtest/gtest.h>

#include <chrono>

#include "commands/latin1_codec.h"
#include "commands/scratch_folder.h"

namespace archiver {
namespace {

Member named(const char* name) {
    Member member;
    member.name = name;
    return member;
}

class CommandArguments : public ::testing::Test {
protected:
    /// Reads a line that begins with the archive.
    ReturnCode take(const std::string& line, ArgumentRules rules = {}) {
        command_ = {};
        const std::vector<CommandWord> words = commandWords(line);
        return takeArguments(line, words, rules, codec_, command_);
    }
    [[nodiscard]] bool takes(const char* name) const { return !command_.chosen || command_.chosen(named(name)); }
    [[nodiscard]] std::string target() const { return command_.options.target.generic_string(); }

    testing::ScratchFolder folder_{"command-arguments"};
    testing::Latin1Codec codec_;
    Command command_;
};

TEST_F(CommandArguments, NeedAnArchive) {
    EXPECT_EQ(take(""), 0x8019);
    EXPECT_EQ(take("  "), 0x8019);
    EXPECT_EQ(take("\"\""), 0x8019);
}

TEST_F(CommandArguments, MayBeTheArchiveAlone) {
    ASSERT_EQ(take("a.zip"), kOk);
    EXPECT_EQ(command_.archive, "a.zip");
    EXPECT_EQ(target(), "");
    EXPECT_FALSE(command_.namesGiven);
    EXPECT_TRUE(takes("docs/a.txt"));
}

TEST_F(CommandArguments, KnowTheTargetByItsPlaceAndSeparator) {
    ASSERT_EQ(take("a.zip out/ *.*"), kOk);
    EXPECT_EQ(target(), "out");
    EXPECT_FALSE(command_.namesGiven);
    ASSERT_EQ(take(R"("my files/a.zip" "my dir\" x.txt)"), kOk);
    EXPECT_EQ(command_.archive, "my files/a.zip");
    EXPECT_EQ(target(), "my dir");
    EXPECT_TRUE(command_.namesGiven);
    ASSERT_EQ(take("a.zip x.txt out/"), kOk);
    EXPECT_EQ(target(), "") << "too late for a target: a folder of the archive";
    EXPECT_TRUE(takes("out/a"));
    EXPECT_TRUE(takes("x.txt"));
    EXPECT_FALSE(takes("a"));
    ASSERT_EQ(take("a.zip out"), kOk);
    EXPECT_EQ(target(), "") << "a member";
    EXPECT_TRUE(takes("out"));
}

TEST_F(CommandArguments, TakeNamesAndPatterns) {
    ASSERT_EQ(take("a.zip out/ docs\\*.* readme *.c"), kOk);
    for (const char* name : {"docs/x/y/z", "docs\\a", "README", "src/README", "src/main.c"}) {
        EXPECT_TRUE(takes(name)) << name;
    }
    for (const char* name : {"src/main.h", "readme.txt", "docs2/a"}) EXPECT_FALSE(takes(name)) << name;
}

TEST_F(CommandArguments, TakeEverythingBesideAName) {
    ASSERT_EQ(take("a.zip out/ readme *.*"), kOk);
    EXPECT_FALSE(command_.namesGiven);
    EXPECT_TRUE(takes("other"));
}

TEST_F(CommandArguments, ReadLists) {
    folder_.write("list", "docs/*.*\r\n\"a b.txt\"\r\n\xE4.txt\r\n@x\r\n");
    for (const char* line : {"a.zip out/ @list", "a.zip out/ \"@list\"", "a.zip out/ @\"list\"", "a.zip @list"}) {
        ASSERT_EQ(take(line), kOk) << line;
        EXPECT_TRUE(command_.namesGiven);
        for (const char* name : {"docs/a/b", "a b.txt", "\xC3\xA4.txt", "@x"}) EXPECT_TRUE(takes(name)) << name;
        EXPECT_FALSE(takes("list")) << line;
    }
    ASSERT_EQ(take("a.zip out/ x @list y"), kOk) << "between names";
    for (const char* name : {"x", "docs/a", "y"}) EXPECT_TRUE(takes(name)) << name;
}

TEST_F(CommandArguments, ReadAListWhoseNameHasBlanks) {
    folder_.write("my list", "x\r\n");
    for (const char* line : {"a.zip out/ \"@my list\"", "a.zip out/ @\"my list\"", "a.zip out/ @my list"}) {
        ASSERT_EQ(take(line), kOk) << line;
        EXPECT_TRUE(takes("x")) << line;
        EXPECT_FALSE(takes("list")) << line;
    }
}

TEST_F(CommandArguments, ChooseNothingByAnEmptyList) {
    folder_.write("list", "\r\n");
    ASSERT_EQ(take("a.zip out/ @list"), kOk);
    EXPECT_TRUE(command_.namesGiven);
    EXPECT_FALSE(takes("x"));
}

TEST_F(CommandArguments, TellAListThatCannotBeRead) {
    EXPECT_EQ(take("a.zip out/ @none"), 0x802A);
    EXPECT_EQ(take("a.zip out/ @"), 0x802A);
}

TEST_F(CommandArguments, HaveOtherMarksOfLists) {
    folder_.write("list", "x\r\n");
    ASSERT_EQ(take("a.zip out/ !list", {.listMark = '!'}), kOk);
    EXPECT_TRUE(takes("x"));
    ASSERT_EQ(take("a.zip out/ @list", {.listMark = '\0'}), kOk);
    EXPECT_TRUE(takes("@list"));
}

TEST_F(CommandArguments, AddTheExtension) {
    ASSERT_EQ(take("docs out/", {.extension = ".zip"}), kOk);
    EXPECT_EQ(command_.archive, "docs.zip");
}

TEST_F(CommandArguments, FindAnArchiveWithoutQuotes) {
    std::filesystem::path archive;
    folder_.write("my files.zip", "x");
    EXPECT_TRUE(takeUnquotedArchive("-l my files.zip", 3, archive));
    EXPECT_EQ(archive, "my files.zip");
    archive.clear();
    EXPECT_FALSE(takeUnquotedArchive("-l my other.zip", 3, archive)) << "no file";
    EXPECT_FALSE(takeUnquotedArchive("-l \"my files.zip\"", 3, archive)) << "quoted: by words";
    EXPECT_FALSE(takeUnquotedArchive("-l", 3, archive));
    EXPECT_EQ(archive, "");
}

// A list of each of 100,000 members, over as many: by comparing each with each this would take minutes.
TEST_F(CommandArguments, TakeAHundredThousandNames) {
    std::string list;
    for (int number = 0; number < 100'000; ++number) list += "folder/name" + std::to_string(number) + ".txt\r\n";
    folder_.write("list", list);
    ASSERT_EQ(take("a.zip out/ @list"), kOk);
    const auto start = std::chrono::steady_clock::now();
    int taken = 0;
    for (int number = 0; number < 200'000; number += 2) {
        taken += takes(("folder/name" + std::to_string(number) + ".txt").c_str()) ? 1 : 0;
    }
    EXPECT_EQ(taken, 50'000);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace archiver
