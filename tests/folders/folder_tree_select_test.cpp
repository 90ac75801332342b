#include "folders/folder_tree_fixture.h"

namespace tovar::test {
namespace {

class SelectFolder : public FolderTreeFixture {
protected:
    SelectFolder() { tree.start(); }
};

TEST_F(SelectFolder, OpensTheWayDown) {
    source.addFolder(LR"(C:\a\b\c\d)");
    source.addFolder(LR"(C:\a\other)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\a\b\c)"));
    EXPECT_EQ(display.selectedNode, shown({L"a", L"b", L"c"}));
    EXPECT_EQ(display.reported, Reports{LR"(C:\a\b\c)"});
    EXPECT_TRUE(display.expanded.contains(shown({L"a"})));
    EXPECT_TRUE(display.expanded.contains(shown({L"a", L"b"})));
    EXPECT_FALSE(display.expanded.contains(shown({L"a", L"b", L"c"})));
    EXPECT_EQ(display.namesIn(shown({L"a"})), (Texts{L"b", L"other"}));
}

TEST_F(SelectFolder, TakesADriveAndASeparatorAtTheEnd) {
    source.addFolder(LR"(C:\a)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\)"));
    EXPECT_EQ(selectedPath(), LR"(C:\)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\a\)"));
    EXPECT_EQ(selectedPath(), LR"(C:\a)");
}

TEST_F(SelectFolder, DoesNotMindTheCase) {
    source.addFolder(LR"(C:\Some\Folder)");
    EXPECT_TRUE(tree.selectFolder(LR"(c:\sOME\fOLDER)"));
    EXPECT_EQ(selectedPath(), LR"(C:\Some\Folder)");
}

TEST_F(SelectFolder, PrefersTheExactNameWhereTwoDifferInCaseOnly) {
    source.addFolder(LR"(C:\A)");
    source.addFolder(LR"(C:\a)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\a)"));
    EXPECT_EQ(selectedPath(), LR"(C:\a)");
}

TEST_F(SelectFolder, TakesTheNearestPlaceAbove) {
    EXPECT_TRUE(tree.selectFolder(LR"(C:\users\me\Desktop\on desk)"));
    EXPECT_EQ(display.selectedNode, display.in(display.root(), L"on desk"));
    source.addFolder(LR"(C:\users\me\Documents\letters)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\users\me\Documents\letters)"));
    EXPECT_EQ(display.selectedNode, display.in(display.in(display.root(), L"My Documents"), L"letters"));
    EXPECT_TRUE(tree.selectFolder(LR"(C:\users\me\Desktop)"));
    EXPECT_EQ(display.selectedNode, display.root());
}

TEST_F(SelectFolder, TakesNoPlaceWhoseNameOnlyBeginsTheSame) {
    source.addFolder(LR"(C:\users\me\Desktop2)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\users\me\Desktop2)"));
    EXPECT_EQ(display.selectedNode, shown({L"users", L"me", L"Desktop2"}));
}

TEST_F(SelectFolder, SelectsTheNearestFolderAboveAMissingOne) {
    source.addFolder(LR"(C:\a\b)");
    EXPECT_FALSE(tree.selectFolder(LR"(C:\a\b\missing\more)"));
    EXPECT_EQ(selectedPath(), LR"(C:\a\b)");
}

TEST_F(SelectFolder, SelectsNothingForWhatIsNoFolderAtAll) {
    EXPECT_FALSE(tree.selectFolder(L""));
    EXPECT_FALSE(tree.selectFolder(L"relative"));
    EXPECT_FALSE(tree.selectFolder(LR"(X:\a)"));
    EXPECT_FALSE(tree.selectFolder(LR"(\\server)"));
    EXPECT_FALSE(tree.selectFolder(LR"(\\server\missing\a)"));
    EXPECT_EQ(display.selectedNode, kNoFolder);
    EXPECT_TRUE(display.reported.empty());
}

TEST_F(SelectFolder, SelectsADriveThatIsNotReady) {
    EXPECT_FALSE(tree.selectFolder(LR"(D:\a)"));
    EXPECT_EQ(selectedPath(), LR"(D:\)");
}

TEST_F(SelectFolder, ShowsAHiddenFolderOnTheWay) {
    source.addFolder(LR"(C:\a)");
    source.addFolder(LR"(C:\secret)", true);
    source.addFolder(LR"(C:\secret\inside)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\secret\inside)"));
    EXPECT_EQ(selectedPath(), LR"(C:\secret\inside)");
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"users", L"secret"}));
    EXPECT_TRUE(tree.isHidden(shown({L"secret"})));
    EXPECT_FALSE(tree.isHidden(shown({L"a"})));
}

TEST_F(SelectFolder, GoesThroughAFolderThatMayNotBeListed) {
    source.addFolder(LR"(C:\locked\inside)");
    source.folder(LR"(C:\locked)").error = FakeFolderSource::kAccessDenied;
    EXPECT_TRUE(tree.selectFolder(LR"(C:\locked\inside)"));
    EXPECT_EQ(selectedPath(), LR"(C:\locked\inside)");
    EXPECT_TRUE(display.expanded.contains(shown({L"locked"})));
}

TEST_F(SelectFolder, FindsAFolderThatWasMadeAMomentAgo) {
    source.addFolder(LR"(C:\a\b)");
    source.canWatch = false;
    EXPECT_TRUE(tree.selectFolder(LR"(C:\a\b)"));
    source.addFolder(LR"(C:\a\New)");
    EXPECT_TRUE(tree.selectFolder(LR"(C:\a\new)"));
    EXPECT_EQ(selectedPath(), LR"(C:\a\New)");
    EXPECT_EQ(display.namesIn(shown({L"a"})), (Texts{L"New", L"b"}));
}

TEST_F(SelectFolder, ShowsASharedFolderOfTheNetwork) {
    source.folder(LR"(\\server\share)");
    source.addFolder(LR"(\\server\share\a)");
    EXPECT_TRUE(tree.selectFolder(LR"(\\server\share\a)"));
    EXPECT_EQ(selectedPath(), LR"(\\server\share\a)");
    EXPECT_EQ(display.namesIn(computer()), (Texts{L"(C:)", L"(D:)", LR"(\\server\share)"}));
    EXPECT_TRUE(tree.selectFolder(LR"(\\SERVER\share)"));
    EXPECT_EQ(display.namesIn(computer()).size(), 3U);
}

TEST_F(SelectFolder, TakesNoWayUp) {
    source.addFolder(LR"(C:\a)");
    source.folder(LR"(C:\a\..)");
    EXPECT_FALSE(tree.selectFolder(LR"(C:\a\..)"));
    EXPECT_EQ(selectedPath(), LR"(C:\a)");
}

TEST_F(SelectFolder, GoesDownFiveHundredLevels) {
    std::wstring path = L"C:";
    for (int level = 0; level < 500; ++level) path += LR"(\folder)";
    source.addFolder(path);
    EXPECT_TRUE(tree.selectFolder(path));
    EXPECT_EQ(selectedPath(), path);
}

}  // namespace
}  // namespace tovar::test
