#include "folders/folder_tree_fixture.h"

namespace tovar::test {
namespace {

/// Drive N, and the computers of a network, answer late.
class SlowFolderTree : public FolderTreeFixture {
protected:
    SlowFolderTree() {
        source.drivesNow.push_back({L"(N:)", LR"(N:\)", 15});
        source.folder(LR"(N:\)");
        source.addFolder(LR"(N:\work\letters\old)");
        source.slow = {LR"(N:\)", LR"(\\)"};
        tree.start();
    }
    FolderNode slowDrive() const { return display.in(computer(), L"(N:)"); }
    void answer() {
        source.answer();
        tree.onTick();
    }
    /// Until nothing is asked any more.
    void answerAll() {
        while (!source.open().empty()) answer();
    }
};

TEST_F(SlowFolderTree, OpensAFolderWhenTheAnswerIsThere) {
    EXPECT_FALSE(display.userExpands(slowDrive()));
    EXPECT_TRUE(tree.isReading(slowDrive()));
    EXPECT_TRUE(display.namesIn(slowDrive()).empty());
    tree.onTick();
    EXPECT_TRUE(tree.isReading(slowDrive()));
    answer();
    EXPECT_FALSE(tree.isReading(slowDrive()));
    EXPECT_EQ(display.namesIn(slowDrive()), Texts{L"work"});
    EXPECT_TRUE(display.expanded.contains(slowDrive()));
}

TEST_F(SlowFolderTree, AsksOnceHoweverOftenTheUserClicks) {
    source.listed.clear();
    display.userExpands(slowDrive());
    display.userExpands(slowDrive());
    EXPECT_EQ(source.listed, Texts{LR"(N:\)"});
}

TEST_F(SlowFolderTree, ReadsASelectedFolderToLearnWhetherItIsThere) {
    display.userSelects(slowDrive());
    EXPECT_EQ(tree.selectedFolder(), LR"(N:\)");
    EXPECT_EQ(tree.selectedState(), FolderState::Reading);
    display.reported.clear();
    answer();
    EXPECT_EQ(tree.selectedState(), FolderState::There);
    EXPECT_EQ(display.reported, Reports{LR"(N:\)"});
    EXPECT_FALSE(display.expanded.contains(slowDrive()));  // nobody asked for that
}

TEST_F(SlowFolderTree, SaysThatADriveWithoutAnswerIsMissing) {
    source.folder(LR"(N:\)").error = FakeFolderSource::kNotReady;
    display.userSelects(slowDrive());
    display.reported.clear();
    answer();
    EXPECT_EQ(tree.selectedState(), FolderState::Missing);
    EXPECT_EQ(display.reported, Reports{LR"(N:\)"});
    // It can be tried again.
    source.folder(LR"(N:\)").error = 0;
    display.userSelects(drive());
    EXPECT_EQ(tree.selectedState(), FolderState::There);
    display.userSelects(slowDrive());
    answer();
    EXPECT_EQ(tree.selectedState(), FolderState::There);
}

TEST_F(SlowFolderTree, GoesDownToAFolderAnswerByAnswer) {
    EXPECT_TRUE(tree.selectFolder(LR"(N:\work\letters\old)"));
    EXPECT_EQ(tree.selectedState(), FolderState::Reading);
    EXPECT_FALSE(tree.selectedFolder());
    EXPECT_EQ(source.open(), Texts{LR"(N:\)"});
    answer();
    EXPECT_EQ(source.open(), Texts{LR"(N:\work)"});
    EXPECT_EQ(tree.selectedState(), FolderState::Reading);
    answerAll();
    EXPECT_EQ(selectedPath(), LR"(N:\work\letters\old)");
    EXPECT_EQ(tree.selectedState(), FolderState::There);
    EXPECT_TRUE(display.expanded.contains(slowDrive()));
    EXPECT_EQ(display.reported.back(), LR"(N:\work\letters\old)");
}

TEST_F(SlowFolderTree, StopsAtTheNearestFolderThatIsThere) {
    EXPECT_TRUE(tree.selectFolder(LR"(N:\work\none\such)"));
    answerAll();
    EXPECT_EQ(selectedPath(), LR"(N:\work)");
    EXPECT_EQ(tree.selectedState(), FolderState::There);
    EXPECT_EQ(display.namesIn(display.in(slowDrive(), L"work")), Texts{L"letters"});
}

TEST_F(SlowFolderTree, FindsAHiddenFolder) {
    source.addFolder(LR"(N:\work\secret)", true);
    EXPECT_TRUE(tree.selectFolder(LR"(N:\work\secret)"));
    answerAll();
    EXPECT_EQ(selectedPath(), LR"(N:\work\secret)");
    EXPECT_EQ(tree.selectedState(), FolderState::There);
    EXPECT_TRUE(tree.isHidden(tree.selected()));
}

TEST_F(SlowFolderTree, LetsTheUserChooseOtherwiseMeanwhile) {
    tree.selectFolder(LR"(N:\work\letters)");
    display.userSelects(drive());
    EXPECT_EQ(tree.selectedState(), FolderState::There);
    answerAll();
    EXPECT_EQ(selectedPath(), LR"(C:\)");
}

TEST_F(SlowFolderTree, GoesToTheFolderThatWasAskedForLast) {
    source.addFolder(LR"(C:\here)");
    tree.selectFolder(LR"(N:\work\letters)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\here)"));
    answerAll();
    EXPECT_EQ(selectedPath(), LR"(C:\here)");
    EXPECT_EQ(tree.selectedState(), FolderState::There);
}

TEST_F(SlowFolderTree, FindsAShareOfTheNetwork) {
    source.folder(LR"(\\server\share)");
    source.folder(LR"(\\server\share)").inside = {{L"data", false, false, 1}};
    source.folder(LR"(\\server\share\data)");
    EXPECT_TRUE(tree.selectFolder(LR"(\\server\share\data)"));
    EXPECT_EQ(tree.selectedState(), FolderState::Reading);
    answerAll();
    EXPECT_EQ(selectedPath(), LR"(\\server\share\data)");
    EXPECT_EQ(tree.selectedState(), FolderState::There);
}

TEST_F(SlowFolderTree, ForgetsAShareThatDoesNotAnswer) {
    const Texts before = display.namesIn(computer());
    EXPECT_TRUE(tree.selectFolder(LR"(\\nowhere\share\data)"));
    EXPECT_EQ(display.namesIn(computer()).size(), before.size() + 1);
    answerAll();
    EXPECT_FALSE(tree.selectedFolder());
    EXPECT_EQ(tree.selectedState(), FolderState::Missing);
    EXPECT_EQ(display.namesIn(computer()), before);
}

TEST_F(SlowFolderTree, ReadsOnceMoreWhatHasChangedMeanwhile) {
    display.userExpands(slowDrive());
    answer();
    source.addFolder(LR"(N:\first)");
    tree.onTick();
    EXPECT_EQ(source.open(), Texts{LR"(N:\)"});
    source.answer();  // the answer is on its way when something else happens
    source.addFolder(LR"(N:\second)");
    tree.onTick();
    answerAll();
    EXPECT_EQ(display.namesIn(slowDrive()), (Texts{L"first", L"second", L"work"}));
}

TEST_F(SlowFolderTree, ForgetsWhatItAskedAboutFoldersThatHaveGone) {
    display.userExpands(slowDrive());
    answer();
    display.userExpands(display.in(slowDrive(), L"work"));
    EXPECT_EQ(source.open(), Texts{LR"(N:\work)"});
    source.removeFolder(LR"(N:\work)");
    tree.onTick();  // hears of it
    answer();
    EXPECT_TRUE(display.namesIn(slowDrive()).empty());
    EXPECT_TRUE(source.open().empty());
    answer();
}

TEST_F(SlowFolderTree, StartsAnewWithoutTheOldAnswers) {
    tree.selectFolder(LR"(N:\work)");
    source.answer();
    display = {};
    display.presenter = &tree;
    tree.start();
    tree.onTick();
    EXPECT_FALSE(tree.selectedFolder());
    EXPECT_TRUE(display.namesIn(slowDrive()).empty());
}

}  // namespace
}  // namespace tovar::test
