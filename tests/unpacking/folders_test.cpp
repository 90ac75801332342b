#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(Folders, AreMadeAsNeededAndTold) {
    UnpackScene scene({file("a/b/c.txt"), file("a/d.txt"), folder("e/")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports,
              (Lines{"folder a/b/c.txt > a", "folder a/b/c.txt > a/b", "unpacked a/b/c.txt > a/b/c.txt",
                     "unpacked a/d.txt > a/d.txt", "folder e/ > e"}));
    EXPECT_EQ(scene.summary.unpacked, 2U);
}

TEST(Folders, ThatAreThereAreNotTold) {
    UnpackScene scene({folder("a/"), file("a/b.txt")});
    scene.target.putFolder("a");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, Lines{"unpacked a/b.txt > a/b.txt"});
    EXPECT_TRUE(scene.target.propertiesSet.empty());
}

TEST(Folders, GetTheirTimesAfterAllElseAndTheDeepestFirst) {
    FakeMember outer = folder("a/");
    outer.member.written = Moment{5, 0};
    outer.member.attributes = attribute::kFolder | attribute::kHidden;
    UnpackScene scene({outer, folder("a/b/"), folder("a/b/c/"), folder("d/"), file("a/b/c/x")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.propertiesSet, (Lines{"a/b/c", "a/b", "a", "d"}));
    EXPECT_EQ(scene.target.item("a").properties.written->seconds, 5);
    EXPECT_EQ(scene.target.item("a").properties.attributes, attribute::kFolder | attribute::kHidden);
}

TEST(Folders, ThatAMemberNeededFirstGetTheirTimesToo) {
    UnpackScene scene({file("a/x"), folder("a/")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.propertiesSet, Lines{"a"});
    EXPECT_EQ(scene.events.reports, (Lines{"folder a/x > a", "unpacked a/x > a/x"}));
}

TEST(Folders, AreNotMadeForMembersThatAreSkipped) {
    UnpackScene scene({file("a/x")});
    scene.options.onlyExisting = true;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_TRUE(scene.target.names().empty());
}

TEST(Folders, ArePassedOverWithoutPaths) {
    UnpackScene scene({folder("a/"), file("a/x")});
    scene.options.keepFolders = false;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, Lines{"unpacked a/x > x"});
    EXPECT_EQ(scene.target.names(), Lines{"x"});
}

TEST(Folders, TheTargetItselfIsNoMember) {
    UnpackScene scene({folder("./"), file("./a")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, Lines{"unpacked ./a > a"});
    EXPECT_TRUE(scene.target.propertiesSet.empty());
}

TEST(Folders, ATargetThatIsAFileEndsTheRun) {
    UnpackScene scene({file("a"), file("b")});
    scene.target.opens = kMakeDirectory;
    EXPECT_EQ(scene.unpack(), kMakeDirectory);
    EXPECT_TRUE(scene.events.reports.empty());
    EXPECT_TRUE(scene.events.begun.empty());
}

TEST(Folders, TheTargetIsNotMadeForNothing) {
    UnpackScene scene({file("a")});
    scene.chosen = [](const Member&) { return false; };
    EXPECT_EQ(scene.unpack(), kNotExist);
    EXPECT_TRUE(scene.target.opened.empty());
    scene.reader.archive.listedByHeaders = false;
    EXPECT_EQ(scene.reader.restart(), kOk);
    EXPECT_EQ(scene.unpack(), kNotExist);
    EXPECT_TRUE(scene.target.opened.empty());
}

}  // namespace
}  // namespace archiver::test
