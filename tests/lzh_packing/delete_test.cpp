#include "lzh_packing/support/packing_fixture.h"

/// Members that are taken out.
namespace archiver::test {
namespace {

using Names = std::vector<std::string>;

class LzhDelete : public LzhPackingTest {
protected:
    void SetUp() override {
        source("readme.txt", "r");
        source("docs/a.txt", "a");
        source("docs/deep/b.txt", "b");
        source("docs2/c.txt", "c");
        ASSERT_EQ(run("a -d1 ARC BASE readme.txt docs docs2"), kOk);
        ASSERT_EQ(names(), (Names{"readme.txt", "docs/", "docs/a.txt", "docs/deep/", "docs/deep/b.txt", "docs2/",
                                  "docs2/c.txt"}));
        events_ = {};
    }
};

TEST_F(LzhDelete, TakesOutWhatIsNamed) {
    EXPECT_EQ(run("d ARC docs/a.txt README.TXT"), kOk);
    EXPECT_EQ(names(), (Names{"docs/", "docs/deep/", "docs/deep/b.txt", "docs2/", "docs2/c.txt"}));
    EXPECT_EQ(events_.lines, (Names{"deleted readme.txt", "deleted docs/a.txt"}));
    EXPECT_EQ(contents().at("docs/deep/b.txt"), "b");
}

TEST_F(LzhDelete, TakesOutFoldersAtEveryDepth) {
    EXPECT_EQ(run("d ARC docs/*.*"), kOk);
    EXPECT_EQ(names(), (Names{"readme.txt", "docs2/", "docs2/c.txt"}));
}

TEST_F(LzhDelete, ReadsNamesFromAList) {
    const std::filesystem::path list = folder_.write("list", "docs/*.*\r\n\"readme.txt\"\r\n");
    EXPECT_EQ(run("d ARC @\"" + utf8OfPath(list) + '"'), kOk);
    EXPECT_EQ(names(), (Names{"docs2/", "docs2/c.txt"}));
}

TEST_F(LzhDelete, RemovesTheArchiveWithItsLastMember) {
    EXPECT_EQ(run("d ARC *.*"), kOk);
    EXPECT_EQ(beside(), Names{"base"});
    EXPECT_EQ(events_.lines.size(), 7U);
}

TEST_F(LzhDelete, ChangesNothingWhenNothingIsChosen) {
    const std::string before = archiveBytes();
    EXPECT_EQ(run("d ARC gone.txt"), kNotExist);
    EXPECT_TRUE(archiveBytes() == before);
    EXPECT_EQ(run("d ARC"), kNotFilename);
    const std::filesystem::path list = folder_.write("list", "");
    EXPECT_EQ(run("d ARC @\"" + utf8OfPath(list) + '"'), kNotExist) << "a list without names chooses nothing";
    EXPECT_TRUE(archiveBytes() == before);
}

TEST_F(LzhDelete, TellsThatThereIsNoArchive) {
    std::filesystem::remove(archive_);
    EXPECT_EQ(run("d ARC a"), kNotFindArcFile);
}

}  // namespace
}  // namespace archiver::test
