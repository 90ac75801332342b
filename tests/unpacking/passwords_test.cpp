#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

class Passwords : public testing::TestWithParam<unsigned> {
protected:
    static void prepare(UnpackScene& scene) {
        scene.options.threads = GetParam();
        scene.reader.detaches = GetParam() > 1;
    }
};
INSTANTIATE_TEST_SUITE_P(Threads, Passwords, testing::Values(1U, 4U));

TEST_P(Passwords, TheGivenOneOpensAll) {
    UnpackScene scene({encrypted("a", "pw", "1"), file("b", "2"), encrypted("c", "pw", "3")});
    prepare(scene);
    scene.password = "pw";
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_TRUE(scene.events.passwordQuestions.empty());
    EXPECT_EQ(scene.target.at("a") + scene.target.at("b") + scene.target.at("c"), "123");
    EXPECT_EQ(scene.summary.password, "pw");
}

TEST_P(Passwords, AnAnswerIsKeptForTheOthers) {
    UnpackScene scene({encrypted("a", "pw"), encrypted("b", "pw"), encrypted("c", "pw")});
    prepare(scene);
    scene.password = "wrong";
    scene.events.passwords = {"also wrong", "pw"};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.passwordQuestions, (Lines{"a 1", "a 2"}));
    EXPECT_EQ(scene.summary.password, "pw");
    EXPECT_EQ(scene.summary.unpacked, 3U);
}

TEST_P(Passwords, AreAskedForThreeTimes) {
    UnpackScene scene({encrypted("a", "pw"), file("b"), encrypted("c", "pw")});
    prepare(scene);
    scene.events.passwords = {"1", "2", "3", "pw"};
    EXPECT_EQ(scene.unpack(), kPasswordFile);
    EXPECT_EQ(scene.events.passwordQuestions, (Lines{"a 1", "a 2", "a 3", "c 1"}));
    EXPECT_EQ(scene.events.reports, (Lines{"failed a > a 800A", "unpacked b > b", "unpacked c > c"}));
}

TEST_P(Passwords, NoneAnsweredMeansNoMoreQuestions) {
    UnpackScene scene({encrypted("a", "pw"), encrypted("b", "pw"), file("c")});
    prepare(scene);
    EXPECT_EQ(scene.unpack(), kPasswordFile);
    EXPECT_EQ(scene.events.passwordQuestions, Lines{"a 1"});
    EXPECT_EQ(scene.events.reports, (Lines{"failed a > a 800A", "failed b > b 800A", "unpacked c > c"}));
    EXPECT_EQ(scene.summary.password, "");
}

TEST_P(Passwords, AWrongOneCostsNoFile) {
    FakeMember member = encrypted("a", "pw");
    member.garbage = true;
    member.wrong = kFileCrc;
    UnpackScene scene({member});
    prepare(scene);
    scene.password = "wrong";
    scene.target.put("a", "old");
    EXPECT_EQ(scene.unpack(), kPasswordFile);
    EXPECT_EQ(scene.target.at("a"), "old");
    EXPECT_EQ(scene.target.unfinished, 0);
    EXPECT_EQ(scene.summary.bytes, 0U);
}

class WrongSigns : public testing::TestWithParam<ReturnCode> {};
INSTANTIATE_TEST_SUITE_P(Codes, WrongSigns, testing::Values(kPasswordFile, kFileCrc, kHuffmanCode, kCannotRead));

TEST_P(WrongSigns, LeadToAQuestionAndToTheWholeFile) {
    FakeMember member = encrypted("a", "pw", "secret");
    member.garbage = true;
    member.wrong = GetParam();
    UnpackScene scene({member});
    scene.events.passwords = {"wrong", "pw"};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.passwordQuestions, (Lines{"a 1", "a 2"}));
    EXPECT_EQ(scene.target.at("a"), "secret");
    EXPECT_EQ(scene.summary.bytes, 6U);
}

TEST_P(Passwords, DamageIsDamageOnceOneHasOpenedAMember) {
    FakeMember bad = encrypted("b", "pw");
    bad.code = kFileCrc;
    UnpackScene scene({encrypted("a", "pw"), bad});
    prepare(scene);
    scene.password = "pw";
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_TRUE(scene.events.passwordQuestions.empty());
    EXPECT_EQ(scene.events.reports.back(), "failed b > b 800C");
}

TEST_P(Passwords, AnUnknownMethodIsNoMatterOfPasswords) {
    FakeMember odd = encrypted("a", "pw");
    odd.wrong = kMethod;
    UnpackScene scene({odd});
    prepare(scene);
    EXPECT_EQ(scene.unpack(), kMethod);
    EXPECT_TRUE(scene.events.passwordQuestions.empty());
}

TEST_P(Passwords, AnEmptyMemberOpensWithAnythingAndProvesNothing) {
    UnpackScene scene({encrypted("a", "", ""), encrypted("b", "pw")});
    prepare(scene);
    scene.events.passwords = {"pw"};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.summary.password, "pw");
    EXPECT_EQ(scene.target.at("a"), "");
}

TEST_P(Passwords, MayDifferFromMemberToMember) {
    UnpackScene scene({encrypted("a", "1", "A"), encrypted("b", "1", "B"), encrypted("c", "2", "C"), file("d", "D"),
                       encrypted("e", "3", "E"), encrypted("f", "1", "F")});
    prepare(scene);
    scene.password = "1";
    scene.events.passwords = {"2", "3"};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.passwordQuestions, (Lines{"c 1", "e 1"}));
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a > a", "unpacked b > b", "unpacked c > c", "unpacked d > d",
                                           "unpacked e > e", "unpacked f > f"}));
    for (const char* const name : {"a", "b", "c", "d", "e", "f"}) {
        EXPECT_EQ(scene.target.at(name), std::string(1, static_cast<char>(*name - 32)));
    }
}

TEST(Passwords, ThatDifferForEachMemberCostNoMoreThanTwoWalks) {
    std::vector<FakeMember> members;
    for (std::size_t number = 0; number < 2000; ++number) {
        members.push_back(encrypted(nameOf("f", number), std::to_string(number)));
    }
    UnpackScene scene(std::move(members));
    scene.options.threads = 4;
    scene.reader.detaches = true;
    scene.password = "0";
    for (std::size_t number = 1; number < 2000; ++number) scene.events.passwords.push_back(std::to_string(number));
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.summary.unpacked, 2000U);
    // One walk counts, one unpacks, one reads again what the threads had been given.
    EXPECT_LE(scene.reader.nexts, 2001U + 2001U + 1100U);
    EXPECT_LE(scene.reader.detached, 600U);
}

}  // namespace
}  // namespace archiver::test
