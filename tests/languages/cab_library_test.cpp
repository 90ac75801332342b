#include <gtest/gtest.h>

#include "languages/support/library_run.h"

namespace archiver {
namespace {

using testing::Files;
using testing::fixture;
using testing::LibraryRun;

constexpr const char* kMsZip = "If you can read this, the MSZIP decompressor is working!\n";
constexpr const char* kQuantum = "If you can read this, the Quantum decompressor is working!\n";

class CabLibrary : public ::testing::Test {
protected:
    void SetUp() override { run.archive = fixture("cab/mszip_lzx_qtm.cab"); }
    LibraryRun run{"Cab32", "Cab"};
};

TEST_F(CabLibrary, Unpacks) {
    EXPECT_EQ(run(" -x -v ARC OUT *.*"), 0) << run.text();
    const std::string line(65, '-');
    EXPECT_EQ(run.unpacked(),
              (Files{{"mszip.txt", kMsZip},
                     {"lzx.txt", line + "\nIf you can read this, the LZX decompressor is working!\n" + line + "\n"},
                     {"qtm.txt", kQuantum}}));
    EXPECT_EQ(run.text(), "Extracting from " + run.archive +
                              "\r\nExtracting mszip.txt   OK\r\nExtracting lzx.txt   OK\r\nExtracting qtm.txt   OK\r\n"
                              "All OK\r\n");
}

TEST_F(CabLibrary, ReplacesWhenTold) {
    run.scratch.write("out/qtm.txt", "mine");
    EXPECT_EQ(run(" -x -v ARC OUT qtm.txt"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"qtm.txt", "mine"}})) << "nobody can be asked";
    EXPECT_EQ(run(" -x -v -j -o ARC OUT qtm.txt"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"qtm.txt", kQuantum}}));
}

TEST_F(CabLibrary, Lists) {
    EXPECT_EQ(run("-l ARC"), 0);
    EXPECT_EQ(run.text(),
              "  Name         Original   Packed  Ratio   Date     Time   Attr Method\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- -------\r\n"
              "mszip.txt            57       59 103.5% 97-03-12 11:13:52 a--w MSZIP\r\n"
              "lzx.txt             187      114  60.9% 97-03-12 11:13:52 a--w LZX\r\n"
              "qtm.txt              59       48  81.3% 97-03-12 11:13:52 a--w Quantum\r\n"
              "-------------- -------- -------- ------ -------- -------- ---- -------\r\n"
              "3 Files\r\n");
}

TEST_F(CabLibrary, TestsQuietlyWhenTold) {
    EXPECT_EQ(run("-t ARC mszip.txt"), 0);
    EXPECT_EQ(run.text(), "Testing " + run.archive + "\r\nTesting mszip.txt   OK\r\nAll OK\r\n");
    EXPECT_EQ(run("-t -n ARC mszip.txt"), 0);
    EXPECT_EQ(run.text(), "\r\n");
}

TEST_F(CabLibrary, ReadsAResponseFileAndExpressions) {
    run.scratch.write("list", "qtm.txt\r\n");
    EXPECT_EQ(run(" -x -v ARC OUT @list"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"qtm.txt", kQuantum}}));
    EXPECT_EQ(run(R"(-x -w ARC OUT ms[a-z]+\.txt)"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"qtm.txt", kQuantum}, {"mszip.txt", kMsZip}}));
}

TEST_F(CabLibrary, FollowsASet) {
    run.archive = fixture("cab/cabd_multi_basic_pt3.cab");
    EXPECT_EQ(run("-x -k ARC OUT"), 0) << run.text();
    const std::string part = "This is the data from cabinet part ";
    EXPECT_EQ(run.unpacked(), (Files{{"test1.txt", part + "1.\n" + part + "2.\n"},
                                     {"test2.txt", part + "3.\n"},
                                     {"test3.txt", part + "4.\n" + part + "5.\n"}}));
}

TEST_F(CabLibrary, MissesACabinetOfASet) {
    run.archive = (run.scratch.path() / "first.cab").string();
    std::filesystem::copy_file(fixture("cab/cabd_multi_basic_pt1.cab"), run.archive);
    EXPECT_EQ(run("-x -k ARC OUT"), 0x8018) << run.text();
    EXPECT_TRUE(run.unpacked().empty());
    EXPECT_EQ(run.text(), "Extracting from " + run.archive +
                              "\r\nExtracting test1.txt   the archive cannot be opened\r\n"
                              "Extracting test2.txt   the archive cannot be opened\r\n"
                              "Extracting test3.txt   the archive cannot be opened\r\nErrors: 3\r\n");
}

TEST_F(CabLibrary, SaysWhatWentWrong) {
    EXPECT_EQ(run("-a -ml -k  ARC a.txt"), 0x8023);
    EXPECT_EQ(run.text(), "Error(0x8023): not supported\r\n");
    EXPECT_EQ(run("-x ARC OUT nothing.txt"), 0x800F);
    EXPECT_EQ(run("-x none.cab"), 0x8029);
    run.archive = fixture("arj/methods.arj");
    EXPECT_EQ(run("-x ARC OUT"), 0x801B);
    EXPECT_TRUE(run.unpacked().empty());
}

