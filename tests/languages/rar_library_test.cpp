#include <gtest/gtest.h>

#include "languages/support/library_run.h"

namespace archiver {
namespace {

using testing::Files;
using testing::fixture;
using testing::LibraryRun;
using testing::makeNew;
using testing::makeOld;

constexpr const char* kText = "test text document\r\n";

class RarLibrary : public ::testing::Test {
protected:
    void SetUp() override { run.archive = fixture("rar/rar.rar"); }
    LibraryRun run{"UnRar32", "Unrar"};
};

TEST_F(RarLibrary, UnpacksWithFolders) {
    EXPECT_EQ(run(" -x -u  ARC OUT test.txt testdir/*.* testemptydir/"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"test.txt", kText}, {"testdir/test.txt", kText}, {"testemptydir/", ""}}));
}

TEST_F(RarLibrary, UnpacksFlat) {
    EXPECT_EQ(run(" -e -u  ARC OUT testdir/test.txt"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"test.txt", kText}}));
    EXPECT_EQ(run.text(), "Extracting from " + run.archive + "\r\nExtracting testdir\\test.txt   OK\r\nAll OK\r\n");
}

TEST_F(RarLibrary, UpdatesOlderFilesAndCountsThoseItKeeps) {
    makeNew(run.scratch.write("out/test.txt", "newer"));
    makeOld(run.scratch.write("out/testdir/test.txt", "older"));
    EXPECT_EQ(run(" -x -u  ARC OUT test.txt"), 1) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"test.txt", "newer"}, {"testdir/test.txt", kText}}));
    EXPECT_NE(run.text().find("Skipping test.txt   a newer file is there\r\n"), std::string::npos) << run.text();
    EXPECT_NE(run.text().find("Extracting testdir\\test.txt   OK\r\n"), std::string::npos) << run.text();
}

TEST_F(RarLibrary, ReplacesEverythingWhenAllIsAnsweredWithYes) {
    makeNew(run.scratch.write("out/test.txt", "newer"));
    makeOld(run.scratch.write("out/testdir/test.txt", "older"));
    EXPECT_EQ(run(" -x -u  -y ARC OUT test.txt"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"test.txt", kText}, {"testdir/test.txt", kText}}));
}

TEST_F(RarLibrary, HeedsRulesForFilesThatAreThere) {
    const auto target = run.scratch.write("out/test.txt", "mine");
    makeOld(target);
    EXPECT_EQ(run("x -o- ARC OUT test.txt -r"), 1) << "and testdir/test.txt is unpacked: " << run.text();
    EXPECT_EQ(run.unpacked().at("test.txt"), "mine");
    EXPECT_EQ(run("x ARC OUT test.txt"), 2) << "nobody can be asked: " << run.text();
    EXPECT_EQ(run.unpacked().at("test.txt"), "mine");
    std::filesystem::remove_all(run.target() / "testdir");
    EXPECT_EQ(run("x -f -y ARC OUT test.txt"), 1) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"test.txt", kText}})) << "the other was not there to be freshened";
}

TEST_F(RarLibrary, Lists) {
    EXPECT_EQ(run("l ARC test.txt testdir/*.*"), 0);
    // The times are local ones of the archive.
    EXPECT_EQ(run.text(),
              "  Name         Original   Packed  Ratio   Date     Time   Attr Method  CRC\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- ------- --------\r\n"
              "test.txt             20       20 100.0% 11-06-26 14:53:46 ---w storing BEC8A242\r\n"
              "testdir\\test.txt       20       20 100.0% 11-06-26 14:59:06 ---w storing BEC8A242\r\n"
              "testdir\\              0        0   0.0% 11-06-26 14:59:06 d--w storing 00000000\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- ------- --------\r\n"
              "3 Files\r\n");
}

TEST_F(RarLibrary, TestsAndPrints) {
    EXPECT_EQ(run("t ARC test.txt"), 0);
    EXPECT_EQ(run.text(),
              "Testing " + run.archive + "\r\nTesting test.txt   OK\r\nTesting testdir\\test.txt   OK\r\nAll OK\r\n");
    EXPECT_EQ(run("p ARC testdir/test.txt"), 0);
    EXPECT_EQ(run.text(), kText);
    EXPECT_FALSE(std::filesystem::exists(run.target()));
}

TEST_F(RarLibrary, ReadsAResponseFile) {
    run.scratch.write("list", "testdir/*.*\r\n");
    EXPECT_EQ(run(" -x -u  ARC OUT @list"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"testdir/test.txt", kText}}));
}

TEST_F(RarLibrary, SaysWhatWentWrong) {
    EXPECT_EQ(run("x ARC OUT nothing.txt"), 0x800F);
    EXPECT_EQ(run.text(), "Extracting from " + run.archive + "\r\nError(0x800f): no such member\r\n");
    run.archive = (run.scratch.path() / "none.rar").string();
    EXPECT_EQ(run("x ARC OUT"), 0x8029);
    run.archive = fixture("arj/methods.arj");
    EXPECT_EQ(run("x ARC OUT"), 0x801B);
    EXPECT_EQ(run("x"), 0x8019);
    run.archive = fixture("rar/rar_encryption_data.rar");
    EXPECT_EQ(run("x -h ARC OUT"), 0x800A);
    EXPECT_TRUE(run.unpacked().empty());
}

}  // namespace
}  // namespace archiver
