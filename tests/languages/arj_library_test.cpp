#include <gtest/gtest.h>

#include <cstdio>

#include "formats_arj/support/arj_builder.h"
#include "languages/support/library_run.h"

namespace archiver {
namespace {

using test::arjArchive;
using test::ArjFile;
using test::crc32OneBitAtATime;
using testing::Files;
using testing::fixture;
using testing::LibraryRun;
using testing::makeNew;

/// Sizes and checksums in place of bytes.
Files digests(const Files& files) {
    Files result;
    for (const auto& [name, bytes] : files) {
        char text[32];
        std::snprintf(text, sizeof(text), "%u %08X", static_cast<unsigned>(bytes.size()),
                      static_cast<unsigned>(crc32OneBitAtATime(bytes)));
        result[name] = text;
    }
    return result;
}

class ArjLibrary : public ::testing::Test {
protected:
    void SetUp() override { run.archive = fixture("arj/methods.arj"); }
    LibraryRun run{"UnArj32j", "Unarj"};
};

// As 7zz lists them.
TEST_F(ArjLibrary, UnpacksWithFolders) {
    EXPECT_EQ(run(" x -i- -y+ -!@ ARC OUT *.*"), 0) << run.text();
    EXPECT_EQ(digests(run.unpacked()), (Files{{"method1/novel.txt", "16004 8C44A0BA"},
                                              {"method2/main.c", "1160 C28ACD00"},
                                              {"method3/zeros.bin", "300000 F6B2E2FB"},
                                              {"method4/novel.txt", "12005 73FBB476"},
                                              {"method4/main.c", "1160 C28ACD00"},
                                              {"stored/readme.txt", "29 9DA46E34"},
                                              {"stored/empty.txt", "0 00000000"}}));
}

TEST_F(ArjLibrary, UnpacksFlatAndReplaces) {
    makeNew(run.scratch.write("out/readme.txt", "mine"));
    EXPECT_EQ(run(" e -i- -y+ -!@ -y+ ARC OUT readme.txt main.c"), 0) << run.text();
    EXPECT_EQ(digests(run.unpacked()), (Files{{"readme.txt", "29 9DA46E34"}, {"main.c", "1160 C28ACD00"}}));
}

TEST_F(ArjLibrary, KeepsWhatIsThereWhenNobodyCanBeAsked) {
    run.scratch.write("out/readme.txt", "mine");
    EXPECT_EQ(run("e ARC OUT readme.txt"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"readme.txt", "mine"}}));
}

TEST_F(ArjLibrary, ReadsAResponseFile) {
    run.scratch.write("list", "stored/*.*\r\nmethod2/main.c\r\n");
    EXPECT_EQ(run(" x -i- -y+ -!@ ARC OUT @list"), 0) << run.text();
    EXPECT_EQ(digests(run.unpacked()), (Files{{"method2/main.c", "1160 C28ACD00"},
                                              {"stored/readme.txt", "29 9DA46E34"},
                                              {"stored/empty.txt", "0 00000000"}}));
}

TEST_F(ArjLibrary, TestsAndLists) {
    EXPECT_EQ(run("t ARC main.c"), 0);
    EXPECT_EQ(run.text(), "Processing archive: " + run.archive +
                              "\r\nTesting method2\\main.c   OK\r\nTesting method4\\main.c   OK\r\nAll OK\r\n");
    EXPECT_EQ(run("v ARC empty.txt readme.txt"), 0);
    EXPECT_NE(run.text().find("stored\\readme.txt\r\n                     29       29 100.0% "), std::string::npos)
        << run.text();
    EXPECT_NE(run.text().find("\r\n2 Files\r\n"), std::string::npos) << run.text();
}

TEST_F(ArjLibrary, OpensGarbledMembersWithTheirPassword) {
    run.archive = fixture("arj/garbled.arj");
    EXPECT_EQ(run("x -gsecret ARC OUT"), 0) << run.text();
    EXPECT_EQ(
        digests(run.unpacked()),
        (Files{{"readme.txt", "29 9DA46E34"}, {"docs/a,b.txt", "19 68B36E1A"}, {"docs/my file.txt", "18 BEA93D61"}}));
}

TEST_F(ArjLibrary, RefusesAWrongPassword) {
    run.archive = fixture("arj/garbled.arj");
    EXPECT_EQ(run("x -gwrong ARC OUT"), 0x800A) << run.text();
    EXPECT_EQ(run("x ARC OUT"), 0x800A) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"docs/", ""}})) << "no file";
}

ArjFile part(std::string name, std::string content, std::uint8_t flags, std::uint32_t position) {
    return {
        .name = std::move(name), .content = std::move(content), .firstPart = 34, .flags = flags, .position = position};
}

TEST_F(ArjLibrary, FollowsVolumes) {
    run.archive =
        run.scratch
            .write("set.arj",
                   arjArchive({.flags = 0x04}, {{.name = "one", .content = "1"}, part("docs/split", "abc", 0x14, 0)}))
            .string();
    run.scratch.write("set.a01",
                      arjArchive({}, {part("docs/split", "defg", 0x18, 3), {.name = "two", .content = "2"}}));
    EXPECT_EQ(run(" x -i- -y+ -!@ ARC OUT *.*"), 0) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"one", "1"}, {"docs/split", "abcdefg"}, {"two", "2"}}));
}

TEST_F(ArjLibrary, MissesAVolume) {
    run.archive = run.scratch
                      .write("set.arj", arjArchive({.flags = 0x04},
                                                   {{.name = "one", .content = "1"}, part("split", "abc", 0x14, 0)}))
                      .string();
    EXPECT_EQ(run(" x -i- -y+ -!@ ARC OUT *.*"), 0x8018) << run.text();
    EXPECT_EQ(run.unpacked(), (Files{{"one", "1"}})) << "what was good is kept";
}

TEST_F(ArjLibrary, TakesTheNewestChapterOrAll) {
    run.archive = run.scratch
                      .write("chapters.arj",
                             arjArchive({.lastChapter = 2},
                                        {{.name = "a", .content = "old", .firstChapter = 1, .lastChapter = 1},
                                         {.name = "a", .content = "newer", .firstChapter = 2, .lastChapter = 2},
                                         {.name = "gone", .content = "gone", .firstChapter = 1, .lastChapter = 1}}))
                      .string();
    EXPECT_EQ(run("t ARC"), 0);
    EXPECT_EQ(run.text(), "Processing archive: " + run.archive + "\r\nTesting a   OK\r\nAll OK\r\n");
    EXPECT_EQ(run("t -jb* ARC"), 0);
    EXPECT_EQ(run.text(), "Processing archive: " + run.archive +
                              "\r\nTesting a   OK\r\nTesting a   OK\r\nTesting gone   OK\r\nAll OK\r\n");
}

TEST_F(ArjLibrary, NamesWhatIsDamaged) {
    run.archive = run.scratch
                      .write("bad.arj", arjArchive({}, {{.name = "good", .content = "1"},
                                                        {.name = "bad", .content = "2", .crc = 1},
                                                        {.name = "last", .content = "3"}}))
                      .string();
    EXPECT_EQ(run(" x -i- -y+ -!@ ARC OUT *.*"), 0x800C);
    EXPECT_EQ(run.unpacked(), (Files{{"good", "1"}, {"last", "3"}}));
    EXPECT_EQ(run.text(), "Processing archive: " + run.archive +
                              "\r\nExtracting good   OK\r\nExtracting bad   CRC error!\r\nExtracting last   OK\r\n"
                              "Errors: 1\r\n");
}

}  // namespace
}  // namespace archiver
