#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(Options, ChooseMembers) {
    UnpackScene scene({file("a"), file("b"), file("c")});
    scene.chosen = [](const Member& member) { return member.name != "b"; };
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names(), (Lines{"a", "c"}));
    EXPECT_EQ(scene.summary.chosen, 2U);
    EXPECT_EQ(scene.events.begun, (Lines{"a", "c"}));
}

TEST(Options, NothingChosenIsTold) {
    UnpackScene scene({file("a")});
    scene.chosen = [](const Member&) { return false; };
    EXPECT_EQ(scene.unpack(), kNotExist);
    UnpackScene empty({});
    EXPECT_EQ(empty.unpack(), kNotExist);
}

TEST(Options, LeaveOutHiddenAndSystemFiles) {
    FakeMember hidden = file("h");
    hidden.member.attributes = attribute::kHidden;
    FakeMember system = folder("s/");
    system.member.attributes |= attribute::kSystem;
    UnpackScene scene({hidden, system, file("a")});
    scene.options.skipHiddenAndSystem = true;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names(), Lines{"a"});
    EXPECT_EQ(scene.events.reports, (Lines{"skipped h 8007", "skipped s/ 8007", "unpacked a > a"}));
}

TEST(Options, GiveTimesAndAttributes) {
    FakeMember member = file("a");
    member.member.created = Moment{7, 5};
    member.member.attributes = attribute::kReadOnly | attribute::kHidden;
    UnpackScene scene({member});
    EXPECT_EQ(scene.unpack(), kOk);
    const ItemProperties& given = scene.target.item("a").properties;
    EXPECT_EQ(given.written->seconds, 1'000'000'000);
    EXPECT_EQ(given.created->nanoseconds, 5U);
    EXPECT_EQ(given.attributes, attribute::kReadOnly | attribute::kHidden);
}

TEST(Options, LeaveAttributesToTheSystem) {
    UnpackScene scene({file("a")});
    scene.options.restoreAttributes = false;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_FALSE(scene.target.item("a").properties.attributes.has_value());
    EXPECT_TRUE(scene.target.item("a").properties.written.has_value());
}

TEST(Options, TakeTheTimeOfMsDosWhereThereIsNoOther) {
    FakeMember member = file("a");
    member.member.written.reset();
    member.member.dosDate = 0x2AB1;
    member.member.dosTime = 0x8BDD;
    UnpackScene scene({member});
    EXPECT_EQ(scene.unpack(), kOk);
    // 2001-05-17 17:30:58 local time, wherever the test runs: within a day of that in UTC.
    ASSERT_TRUE(scene.target.item("a").properties.written.has_value());
    EXPECT_NEAR(static_cast<double>(scene.target.item("a").properties.written->seconds), 990120658.0, 86400.0);
}

TEST(Options, NoTimeIsNoTime) {
    FakeMember member = file("a");
    member.member.written.reset();
    UnpackScene scene({member});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_FALSE(scene.target.item("a").properties.written.has_value());
}

TEST(Options, ChangeNames) {
    UnpackScene scene({file("My Docs/Read Me.TXT")});
    scene.options.blanksToUnderscores = true;
    scene.options.lowerCaseNames = true;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("my_docs/read_me.txt"), "content");
    EXPECT_EQ(scene.events.reports.back(), "unpacked My Docs/Read Me.TXT > my_docs/read_me.txt");
}

TEST(Options, NamesThatTheChangeMakesEqualGetNumbers) {
    UnpackScene scene({file("a b", "1"), file("a_b", "2"), file("A B", "3")});
    scene.options.blanksToUnderscores = true;
    scene.options.lowerCaseNames = true;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names(), (Lines{"a_b", "a_b (2)", "a_b (3)"}));
    EXPECT_EQ(scene.target.at("a_b"), "1");
}

TEST(Options, TheMarkOfTheWebPassesToEveryFile) {
    UnpackScene scene({file("a"), file("b/c")});
    scene.options.archive = "downloads/x.zip";
    scene.target.mark = "[ZoneTransfer]";
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.markAsked, "downloads/x.zip");
    EXPECT_EQ(scene.target.item("a").webMark, "[ZoneTransfer]");
    EXPECT_EQ(scene.target.item("b/c").webMark, "[ZoneTransfer]");
}

}  // namespace
}  // namespace archiver::test
