#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(ExistingFiles, AreReplaced) {
    UnpackScene scene({file("a.txt", "new")});
    scene.target.put("a.txt", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a.txt"), "new");
    EXPECT_EQ(scene.events.reports, Lines{"unpacked a.txt > a.txt"});
    EXPECT_EQ(scene.summary.unpacked, 1U);
    EXPECT_EQ(scene.summary.bytes, 3U);
}

TEST(ExistingFiles, AreKept) {
    UnpackScene scene({file("a.txt", "new"), file("b.txt", "b")});
    scene.options.existing = ExistingFiles::kKeep;
    scene.target.put("a.txt", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a.txt"), "old");
    EXPECT_EQ(scene.target.at("b.txt"), "b");
    EXPECT_EQ(scene.events.reports, (Lines{"skipped a.txt > a.txt 8010", "unpacked b.txt > b.txt"}));
    EXPECT_EQ(scene.summary.skipped, 1U);
}

TEST(ExistingFiles, GetANumberedNeighbour) {
    UnpackScene scene({file("a.txt", "new"), file("b.txt", "b")});
    scene.options.existing = ExistingFiles::kNumber;
    scene.target.put("a.txt", "old");
    scene.target.put("a (2).txt", "older");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a.txt"), "old");
    EXPECT_EQ(scene.target.at("a (2).txt"), "older");
    EXPECT_EQ(scene.target.at("a (3).txt"), "new");
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a.txt > a (3).txt renamed", "unpacked b.txt > b.txt"}));
}

struct AskScene : UnpackScene {
    AskScene() : UnpackScene({file("a", "1"), file("b", "2"), file("c", "3")}) {
        options.existing = ExistingFiles::kAsk;
        for (const char* const name : {"a", "b", "c"}) target.put(name, "old");
    }
};

TEST(ExistingFiles, AreAskedAboutOneByOne) {
    AskScene scene;
    scene.events.replaceAnswers = {ReplaceAnswer::kYes, ReplaceAnswer::kNo, ReplaceAnswer::kNumber};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.replaceQuestions, (Lines{"a: 3 bytes", "b: 3 bytes", "c: 3 bytes"}));
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "skipped b > b 8007", "unpacked c > c (2) renamed"}));
    EXPECT_EQ(scene.target.at("a"), "1");
    EXPECT_EQ(scene.target.at("b"), "old");
    EXPECT_EQ(scene.target.at("c"), "old");
    EXPECT_EQ(scene.target.at("c (2)"), "3");
}

TEST(ExistingFiles, AreAllReplacedAfterAll) {
    AskScene scene;
    scene.events.replaceAnswers = {ReplaceAnswer::kNo, ReplaceAnswer::kAll};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.replaceQuestions.size(), 2U);
    EXPECT_EQ(scene.target.at("a"), "old");
    EXPECT_EQ(scene.target.at("b"), "2");
    EXPECT_EQ(scene.target.at("c"), "3");
}

TEST(ExistingFiles, AreAllKeptAfterNone) {
    AskScene scene;
    scene.events.replaceAnswers = {ReplaceAnswer::kNone};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, (Lines{"skipped a > a 8007", "skipped b > b 8007", "skipped c > c 8007"}));
    EXPECT_EQ(scene.events.replaceQuestions.size(), 1U);
}

TEST(ExistingFiles, CanEndTheRun) {
    AskScene scene;
    scene.events.replaceAnswers = {ReplaceAnswer::kYes, ReplaceAnswer::kCancel};
    EXPECT_EQ(scene.unpack(), kUserCancel);
    EXPECT_EQ(scene.events.reports, Lines{"unpacked a > a"});
    EXPECT_EQ(scene.target.at("b"), "old");
    EXPECT_EQ(scene.target.at("c"), "old");
}

TEST(ExistingFiles, AreAskedAboutOnlyWhenThere) {
    UnpackScene scene({file("a")});
    scene.options.existing = ExistingFiles::kAsk;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_TRUE(scene.events.replaceQuestions.empty());
}

TEST(ExistingFiles, StayWhenTheMemberIsDamaged) {
    FakeMember bad = file("a.txt", "half of it");
    bad.code = kFileCrc;
    UnpackScene scene({bad});
    scene.target.put("a.txt", "old");
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.target.at("a.txt"), "old");
}

TEST(ExistingFiles, LinksGiveWayAndAreNotFollowed) {
    UnpackScene scene({file("a.txt", "new")});
    scene.target.putLink("a.txt", "/etc/passwd");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a.txt"), "new");
}

// The member was written at 1,000,000,000.
struct NewerCase {
    std::int64_t existing;
    bool kept;
};
class OnlyNewer : public testing::TestWithParam<NewerCase> {};

TEST_P(OnlyNewer, KeepsWhatIsAsNewToTwoSeconds) {
    UnpackScene scene({file("a", "new")});
    scene.options.onlyNewer = true;
    scene.target.put("a", "old", GetParam().existing);
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), GetParam().kept ? "old" : "new");
    EXPECT_EQ(scene.events.reports, Lines{GetParam().kept ? "skipped a > a 800E" : "unpacked a > a"});
}

INSTANTIATE_TEST_SUITE_P(Times, OnlyNewer,
                         testing::Values(NewerCase{1'000'000'001, true}, NewerCase{1'000'000'000, true},
                                         NewerCase{999'999'998, true}, NewerCase{999'999'997, false},
                                         NewerCase{0, false}, NewerCase{-5, false}));

TEST(OnlyNewer, AsksAboutTheOthersAsEver) {
    UnpackScene scene({file("a", "new")});
    scene.options.onlyNewer = true;
    scene.options.existing = ExistingFiles::kAsk;
    scene.target.put("a", "old", 5);
    scene.events.replaceAnswers = {ReplaceAnswer::kNo};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.replaceQuestions.size(), 1U);
}

TEST(OnlyNewer, WritesWhatIsNotThere) {
    UnpackScene scene({file("a", "new")});
    scene.options.onlyNewer = true;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "new");
}

TEST(OnlyNewer, SurvivesTimesFromTheEndsOfTheWorld) {
    FakeMember late = file("a", "new");
    late.member.written = Moment{INT64_MAX, 0};
    UnpackScene scene({late});
    scene.options.onlyNewer = true;
    scene.target.put("a", "old", INT64_MIN);
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "new");
}

TEST(OnlyExisting, PassesOverWhatIsNotThere) {
    UnpackScene scene({file("x/a", "1"), file("b", "2")});
    scene.options.onlyExisting = true;
    scene.target.put("b", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, (Lines{"skipped x/a > x/a 800F", "unpacked b > b"}));
    EXPECT_EQ(scene.target.names(), Lines{"b"});
}

TEST(OnlyMissing, PassesOverWhatIsThere) {
    UnpackScene scene({file("a", "1"), file("b", "2")});
    scene.options.onlyMissing = true;
    scene.target.put("b", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "skipped b > b 8010"}));
    EXPECT_EQ(scene.target.at("b"), "old");
}

}  // namespace
}  // namespace archiver::test
