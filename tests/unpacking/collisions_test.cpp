#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

struct WindowsScene : UnpackScene {
    explicit WindowsScene(std::vector<FakeMember> members) : UnpackScene(std::move(members)) {
        target.rules = NameRules::kWindows;
    }
};

TEST(Collisions, TheLastOfOneNameWins) {
    WindowsScene scene({file("a.txt", "first"), file("a.txt", "second")});
    scene.options.existing = ExistingFiles::kAsk;
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_TRUE(scene.events.replaceQuestions.empty());
    EXPECT_EQ(scene.target.at("a.txt"), "second");
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a.txt > a.txt", "unpacked a.txt > a.txt"}));
}

TEST(Collisions, TheLastOfOneNameWinsAlsoOnThreads) {
    for (int round = 0; round < 50; ++round) {
        std::vector<FakeMember> members;
        for (int member = 0; member < 40; ++member) members.push_back(file("a.txt", std::to_string(member)));
        WindowsScene scene(std::move(members));
        scene.reader.detaches = true;
        scene.options.threads = 4;
        ASSERT_EQ(scene.unpack(), kOk);
        ASSERT_EQ(scene.target.at("a.txt"), "39");
    }
}

TEST(Collisions, AnAnswerForTheFirstOfANameIsNoneForTheSecond) {
    WindowsScene scene({file("a.txt", "first"), file("a.txt", "second")});
    scene.options.existing = ExistingFiles::kAsk;
    scene.target.put("a.txt", "old");
    scene.events.replaceAnswers = {ReplaceAnswer::kNo, ReplaceAnswer::kNo};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.replaceQuestions.size(), 2U);
    EXPECT_EQ(scene.target.at("a.txt"), "old");
}

TEST(Collisions, ADamagedFirstOneGivesNoRightToReplace) {
    FakeMember bad = file("a.txt", "first");
    bad.code = kFileCrc;
    WindowsScene scene({bad, file("a.txt", "second")});
    scene.options.existing = ExistingFiles::kAsk;
    scene.target.put("a.txt", "old");
    scene.events.replaceAnswers = {ReplaceAnswer::kYes, ReplaceAnswer::kNo};
    EXPECT_EQ(scene.unpack(), kFileCrc);
    EXPECT_EQ(scene.events.replaceQuestions.size(), 2U);
    EXPECT_EQ(scene.target.at("a.txt"), "old");
}

TEST(Collisions, NamesEqualButForCaseGetNumbers) {
    WindowsScene scene(
        {file("a.txt", "1"), file("A.txt", "2"), file("A.TXT", "3"), file("docs/B", "4"), file("DOCS/b", "5")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a.txt"), "1");
    EXPECT_EQ(scene.target.at("a (2).txt"), "2");
    EXPECT_EQ(scene.target.at("a (3).txt"), "3");
    EXPECT_EQ(scene.target.at("docs/b"), "4");
    EXPECT_EQ(scene.target.at("docs/b (2)"), "5");
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked a.txt > a.txt", "unpacked A.txt > A (2).txt renamed",
                                           "unpacked A.TXT > A (3).TXT renamed", "folder docs/B > docs",
                                           "unpacked docs/B > docs/B", "unpacked DOCS/b > DOCS/b (2) renamed"}));
}

TEST(Collisions, AreTheSameWhenUnpackedAgain) {
    WindowsScene scene({file("a.txt", "1"), file("A.txt", "2")});
    scene.target.put("a.txt", "old");
    scene.target.put("A (2).txt", "old");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names(), (Lines{"A (2).txt", "a.txt"}));
    EXPECT_EQ(scene.target.at("A (2).txt"), "2");
}

TEST(Collisions, CaseMakesDifferentFilesWhereItCounts) {
    UnpackScene scene({file("a.txt", "1"), file("A.txt", "2")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names(), (Lines{"A.txt", "a.txt"}));
}

TEST(Collisions, ANameMadeSafeIsNotTheSameAsOneThatWasSo) {
    WindowsScene scene({file("ab:c", "1"), file("ab_c", "2"), file("../c", "3"), file("c", "4")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.reports, (Lines{"unpacked ab:c > ab_c renamed", "unpacked ab_c > ab_c (2) renamed",
                                           "unpacked ../c > c renamed", "unpacked c > c (2) renamed"}));
}

TEST(Collisions, AFileAtAFoldersNameGetsANumber) {
    WindowsScene scene({file("a/b.txt", "1"), file("A", "2")});
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a"), "(folder)");
    EXPECT_EQ(scene.target.at("a (2)"), "2");
    EXPECT_EQ(scene.events.reports.back(), "unpacked A > A (2) renamed");
}

TEST(Collisions, AFileAtAFolderOfTheTargetGetsANumber) {
    WindowsScene scene({file("a", "1")});
    scene.target.putFolder("a");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.at("a (2)"), "1");
}

TEST(Collisions, NothingComesBelowAFileOfTheRun) {
    WindowsScene scene({file("a", "1"), file("A/b.txt", "2"), folder("a/"), file("c", "3")});
    EXPECT_EQ(scene.unpack(), kMakeDirectory);
    EXPECT_EQ(scene.events.reports,
              (Lines{"unpacked a > a", "failed A/b.txt > A/b.txt 8012", "failed a/ > a 8012", "unpacked c > c"}));
    EXPECT_EQ(scene.summary.failed, 2U);
}

TEST(Collisions, NothingComesBelowAFileOfTheTarget) {
    WindowsScene scene({file("a/b", "1"), folder("a/c/"), file("d", "2")});
    scene.target.put("a", "old");
    EXPECT_EQ(scene.unpack(), kMakeDirectory);
    EXPECT_EQ(scene.target.names(), (Lines{"a", "d"}));
}

TEST(Collisions, NumbersAreNotTriedAgainForEveryMember) {
    // 4,096 spellings of one name: each takes the next number at once.
    std::vector<FakeMember> members;
    for (unsigned spelling = 0; spelling < 4096; ++spelling) {
        std::string name = "d/abcdefghijkl";
        for (unsigned letter = 0; letter < 12; ++letter) {
            if ((spelling >> letter & 1) != 0) name[letter + 2] = static_cast<char>(name[letter + 2] - 32);
        }
        members.push_back(file(name, "x"));
    }
    WindowsScene scene(std::move(members));
    scene.target.putFolder("d");
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.target.names().size(), 4097U);
    EXPECT_LE(scene.target.finds, 3 * 4096U);
}

TEST(Collisions, InOneFolderAreLikeFilesThatWereThere) {
    UnpackScene scene({file("x/readme", "1"), file("y/readme", "2"), file("z/readme", "3")});
    scene.options.keepFolders = false;
    scene.options.existing = ExistingFiles::kAsk;
    scene.events.replaceAnswers = {ReplaceAnswer::kNumber, ReplaceAnswer::kNo};
    EXPECT_EQ(scene.unpack(), kOk);
    EXPECT_EQ(scene.events.replaceQuestions.size(), 2U);
    EXPECT_EQ(scene.target.at("readme"), "1");
    EXPECT_EQ(scene.target.at("readme (2)"), "2");
    EXPECT_EQ(scene.target.names().size(), 2U);
}

}  // namespace
}  // namespace archiver::test
