#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(TestMembers, TellsGoodAndBadOnes) {
    FakeMember bad = file("b", "x");
    bad.code = kFileCrc;
    UnpackScene scene({folder("d/"), file("../a", "12345"), bad, symbolicLink("l", "/etc"), hardLink("h", "a")});
    scene.reader.detaches = true;
    EXPECT_EQ(scene.test(), kFileCrc);
    EXPECT_EQ(scene.events.reports, (Lines{"tested ../a", "failed b 800C", "tested l", "tested h"}));
    EXPECT_EQ(scene.events.begun, (Lines{"../a", "b", "l", "h"}));
    EXPECT_EQ(scene.summary.unpacked, 3U);
    EXPECT_EQ(scene.summary.bytes, 5U);
    EXPECT_TRUE(scene.target.opened.empty());
}

TEST(TestMembers, AsksForPasswords) {
    UnpackScene scene({encrypted("a", "pw"), encrypted("b", "pw")});
    scene.events.passwords = {"no", "pw"};
    EXPECT_EQ(scene.test(), kOk);
    EXPECT_EQ(scene.events.passwordQuestions, (Lines{"a 1", "a 2"}));
    EXPECT_EQ(scene.summary.password, "pw");
}

TEST(TestMembers, NothingChosenIsTold) {
    UnpackScene scene({file("a")});
    scene.chosen = [](const Member&) { return false; };
    EXPECT_EQ(scene.test(), kNotExist);
}

TEST(TestMembers, ReadsALinkWhoseTargetIsItsData) {
    FakeMember link = symbolicLink("l", "");
    link.content = "target";
    link.member.originalSize = 6;
    link.code = kFileCrc;
    UnpackScene scene({link});
    EXPECT_EQ(scene.test(), kFileCrc);
}

TEST(TestMembers, ABrokenArchiveEndsIt) {
    UnpackScene scene({file("a"), file("b")});
    scene.reader.endAt = 1;
    scene.reader.end = kHeaderBroken;
    EXPECT_EQ(scene.test(), kHeaderBroken);
    EXPECT_EQ(scene.events.reports, Lines{"tested a"});
}

}  // namespace
}  // namespace archiver::test
