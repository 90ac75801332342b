#include <gtest/gtest.h>

#include "archivers/infozip32/zip_console.h"
#include "infozip32/support/zip_scene.h"

namespace archiver::test {
namespace {

using Pieces = std::vector<std::string>;

class Messages : public testing::Test {
protected:
    [[nodiscard]] std::string archiveName() const { return utf8OfPath(scene_.archive); }
    ZipScene scene_;
};

TEST_F(Messages, TellsANewMemberInTwoPieces) {
    scene_.write("a.txt", std::string(1000, 'a'));
    scene_.write("b.txt", "b");
    ASSERT_EQ(scene_.run({"a.txt", "b.txt"}), 0);
    EXPECT_EQ(scene_.messages, (Pieces{"  adding: a.txt", " (deflated 99%)\n", "  adding: b.txt", " (stored 0%)\n"}));
}

TEST_F(Messages, TellsFoldersToo) {
    scene_.makeFolder("f/g");
    scene_.options.recurse = 1;
    ASSERT_EQ(scene_.run({"f\\*.*"}), 0);
    EXPECT_EQ(scene_.messages, (Pieces{"  adding: f/", " (stored 0%)\n", "  adding: f/g/", " (stored 0%)\n"}));
}

TEST_F(Messages, TellsWhatIsReplaced) {
    scene_.write("a.txt", "one", 100);
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    scene_.write("a.txt", "two", 50);
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.messages, (Pieces{"updating: a.txt", " (stored 0%)\n"}));
    scene_.write("a.txt", "three", 0);
    scene_.options.freshen = 1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.messages, (Pieces{"freshening: a.txt", " (stored 0%)\n"}));
}

TEST_F(Messages, TellsWhatIsDeletedInOnePiece) {
    scene_.write("a.txt", "a");
    scene_.write("d/b.txt", "b");
    ASSERT_EQ(scene_.run({"a.txt", "d/b.txt"}), 0);
    scene_.options.deleteEntries = 1;
    ASSERT_EQ(scene_.run({"d\\b.txt"}), 0);
    EXPECT_EQ(scene_.messages, Pieces{"deleting: d/b.txt\n"});
    EXPECT_EQ(scene_.serviced, (std::vector<std::pair<std::string, std::uint32_t>>{{"d/b.txt", 0}}));
}

TEST_F(Messages, TellsSizesProgressAndTotalsWhenVerbose) {
    scene_.write("a.txt", std::string(1000, 'a'));
    scene_.options.verbose = 1;
    scene_.options.level = '0';
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.messages, (Pieces{"  adding: a.txt", "\t(in=1000) (out=1000)", " (stored 0%)\n",
                                       "total bytes=1000, compressed=1000 -> 0% savings\n"}));
    scene_.write("big.txt", std::string(3 << 20, '\0'));
    scene_.options.noFolderEntries = 1;
    ASSERT_EQ(scene_.run({"big.txt"}), 0);
    EXPECT_EQ(scene_.messages, (Pieces{"  adding: big.txt", ".", ".", ".", "\t(in=3145728) (out=3145728)",
                                       " (stored 0%)\n", "total bytes=3145728, compressed=3145728 -> 0% savings\n"}));
}

TEST_F(Messages, TellsNothingOfMembersWhenQuiet) {
    scene_.write("a.txt", "a");
    scene_.options.quiet = 1;
    scene_.options.verbose = 1;
    ASSERT_EQ(scene_.run({"a.txt", "gone"}), 0);
    EXPECT_EQ(scene_.messages, Pieces{"\tzip warning: name not matched: gone\n"});
}

TEST_F(Messages, WarnsOfNamesThatNothingHas) {
    scene_.write("a.txt", "a");
    ASSERT_EQ(scene_.run({"gone.txt", "a.txt", "no\\*.*"}), 0);
    EXPECT_EQ(scene_.messages,
              (Pieces{"\tzip warning: name not matched: gone.txt\n", "\tzip warning: name not matched: no/*.*\n",
                      "  adding: a.txt", " (stored 0%)\n"}));
}

TEST_F(Messages, TellsThatThereIsNothingToDo) {
    EXPECT_EQ(scene_.run({"gone.txt"}), 12);
    EXPECT_EQ(scene_.messages, (Pieces{"\tzip warning: name not matched: gone.txt\n",
                                       "\nzip error: Nothing to do! (" + archiveName() + ")\n"}));
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
}