/// With a tree of files and the name of a cabinet that is not there yet.
class CabCreation : public CabLibrary {
protected:
    void SetUp() override {
        run.scratch.write("base/a.txt", "alpha");
        run.scratch.write("base/my docs/b.txt", std::string(100000, 'b'));
        run.scratch.write("base/my docs/deep/c.txt", "gamma");
        std::filesystem::create_directories(run.scratch.path() / "base" / "empty");
        run.archive = (run.scratch.path() / "made.cab").string();
    }
    std::int32_t create(const std::string& switches, const std::string& list) {
        run.scratch.write("names", list);
        const std::string base = (run.scratch.path() / "base").string();
        return run(switches + "  ARC \"" + base + "/\" @\"" + (run.scratch.path() / "names").string() + "\"");
    }
    Files unpacked() {
        EXPECT_EQ(run(" -x -v ARC OUT *.*"), 0) << run.text();
        return run.unpacked();
    }
};

TEST_F(CabCreation, PacksFilesAndFolders) {
    EXPECT_EQ(create("-a -mz -k -r ", "a.txt\r\n\"my docs\\\"\r\nempty\\\r\n"), 0) << run.text();
    EXPECT_EQ(run.text(),
              "Creating " + run.archive +
                  "\r\nAdding a.txt   OK\r\nAdding my docs\\b.txt   OK\r\nAdding my docs\\deep\\c.txt   OK\r\n"
                  "All OK\r\n");
    EXPECT_EQ(
        unpacked(),
        (Files{{"a.txt", "alpha"}, {"my docs/b.txt", std::string(100000, 'b')}, {"my docs/deep/c.txt", "gamma"}}));
    EXPECT_EQ(run("-l ARC a.txt"), 0);
    EXPECT_NE(run.text().find(" MSZIP\r\n"), std::string::npos) << run.text();
}

TEST_F(CabCreation, TakesNothingOfFoldersWithoutRecursion) {
    EXPECT_EQ(create("-a -mz -k ", "a.txt\r\n\"my docs\\\"\r\n"), 0) << run.text();
    EXPECT_EQ(unpacked(), (Files{{"a.txt", "alpha"}}));
}

TEST_F(CabCreation, TakesTheWholeBaseForAnEmptyLine) {
    EXPECT_EQ(create("-a -mz -k -r ", "\\\r\n"), 0) << run.text();
    EXPECT_EQ(unpacked().size(), 3u);
}

TEST_F(CabCreation, ReplacesTheCabinetThatIsThere) {
    EXPECT_EQ(create("-a -mz -k -r ", "\"my docs\""), 0) << run.text();
    EXPECT_EQ(create("-a -mz -k ", "a.txt"), 0) << run.text();
    EXPECT_EQ(unpacked(), (Files{{"a.txt", "alpha"}}));
}

TEST_F(CabCreation, PacksWhatIsThere) {
    EXPECT_EQ(create("-a -mz -k ", "gone.txt\r\na.txt\r\n"), 0x800F);
    EXPECT_EQ(run.text(),
              "Creating " + run.archive + "\r\nSkipping gone.txt   not found\r\nAdding a.txt   OK\r\nErrors: 1\r\n");
    EXPECT_EQ(unpacked(), (Files{{"a.txt", "alpha"}}));
}

TEST_F(CabCreation, LeavesTheOldCabinetWhenThereIsNothingToPack) {
    EXPECT_EQ(create("-a -mz -k ", "a.txt"), 0) << run.text();
    EXPECT_EQ(create("-a -mz -k ", "gone.txt"), 0x800F);
    EXPECT_EQ(create("-a -mz -k ", "empty"), 0x800F) << "empty folders cannot be stored";
    EXPECT_EQ(unpacked(), (Files{{"a.txt", "alpha"}}));
}

TEST_F(CabCreation, StoresWhenTold) {
    EXPECT_EQ(create("-a -mn -j -n ", "\"my docs/b.txt\""), 0) << run.text();
    EXPECT_EQ(run.text(), "\r\n");
    EXPECT_GT(std::filesystem::file_size(run.archive), 100000u);
    EXPECT_EQ(unpacked(), (Files{{"b.txt", std::string(100000, 'b')}}));
}

TEST_F(CabCreation, DoesNotPackItself) {
    run.archive = (run.scratch.path() / "base" / "made.cab").string();
    EXPECT_EQ(create("-a -mz -k -r ", "\\"), 0) << run.text();
    EXPECT_EQ(create("-a -mz -k -r ", "\\"), 0) << run.text();
    EXPECT_EQ(unpacked().size(), 3u) << "neither the cabinet that is there nor the new one";
}

}  // namespace
}  // namespace archiver
