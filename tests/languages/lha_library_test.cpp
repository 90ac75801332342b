#include <gtest/gtest.h>

#include "formats_arj/support/arj_builder.h"
#include "languages/support/library_run.h"

namespace archiver {
namespace {

using test::crc32OneBitAtATime;
using testing::Files;
using testing::fixture;
using testing::LibraryRun;
using testing::makeNew;
using testing::makeOld;

constexpr const char* kHello = "hello world\n";
constexpr const char* kPlace = "subdir/subdir2/hello.txt";

class LhaLibrary : public ::testing::Test {
protected:
    void SetUp() override { run.archive = fixture("lzh/unix-folders-level1.lzh"); }
    LibraryRun run{"UnLha32", "Unlha"};
};

TEST_F(LhaLibrary, UnpacksWithFolders) {
    EXPECT_EQ(run(" x -c1 -f1 -jp1 -+ ARC OUT *.*"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{kPlace, kHello}}));
    EXPECT_TRUE(run.text().starts_with("\r\nExtracting from archive : " + run.archive + "\r\n\r\n")) << run.text();
    EXPECT_TRUE(run.text().ends_with("Melted   subdir/subdir2/hello.txt\r\n\r\n")) << run.text();
}

TEST_F(LhaLibrary, UnpacksFlat) {
    EXPECT_EQ(run("e ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"hello.txt", kHello}}));
    EXPECT_EQ(run.text(),
              "\r\nExtracting from archive : " + run.archive + "\r\n\r\nMelted   subdir/subdir2/hello.txt\r\n\r\n");
}

TEST_F(LhaLibrary, ReplacesWhateverTheDateWhenTold) {
    makeNew(run.scratch.write(std::string("out/") + kPlace, "newer"));
    EXPECT_EQ(run(" x -c1 -f1 -jp1 -+ ARC OUT *.*"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{kPlace, kHello}}));
}

TEST_F(LhaLibrary, KeepsNewerFilesElse) {
    makeNew(run.scratch.write("out/hello.txt", "newer"));
    EXPECT_EQ(run("e -m1 ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"hello.txt", "newer"}}));
    EXPECT_EQ(run.text(), "\r\nExtracting from archive : " + run.archive +
                              "\r\n\r\nSkipped  subdir/subdir2/hello.txt : newer file exists\r\n\r\n");
    makeOld(run.scratch.write("out/hello.txt", "older"));
    EXPECT_EQ(run("e -m1 ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"hello.txt", kHello}}));
}

TEST_F(LhaLibrary, KeepsWhatIsThereWhenNobodyCanBeAsked) {
    makeOld(run.scratch.write("out/hello.txt", "older"));
    EXPECT_EQ(run("e -c1 ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"hello.txt", "older"}}));
}

TEST_F(LhaLibrary, GivesNewNamesWhenTold) {
    run.scratch.write("out/hello.txt", "mine");
    EXPECT_EQ(run("e -c1 -m2 ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"hello.txt", "mine"}, {"hello (2).txt", kHello}}));
}

TEST_F(LhaLibrary, Lists) {
    EXPECT_EQ(run("l ARC hello.txt"), 0);
    const std::string text = run.text();
    EXPECT_TRUE(
        text.starts_with("\r\nListing of archive : " + run.archive +
                         "\r\n\r\n  Name          Original    Packed  Ratio   Date     Time   Attr Type  CRC\r\n"
                         "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n"
                         "+ hello.txt           12        12 100.0% "))
        << text;
    EXPECT_TRUE(
        text.ends_with(" ---w -lh0- 9778\r\n"
                       "--------------  --------  -------- ------ -------- -------- ---- ----- ----\r\n"
                       "     1 files          12        12 100.0%\r\n"))
        << text;
    EXPECT_EQ(run("ARC hello.txt"), 0) << "without a command";
    EXPECT_EQ(run.text(), text);
}

TEST_F(LhaLibrary, TestsAndPrints) {
    EXPECT_EQ(run("t ARC hello.txt"), 0);
    EXPECT_EQ(run.text(), "\r\nTesting archive : " + run.archive + "\r\n\r\nTested   subdir/subdir2/hello.txt\r\n");
    EXPECT_EQ(run("p ARC hello.txt"), 0);
    EXPECT_EQ(run.text(), "::::::::\r\nsubdir/subdir2/hello.txt\r\n::::::::\r\nhello world\n");
}

TEST_F(LhaLibrary, ChoosesByListAndExclusion) {
    run.scratch.write("list", "subdir/*.*\r\n");
    EXPECT_EQ(run("x -c1 ARC OUT @list -jxhello.*"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"subdir/subdir2/", ""}}));
}

TEST_F(LhaLibrary, AddsItsOutputToALog) {
    run.scratch.write("log", "before\r\n");
    EXPECT_EQ(run("t -gllog ARC hello.txt"), 0);
    const std::string tested = run.text();
    EXPECT_EQ(run("l ARC -gllog"), 0);
    EXPECT_EQ(testing::filesBelow(run.scratch.path()).at("log"), "before\r\n" + tested + run.text());
    EXPECT_TRUE(tested.ends_with("Tested   subdir/subdir2/hello.txt\r\n"));
}

TEST_F(LhaLibrary, UnpacksWhatIsPacked) {
    run.archive = fixture("lzh/lh6-level2.lzh");
    EXPECT_EQ(run(" x -a1 -c1 -f1 -jp1 -+ ARC OUT *.*"), 0) << run.text();
    EXPECT_EQ(crc32OneBitAtATime(run.unpacked().at("gpl-2")), 0x4E46F4A1U);
    EXPECT_EQ(run.text(), "\r\nExtracting from archive : " + run.archive + "\r\n\r\nMelted   gpl-2           \r\n\r\n");
    std::filesystem::permissions(run.target() / "gpl-2", std::filesystem::perms::all);
}

class LhaLibraryPacking : public LhaLibrary {
protected:
    void SetUp() override {
        run.archive = run.scratch.write("a.lzh", "").string();
        std::filesystem::remove(run.archive);
        run.scratch.write("base/docs/equal", std::string(100000, 'e'));
        run.scratch.write("base/one", "1");
    }

    [[nodiscard]] std::string base() const {
        std::filesystem::path folder = run.scratch.path() / "base";
        return '"' + (folder / "").make_preferred().string() + '"';
    }
};

TEST_F(LhaLibraryPacking, TellsOfEachStepInItsWords) {
    run.scratch.write("list", "one\r\ndocs\r\ngone\r\n");
    EXPECT_EQ(run("a -r2 -x1  ARC " + base() + " @list"), 0x800F) << run.text();
    EXPECT_EQ(run.text(), "\r\nCreating archive : " + run.archive +
                              "\r\n\r\nSkipped  gone : not found\r\n"
                              "Frozen   ==> 100% one\r\nFrozen   ==>   0% docs/equal\r\n"
                              "Error(0x800f): no such member\r\n");
    EXPECT_EQ(run("a ARC " + base() + " one"), 0) << run.text();
    EXPECT_EQ(run.text(), "\r\nUpdating archive : " + run.archive + "\r\n\r\nFrozen   ==> 100% one\r\n");
    EXPECT_EQ(run("u ARC " + base() + " one"), 0) << run.text();
    EXPECT_EQ(run.text(), "\r\nUpdating archive : " + run.archive + "\r\n\r\n") << "nothing is newer";
    makeNew(run.scratch.write("base/one", "22"));
    EXPECT_EQ(run("f ARC " + base() + " one"), 0) << run.text();
    EXPECT_EQ(run.text(), "\r\nFreshening archive : " + run.archive + "\r\n\r\nFrozen   ==> 100% one\r\n");
    EXPECT_EQ(run("x ARC OUT"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"one", "22"}, {"docs/equal", std::string(100000, 'e')}}));
    EXPECT_EQ(run("d ARC docs/*.*"), 0) << run.text();
    EXPECT_EQ(run.text(), "\r\nDeleting from archive : " + run.archive + "\r\n\r\nDeleted  docs/equal\r\n");
    EXPECT_EQ(run("m ARC " + base() + " one"), 0) << run.text();
    EXPECT_EQ(run.text(), "\r\nUpdating archive : " + run.archive + "\r\n\r\nFrozen   ==> 100% one\r\n");
    EXPECT_EQ(testing::filesBelow(run.scratch.path() / "base"), (Files{{"docs/equal", std::string(100000, 'e')}}));
    EXPECT_EQ(run("d ARC one"), 0) << run.text();
    EXPECT_FALSE(std::filesystem::exists(run.archive)) << "nothing was left in it";
    EXPECT_EQ(run("d ARC one"), 0x8029);
}

TEST_F(LhaLibraryPacking, RefusesWhatIsNoLzhArchive) {
    run.scratch.write("a.lzh", "something else");
    EXPECT_EQ(run("a ARC " + base() + " one"), 0x801B);
    EXPECT_EQ(run.text(), "\r\nUpdating archive : " + run.archive +
                              "\r\n\r\nError(0x801b): the file is no archive of this kind\r\n");
    EXPECT_EQ(testing::filesBelow(run.scratch.path()).at("a.lzh"), "something else");
}

TEST_F(LhaLibrary, SaysWhatWentWrong) {
    EXPECT_EQ(run("x ARC OUT nothing.txt"), 0x800F);
    EXPECT_EQ(run("s ARC a.txt"), 0x8023);
    EXPECT_EQ(run.text(), "Error(0x8023): not supported\r\n");
    EXPECT_EQ(run("d ARC"), 0x802B);
    EXPECT_EQ(run(""), 0x8019);
    EXPECT_EQ(run("x -k ARC OUT"), 0x801C);
    run.archive = fixture("arj/methods.arj");
    EXPECT_EQ(run("x ARC OUT"), 0x801B);
    EXPECT_EQ(run("x none.lzh"), 0x8029);
    EXPECT_TRUE(run.unpacked().empty());
}

}  // namespace
}  // namespace archiver