TEST_F(Messages, TellsThatAnArchiveIsMissing) {
    scene_.options.deleteEntries = 1;
    EXPECT_EQ(scene_.run({"a.txt"}), 13);
    EXPECT_EQ(scene_.messages, (Pieces{"\tzip warning: " + archiveName() + " not found or empty\n",
                                       "\nzip error: Missing or empty zip file (" + archiveName() + ")\n"}));
}

TEST_F(Messages, TellsTheSystemsWordsBeforeAnErrorOfWriting) {
    scene_.write("a.txt", "a");
    scene_.archive = scene_.path("no/folder.zip");
    EXPECT_EQ(scene_.run({"a.txt"}), 15);
    ASSERT_EQ(scene_.messages.size(), 2U);
    EXPECT_FALSE(scene_.messages[0].empty());
    EXPECT_EQ(scene_.messages[1], "\nzip error: Could not create output file (" + archiveName() + ")\n");
}

TEST_F(Messages, TellsThatTheUserEndedIt) {
    scene_.write("a.txt", "a");
    scene_.write("b.txt", "b");
    scene_.stopAt = 1;
    EXPECT_EQ(scene_.run({"a.txt", "b.txt"}), 9);
    EXPECT_EQ(scene_.messages.back(), "\nzip error: Interrupted (aborting)\n");
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
    EXPECT_TRUE(scene_.strays().empty());
}

TEST_F(Messages, CallsTheServiceForEachMemberWithItsSize) {
    scene_.write("d/a.txt", "12345");
    scene_.options.recurse = 1;
    ASSERT_EQ(scene_.run({"d\\*.*"}), 0);
    EXPECT_EQ(scene_.serviced, (std::vector<std::pair<std::string, std::uint32_t>>{{"d/", 0}, {"d/a.txt", 5}}));
}

struct SavingCase {
    const char* name;
    std::uint64_t original, packed;
    unsigned expected;
};
class Saving : public testing::TestWithParam<SavingCase> {};
TEST_P(Saving, IsRoundedAsTheTextsHaveIt) {
    EXPECT_EQ(infozip::savedPerCent(GetParam().original, GetParam().packed), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Rows, Saving,
                         testing::Values(SavingCase{"Nothing", 0, 0, 0}, SavingCase{"Equal", 10, 10, 0},
                                         SavingCase{"Larger", 10, 11, 0}, SavingCase{"Half", 100, 50, 50},
                                         SavingCase{"RoundedUp", 1000, 995, 1}, SavingCase{"RoundedDown", 1000, 996, 0},
                                         SavingCase{"All", 1000, 0, 100},
                                         SavingCase{"BeyondShift", 0x1000000, 0x800000, 50},
                                         SavingCase{"VeryLarge", 1ULL << 40, 1ULL << 39, 50}),
                         [](const auto& each) { return std::string(each.param.name); });

struct ResultCase {
    std::int32_t code;
    const char* text;
};
class Results : public testing::TestWithParam<ResultCase> {};
TEST_P(Results, HaveTheirText) { EXPECT_EQ(infozip::textOf(GetParam().code), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(
    Rows, Results,
    testing::Values(ResultCase{0, ""}, ResultCase{2, "Unexpected end of zip file"},
                    ResultCase{3, "Zip file structure invalid"}, ResultCase{4, "Out of memory"},
                    ResultCase{5, "Internal logic error"}, ResultCase{6, "Entry too big to split"},
                    ResultCase{7, "Invalid comment format"}, ResultCase{8, "Zip file invalid or could not spawn unzip"},
                    ResultCase{9, "Interrupted"}, ResultCase{10, "Temporary file failure"},
                    ResultCase{11, "Input file read failure"}, ResultCase{12, "Nothing to do!"},
                    ResultCase{13, "Missing or empty zip file"}, ResultCase{14, "Output file write failure"},
                    ResultCase{15, "Could not create output file"}, ResultCase{16, "Invalid command arguments"},
                    ResultCase{17, ""}, ResultCase{18, "File not found or no read permission"}),
    [](const auto& each) { return "Code" + std::to_string(each.param.code); });

}  // namespace
}  // namespace archiver::test
