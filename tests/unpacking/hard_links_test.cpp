#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(HardLinks, ShareAFileOfTheRun) {
    UnpackScene scene({file("x/a", "data"), hardLink("b", "x/a")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("b"), "data");
    EXPECT_EQ(scene.events.reports.back(), "link b > b");
}

TEST(HardLinks, WaitForTheFileOnItsThread) {
    for (int round = 0; round < 50; ++round) {
        UnpackScene scene({file("a", "data"), hardLink("b", "a"), hardLink("c", "b")});
        scene.reader.detaches = true;
        scene.options.threads = 4;
        ASSERT_EQ(scene.unpack(), kOk);
        ASSERT_EQ(scene.target.at("c"), "data");
    }
}

TEST(HardLinks, BecomeCopiesWhereThereAreNone) {
    UnpackScene scene({file("a", "data"), hardLink("b", "a")});
    scene.target.links = false;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("b"), "data");
}

TEST(HardLinks, ToAnythingElseAreRefused) {
    FakeMember bad = file("bad", "x");
    bad.code = kFileCrc;
    UnpackScene scene({folder("d/"), bad, symbolicLink("s", "old"), hardLink("1", "old"), hardLink("2", "/etc/passwd"),
                       hardLink("3", "d"), hardLink("4", "bad"), hardLink("5", "s"), hardLink("6", "")});
    scene.target.put("old", "the user's own");
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.events.reports,
              (Lines{"folder d/ > d", "failed bad > bad 800C", "refused 1 800F", "refused 2 800F", "refused 3 800F",
                     "refused 4 800F", "refused 5 800F", "refused 6 800F", "link s > s"}));
}

TEST(HardLinks, AreNotGivenAFileThatOnlyLooksAlike) {
    UnpackScene scene({file("a", "1"), file("A", "2"), hardLink("b", "A"), hardLink("c", "a")});
    scene.target.rules = NameRules::kWindows;
    EXPECT_EQ(scene.unpack(), kNotExist);
    EXPECT_EQ(scene.target.at("b"), "(none)");
    EXPECT_EQ(scene.target.at("c"), "1");
}

TEST(HardLinks, ToThemselvesAreRefusedAndTheFileStays) {
    UnpackScene scene({file("a", "1"), hardLink("a", "a"), hardLink("b", "a")});
    EXPECT_EQ(scene.unpack(), kSameNameFile);
    EXPECT_EQ(scene.target.at("a"), "1");
    EXPECT_EQ(scene.target.at("b"), "1");
}

TEST(HardLinks, FollowTheRulesForExistingFiles) {
    UnpackScene scene({file("a", "1"), hardLink("b", "a")});
    scene.options.existing = ExistingFiles::kKeep;
    scene.target.put("b", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("b"), "old");
    EXPECT_EQ(scene.events.reports.back(), "skipped b > b 8010");
}

TEST(HardLinks, LeadWithoutPathsToTheFileInTheOneFolder) {
    UnpackScene scene({file("x/a", "1"), hardLink("y/b", "x/a")});
    scene.options.keepFolders = false;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("b"), "1");
}

}  // namespace
}  // namespace archiver::test
