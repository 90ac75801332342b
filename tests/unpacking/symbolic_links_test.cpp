#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

TEST(SymbolicLinks, AreMadeLastAndLeadWhereTheySay) {
    UnpackScene scene({symbolicLink("x/l", "../b/c"), file("b/c", "1"), symbolicLink("here", ".")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("x/l"), "-> ../b/c");
    EXPECT_EQ(scene.target.at("here"), "-> .");
    EXPECT_EQ(scene.events.reports,
              (Lines{"folder x/l > x", "folder b/c > b", "unpacked b/c > b/c", "link x/l > x/l", "link here > here"}));
    EXPECT_EQ(scene.summary.unpacked, 3U);
}

TEST(SymbolicLinks, ToNothingAreMadeAsWell) {
    UnpackScene scene({symbolicLink("l", "later/file")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("l"), "-> later/file");
}

class LeadsOut : public testing::TestWithParam<const char*> {};

TEST_P(LeadsOut, IsRefusedByName) {
    UnpackScene scene({symbolicLink("d/l", GetParam()), file("a")});
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"folder d/l > d", "refused d/l 802B", "unpacked a > a"}));
    EXPECT_EQ(scene.target.names(), (Lines{"a", "d"}));
}

INSTANTIATE_TEST_SUITE_P(Targets, LeadsOut,
                         testing::Values("/etc/passwd", "\\windows", "//server/share/x", "../..", "../../a",
                                         "x/../../../a",
                                         ".."
                                         "/../etc"));

TEST(SymbolicLinks, WithADriveAreRefusedInWindows) {
    UnpackScene scene({symbolicLink("l", "C:\\Windows"), symbolicLink("m", "c:x")});
    scene.target.rules = NameRules::kWindows;
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"refused l 802B", "refused m 802B"}));
}

TEST(SymbolicLinks, NothingComesBelowThem) {
    UnpackScene scene(
        {symbolicLink("d", "e"), file("d/x"), folder("d/y/"), symbolicLink("d/z", "a"), folder("d/"), file("e/x")});
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"refused d/x 802B", "refused d/y/ 802B", "refused d/z 802B",
                                           "refused d/ 802B", "folder e/x > e", "unpacked e/x > e/x", "link d > d"}));
}

TEST(SymbolicLinks, NothingComesBelowARefusedOne) {
    UnpackScene scene({symbolicLink("d", "/etc"), file("d/passwd"), file("D/passwd")});
    scene.target.rules = NameRules::kWindows;
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports, (Lines{"refused d 802B", "refused d/passwd 802B", "refused D/passwd 802B"}));
    EXPECT_TRUE(scene.target.names().empty());
}

// Each of the two leads nowhere else by its name alone; together they would climb out.
TEST(SymbolicLinks, DoNotLeadThroughOthers) {
    UnpackScene scene({symbolicLink("q/b", "../d"), symbolicLink("a", "q/b/f"), folder("d/")});
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.target.at("q/b"), "-> ../d");
    EXPECT_EQ(scene.target.at("a"), "(none)");
    EXPECT_EQ(scene.events.reports.back(), "refused a 802B");
}

TEST(SymbolicLinks, ClimbOnlyAtTheirStart) {
    UnpackScene scene({symbolicLink("a", "q/b/../../x"), symbolicLink("q/b", "../d")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "-> x");
}

TEST(SymbolicLinks, MayLeadToOthers) {
    UnpackScene scene({symbolicLink("lib.so", "lib.so.1"), symbolicLink("lib.so.1", "lib.so.1.2"), file("lib.so.1.2")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("lib.so"), "-> lib.so.1");
    EXPECT_EQ(scene.target.at("lib.so.1"), "-> lib.so.1.2");
}

TEST(SymbolicLinks, BecomeCopiesWhereThereAreNone) {
    UnpackScene scene({symbolicLink("lib.so", "lib.so.1"), symbolicLink("lib.so.1", "x/lib"), file("x/lib", "code"),
                       symbolicLink("d", "x"), symbolicLink("none", "nothing"), symbolicLink("self", "self")});
    scene.target.links = false;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("lib.so"), "code");
    EXPECT_EQ(scene.target.at("lib.so.1"), "code");
    EXPECT_EQ(scene.events.reports, (Lines{"folder x/lib > x", "unpacked x/lib > x/lib", "unpacked lib.so > lib.so",
                                           "unpacked lib.so.1 > lib.so.1", "skipped d > d 8023",
                                           "skipped none > none 8023", "skipped self > self 8023"}));
}

TEST(SymbolicLinks, BecomeNoCopiesOfWhatIsNotOfTheRun) {
    UnpackScene scene({symbolicLink("l", "secret")});
    scene.target.links = false;
    scene.target.put("secret", "the user's own");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, Lines{"skipped l > l 8023"});
}

FakeMember withData(std::string name, std::string target) {
    FakeMember link = symbolicLink(std::move(name), "");
    link.member.originalSize = link.member.packedSize = target.size();
    link.content = std::move(target);
    return link;
}

TEST(SymbolicLinks, HaveTheirTargetAsData) {
    UnpackScene scene({withData("l", "a"), withData("m", "../out"), withData("n", ""),
                       withData("o", std::string(4097, 'x')), file("a")});
    EXPECT_EQ(scene.unpack(), kNotFilename);
    EXPECT_EQ(scene.events.reports,
              (Lines{"refused m 802B", "refused n 802B", "failed o 8026", "unpacked a > a", "link l > l"}));
}

TEST(SymbolicLinks, HaveTheirTargetEncrypted) {
    FakeMember link = withData("l", "a");
    link.member.encrypted = true;
    link.password = "pw";
    UnpackScene scene({link});
    scene.events.passwords = {"no", "pw"};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("l"), "-> a");
    EXPECT_EQ(scene.events.passwordQuestions, (Lines{"l 1", "l 2"}));
}

TEST(SymbolicLinks, GiveWayToALaterFileOfTheirName) {
    UnpackScene scene({symbolicLink("a", "b"), file("a", "file")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "file");
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "skipped a > a 8028"}));
}

TEST(SymbolicLinks, TakeThePlaceOfAnEarlierFileOfTheirName) {
    UnpackScene scene({file("a", "file"), symbolicLink("a", "b"), symbolicLink("a", "c")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "-> c");
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "skipped a > a 8028", "link a > a"}));
}

TEST(SymbolicLinks, FollowTheRulesForExistingFiles) {
    UnpackScene scene({symbolicLink("a", "x"), symbolicLink("b", "x")});
    scene.options.existing = ExistingFiles::kAsk;
    scene.events.replaceAnswers = {ReplaceAnswer::kYes, ReplaceAnswer::kNo};
    scene.target.put("a", "old");
    scene.target.putLink("b", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "-> x");
    EXPECT_EQ(scene.target.at("b"), "-> old");
}

TEST(SymbolicLinks, AtAFoldersNameGetANumber) {
    UnpackScene scene({file("d/x"), symbolicLink("d", "e")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("d"), "(folder)");
    EXPECT_EQ(scene.target.at("d (2)"), "-> e");
}

TEST(SymbolicLinks, LeadToWhereAMemberOfThatNameWent) {
    UnpackScene scene({file("ab:c", "1"), symbolicLink("l", "ab:c")});
    scene.target.rules = NameRules::kWindows;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("l"), "-> ab_c");
}

}  // namespace
}  // namespace archiver::test
