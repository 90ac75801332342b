#include <gtest/gtest.h>

#include "formats/support/zip_builder.h"
#include "infozip32/support/zip_scene.h"

namespace archiver::test {
namespace {

using Names = std::vector<std::string>;
using Contents = std::map<std::string, std::string>;

class Modes : public testing::Test {
protected:
    ZipScene scene_;
};

TEST_F(Modes, AddsAndReplaces) {
    scene_.write("a.txt", "old");
    scene_.write("b.txt", "stays");
    ASSERT_EQ(scene_.run({"a.txt", "b.txt"}), 0);
    scene_.write("a.txt", "new", 1000);
    scene_.write("c.txt", "added");
    ASSERT_EQ(scene_.run({"a.txt", "c.txt"}), 0);
    EXPECT_EQ(scene_.members(), (Contents{{"a.txt", "new"}, {"b.txt", "stays"}, {"c.txt", "added"}}));
    EXPECT_EQ(scene_.memberNames(), (Names{"a.txt", "b.txt", "c.txt"}));
}

TEST_F(Modes, UpdatesOnlyWhatIsNewerAndAddsWhatIsNew) {
    scene_.write("a.txt", "first", 100);
    scene_.write("b.txt", "first", 100);
    ASSERT_EQ(scene_.run({"a.txt", "b.txt"}), 0);
    scene_.write("a.txt", "newer", 10);
    scene_.write("b.txt", "older", 200);
    scene_.write("c.txt", "added");
    scene_.options.update = 1;
    ASSERT_EQ(scene_.run({"*.txt"}), 0);
    EXPECT_EQ(scene_.members(), (Contents{{"a.txt", "newer"}, {"b.txt", "first"}, {"c.txt", "added"}}));
    EXPECT_EQ(scene_.run({"*.txt"}), 12);
    EXPECT_TRUE(scene_.messages.empty()) << scene_.text();
}

TEST_F(Modes, FreshensOnlyWhatIsThere) {
    scene_.write("a.txt", "first", 100);
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    scene_.write("a.txt", "newer", 10);
    scene_.write("c.txt", "not added");
    scene_.options.freshen = 1;
    ASSERT_EQ(scene_.run({"*.txt"}), 0);
    EXPECT_EQ(scene_.members(), (Contents{{"a.txt", "newer"}}));
    EXPECT_EQ(scene_.run({"*.txt"}), 12);
    EXPECT_TRUE(scene_.messages.empty()) << scene_.text();
}

TEST_F(Modes, FreshensNoArchiveThatIsNotThere) {
    scene_.write("a.txt", "a");
    scene_.options.freshen = 1;
    EXPECT_EQ(scene_.run({"a.txt"}), 12);
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
}

TEST_F(Modes, UpdatesAnArchiveThatIsNotThere) {
    scene_.write("a.txt", "a");
    scene_.options.update = 1;
    EXPECT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{"a.txt"});
}

TEST_F(Modes, DeletesByNameAndPattern) {
    for (const char* name : {"a.txt", "b.c", "d/a.txt", "d/e/f.txt"}) scene_.write(name, name);
    ASSERT_EQ(scene_.run({"a.txt", "b.c", "d/a.txt", "d/e/f.txt"}), 0);
    scene_.options.deleteEntries = 1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_EQ(scene_.memberNames(), (Names{"b.c", "d/a.txt", "d/e/f.txt"}));
    ASSERT_EQ(scene_.run({"d\\*.*"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{"b.c"});
    EXPECT_EQ(scene_.run({"zzz"}), 12);
    EXPECT_EQ(scene_.memberNames(), Names{"b.c"});
}

TEST_F(Modes, RemovesTheArchiveWithItsLastMember) {
    scene_.write("a.txt", "a");
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    scene_.options.deleteEntries = 1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_FALSE(std::filesystem::exists(scene_.archive));
    EXPECT_TRUE(scene_.strays().empty());
}

TEST_F(Modes, MovesFilesAndFolders) {
    scene_.write("d/a.txt", "a");
    scene_.write("d/e/b.txt", "b");
    scene_.write("other.txt", "stays");
    scene_.options.move = 1;
    scene_.options.recurse = 1;
    ASSERT_EQ(scene_.run({"d\\*.*"}), 0);
    EXPECT_EQ(scene_.members(), (Contents{{"d/", ""}, {"d/a.txt", "a"}, {"d/e/", ""}, {"d/e/b.txt", "b"}}));
    EXPECT_FALSE(scene_.exists("d"));
    EXPECT_TRUE(scene_.exists("other.txt"));
}

TEST_F(Modes, MovesIntoAnEncryptedArchive) {
    scene_.write("a.txt", "to move");
    scene_.options.move = 1;
    scene_.options.encrypt = 1;
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    EXPECT_FALSE(scene_.exists("a.txt"));
    EXPECT_EQ(scene_.members("secret"), (Contents{{"a.txt", "to move"}}));
}

TEST_F(Modes, MovesNothingWhenTheUserEndsIt) {
    scene_.write("a.txt", "a");
    scene_.write("b.txt", "b");
    scene_.options.move = 1;
    for (const long stop : {0L, 1L}) {
        scene_.stopAt = stop;
        EXPECT_EQ(scene_.run({"a.txt", "b.txt"}), 9);
        EXPECT_TRUE(scene_.exists("a.txt"));
        EXPECT_TRUE(scene_.exists("b.txt"));
        EXPECT_FALSE(std::filesystem::exists(scene_.archive));
    }
}

TEST_F(Modes, EndsAtEveryMemberWithTheOldArchiveUntouched) {
    scene_.write("a.txt", "a");
    ASSERT_EQ(scene_.run({"a.txt"}), 0);
    const std::string before = scene_.archiveBytes();
    for (std::size_t number = 0; number < 5; ++number) scene_.write(numbered("n", number), "x");
    for (long stop = 0; stop < 6; ++stop) {
        scene_.stopAt = stop;
        EXPECT_EQ(scene_.run({"a.txt", "n?"}), 9);
        EXPECT_EQ(scene_.archiveBytes(), before);
        EXPECT_TRUE(scene_.strays().empty());
    }
    scene_.options.deleteEntries = 1;
    scene_.stopAt = 0;
    EXPECT_EQ(scene_.run({"a.txt"}), 9);
    EXPECT_EQ(scene_.archiveBytes(), before);
}

TEST_F(Modes, KeepsWhatStandsInFrontOfAnArchiveUnlessTold) {
    ZipBuilder builder;
    builder.add({.name = "a.txt", .content = "inside"}).prefix("a program", true);
    scene_.write("made.zip", builder.build());
    scene_.write("b.txt", "b");
    ASSERT_EQ(scene_.run({"b.txt"}), 0);
    EXPECT_TRUE(scene_.archiveBytes().starts_with("a program"));
    EXPECT_EQ(scene_.members(), (Contents{{"a.txt", "inside"}, {"b.txt", "b"}}));
    scene_.options.junkSelfExtractor = 1;
    ASSERT_EQ(scene_.run({"b.txt"}), 0);
    EXPECT_TRUE(scene_.archiveBytes().starts_with("PK\x03\x04"));
    EXPECT_EQ(scene_.members(), (Contents{{"a.txt", "inside"}, {"b.txt", "b"}}));
}

TEST_F(Modes, CopiesMembersAsTheyAre) {
    // Not what any packer writes: it can only have been copied.
    const std::string odd = "\x01\x05\x00\xFA\xFFodd!!";
    ZipBuilder builder;
    builder.add({.name = "odd",
                 .content = std::string("\x01\x05\x00\xFA\xFF", 5) + "odd!!",
                 .method = 8,
                 .comment = "of the member",
                 .originalSize = 5,
                 .crc = ZipBuilder::crcOf("odd!!")});
    builder.comment("of the archive");
    scene_.write("made.zip", builder.build());
    scene_.write("b.txt", "b");
    ASSERT_EQ(scene_.run({"b.txt"}), 0);
    const std::string bytes = scene_.archiveBytes();
    EXPECT_NE(bytes.find(std::string("\x01\x05\x00\xFA\xFF", 5) + "odd!!"), bytes.npos);
    EXPECT_NE(bytes.find("of the member"), bytes.npos);
    EXPECT_TRUE(bytes.ends_with("of the archive"));
    EXPECT_EQ(scene_.members(), (Contents{{"odd", "odd!!"}, {"b.txt", "b"}}));
}

TEST_F(Modes, RepairsAnArchiveWithoutItsDirectory) {
    scene_.write("a.txt", textOfSize(5000));
    scene_.write("d/b.txt", "b");
    ASSERT_EQ(scene_.run({"a.txt", "d/b.txt"}), 0);
    const std::string whole = scene_.archiveBytes();
    scene_.write("made.zip", whole.substr(0, whole.find("PK\x01\x02") + 20));
    EXPECT_EQ(scene_.run({"a.txt"}), 3) << "nothing is added to a damaged one";
    scene_.options.repair = 1;
    ASSERT_EQ(scene_.run({}), 0);
    EXPECT_EQ(scene_.members(), (Contents{{"a.txt", textOfSize(5000)}, {"d/b.txt", "b"}}));
}

TEST_F(Modes, RepairsNothingThatIsNotThere) {
    scene_.options.repair = 1;
    EXPECT_EQ(scene_.run({}), 13);
}

TEST_F(Modes, StoresNamesWithoutFoldersWhenTold) {
    scene_.write("d/a.txt", "a");
    scene_.write("d/e/b.txt", "b");
    scene_.options.junkFolders = 1;
    scene_.options.recurse = 1;
    ASSERT_EQ(scene_.run({"d\\*.*"}), 0);
    EXPECT_EQ(scene_.memberNames(), (Names{"a.txt", "b.txt"}));
}

TEST_F(Modes, StoresNoFoldersWhenTold) {
    scene_.write("d/e/b.txt", "b");
    scene_.options.noFolderEntries = 1;
    scene_.options.recurse = 1;
    ASSERT_EQ(scene_.run({"d\\*.*"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{"d/e/b.txt"});
}

TEST_F(Modes, CutsTheRootFolderFromNames) {
    scene_.write("d/a.txt", "a");
    ASSERT_EQ(scene_.run({utf8OfPath(scene_.path("d")) + "/*.*"}), 0);
    EXPECT_EQ(scene_.memberNames(), Names{"d/a.txt"});
}

}  // namespace
}  // namespace archiver::test
