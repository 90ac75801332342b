#include "folders/folder_tree_fixture.h"

namespace tovar::test {
namespace {

using FolderTree = FolderTreeFixture;

TEST_F(FolderTree, BeginsWithTheDesktopTheDocumentsAndTheDrives) {
    tree.start();
    EXPECT_EQ(display.namesIn(kNoFolder), Texts{L"Desktop"});
    EXPECT_EQ(display.namesIn(display.root()), (Texts{L"My Documents", L"My Computer", L"on desk"}));
    EXPECT_EQ(display.namesIn(computer()), (Texts{L"(C:)", L"(D:)"}));
    EXPECT_EQ(display.expanded, (std::set<FolderNode>{display.root(), computer()}));
    EXPECT_TRUE(display.reported.empty());
    EXPECT_EQ(tree.selectedFolder(), std::nullopt);
}

TEST_F(FolderTree, LeavesOutDocumentsThatAreNoFolder) {
    source.documentsPlace.path.clear();
    tree.start();
    EXPECT_EQ(display.namesIn(display.root()), (Texts{L"My Computer", L"on desk"}));
}

TEST_F(FolderTree, KnowsTheIconsOfPlacesOnly) {
    tree.start();
    EXPECT_EQ(tree.placeIcon(display.root()), 10);
    EXPECT_EQ(tree.placeIcon(computer()), 12);
    EXPECT_EQ(tree.placeIcon(drive()), 13);
    EXPECT_EQ(tree.placeIcon(display.in(display.root(), L"on desk")), std::nullopt);
}

TEST_F(FolderTree, LooksIntoNoFolderBeforeItIsOpened) {
    source.addFolder(LR"(C:\a\b)");
    tree.start();
    EXPECT_EQ(source.listed, Texts{LR"(C:\users\me\Desktop)"});
    EXPECT_TRUE(display.userExpands(drive()));
    EXPECT_EQ(source.listed, (Texts{LR"(C:\users\me\Desktop)", LR"(C:\)"}));
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"users"}));
    EXPECT_TRUE(display.namesIn(shown({L"a"})).empty());
}

TEST_F(FolderTree, AsksWhetherThereAreFoldersInsideOnlyForWhatIsShown) {
    source.addFolder(LR"(C:\a\b)");
    source.addFolder(LR"(C:\c)");
    tree.start();
    display.userExpands(drive());
    EXPECT_TRUE(source.asked.empty());
    EXPECT_TRUE(tree.mayHaveFolders(shown({L"a"})));
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"c"})));
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"c"})));
    EXPECT_EQ(source.asked, (Texts{LR"(C:\a)", LR"(C:\c)"}));
    EXPECT_TRUE(tree.mayHaveFolders(computer()));
}

TEST_F(FolderTree, StaysClosedOverAFolderWithNothingInside) {
    source.addFolder(LR"(C:\c)");
    tree.start();
    display.userExpands(drive());
    EXPECT_FALSE(display.userExpands(shown({L"c"})));
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"c"})));
}

TEST_F(FolderTree, TriesADriveAgainThatWasNotReady) {
    tree.start();
    const FolderNode drive = display.in(computer(), L"(D:)");
    EXPECT_FALSE(display.userExpands(drive));
    EXPECT_TRUE(tree.mayHaveFolders(drive));
    source.folder(LR"(D:\)").error = 0;
    source.addFolder(LR"(D:\disk)");
    EXPECT_TRUE(display.userExpands(drive));
    EXPECT_EQ(display.namesIn(drive), Texts{L"disk"});
}

TEST_F(FolderTree, ShowsNothingInAFolderWithoutRights) {
    source.addFolder(LR"(C:\locked\inside)");
    source.folder(LR"(C:\locked)").error = FakeFolderSource::kAccessDenied;
    tree.start();
    display.userExpands(drive());
    EXPECT_FALSE(display.userExpands(shown({L"locked"})));
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"locked"})));
}

TEST_F(FolderTree, TellsWhatTheUserSelects) {
    source.addFolder(LR"(C:\a)");
    tree.start();
    display.userExpands(drive());
    display.userSelects(shown({L"a"}));
    display.userSelects(computer());
    display.userSelects(drive());
    display.userSelects(display.root());
    EXPECT_EQ(display.reported, (Reports{LR"(C:\a)", std::nullopt, LR"(C:\)", LR"(C:\users\me\Desktop)"}));
}

TEST_F(FolderTree, TellsNothingWhenTheSameFolderIsSelectedAgain) {
    tree.start();
    display.userSelects(drive());
    display.userSelects(drive());
    EXPECT_EQ(display.reported, Reports{LR"(C:\)"});
}

TEST_F(FolderTree, MovesTheSelectionToAFolderThatIsClosedOverIt) {
    source.addFolder(LR"(C:\a\b)");
    tree.start();
    tree.selectFolder(LR"(C:\a\b)");
    display.userCollapses(shown({L"a"}));
    EXPECT_EQ(display.reported, (Reports{LR"(C:\a\b)", LR"(C:\a)"}));
    display.userCollapses(shown({L"a"}));
    EXPECT_EQ(display.reported.size(), 2U);
}

TEST_F(FolderTree, LooksAtEverythingAnewWhenItIsStartedAgain) {
    source.addFolder(LR"(C:\a)");
    tree.start();
    tree.selectFolder(LR"(C:\a)");
    FakeFolderTreeDisplay second;
    source.addFolder(LR"(C:\users\me\Desktop\later)");
    FolderTreePresenter again(source, second);
    second.presenter = &again;
    again.start();
    EXPECT_EQ(second.namesIn(second.root()), (Texts{L"My Documents", L"My Computer", L"later", L"on desk"}));
    EXPECT_EQ(again.selectedFolder(), std::nullopt);
}

TEST_F(FolderTree, ShowsJunctionLoopsOnlyAsFarAsTheyAreOpened) {
    // A folder that has itself inside, as a junction makes it.
    source.addFolder(LR"(C:\loop\loop\loop\loop)");
    tree.start();
    EXPECT_TRUE(tree.selectFolder(LR"(C:\loop\loop)"));
    EXPECT_EQ(source.listed, (Texts{LR"(C:\users\me\Desktop)", LR"(C:\)", LR"(C:\loop)"}));
}

TEST_F(FolderTree, HoldsTwentyThousandFolders) {
    std::vector<SubFolder>& inside = source.folder(LR"(C:\)").inside;
    for (int number = 10000; number < 30000; ++number) inside.push_back({std::to_wstring(number)});
    tree.start();
    EXPECT_TRUE(tree.selectFolder(LR"(C:\29999)"));
    EXPECT_EQ(display.namesIn(drive()).size(), 20001U);
    EXPECT_TRUE(source.asked.empty());
}

}  // namespace
}  // namespace tovar::test
