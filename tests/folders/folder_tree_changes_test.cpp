#include "folders/folder_tree_fixture.h"

namespace tovar::test {
namespace {

class FolderTreeChanges : public FolderTreeFixture {
protected:
    FolderTreeChanges() {
        source.addFolder(LR"(C:\a\b\c)");
        source.addFolder(LR"(C:\k)");
        tree.start();
        tree.selectFolder(LR"(C:\a\b)");
        display.reported.clear();
    }
};

TEST_F(FolderTreeChanges, ShowsAFolderThatIsMade) {
    source.addFolder(LR"(C:\g)");
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"k", L"users"}));
    tree.onTick();
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"g", L"k", L"users"}));
    source.addFolder(LR"(C:\0)");
    source.addFolder(LR"(C:\z)");
    tree.onTick();
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"0", L"a", L"g", L"k", L"users", L"z"}));
    EXPECT_TRUE(display.reported.empty());
}

TEST_F(FolderTreeChanges, ShowsAFolderThatIsMadeOnTheDesktop) {
    source.addFolder(LR"(C:\users\me\Desktop\another)");
    tree.onTick();
    EXPECT_EQ(display.namesIn(display.root()), (Texts{L"My Documents", L"My Computer", L"another", L"on desk"}));
}

TEST_F(FolderTreeChanges, TakesAwayAFolderThatIsDeleted) {
    source.removeFolder(LR"(C:\k)");
    tree.onTick();
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"users"}));
    EXPECT_TRUE(display.reported.empty());
}

TEST_F(FolderTreeChanges, SelectsTheFolderAboveADeletedOne) {
    source.removeFolder(LR"(C:\a\b)");
    tree.onTick();
    EXPECT_EQ(display.reported, Reports{LR"(C:\a)"});
    EXPECT_TRUE(display.namesIn(shown({L"a"})).empty());
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"a"})));
}

TEST_F(FolderTreeChanges, SelectsTheNearestFolderThatIsLeft) {
    source.removeFolder(LR"(C:\a)");
    tree.onTick();
    EXPECT_EQ(display.selectedNode, drive());
    EXPECT_EQ(selectedPath(), LR"(C:\)");
    EXPECT_EQ(display.reported.back(), LR"(C:\)");
}

TEST_F(FolderTreeChanges, WatchesNothingThatIsGone) {
    source.removeFolder(LR"(C:\a)");
    tree.onTick();
    EXPECT_EQ(source.watchedPaths(), (Texts{LR"(C:\)", LR"(C:\users\me\Desktop)"}));
}

TEST_F(FolderTreeChanges, KeepsWhatIsOpenAndSelectedInARenamedFolder) {
    source.renameFolder(LR"(C:\a)", L"renamed");
    tree.onTick();
    EXPECT_EQ(display.reported, Reports{LR"(C:\renamed\b)"});
    EXPECT_EQ(display.selectedNode, shown({L"renamed", L"b"}));
    EXPECT_TRUE(display.expanded.contains(shown({L"renamed"})));
    EXPECT_EQ(shown({L"a"}), kNoFolder);
}

TEST_F(FolderTreeChanges, TellsOfTheNewNameOfTheSelectedFolder) {
    source.renameFolder(LR"(C:\a\b)", L"B");
    tree.onTick();
    EXPECT_EQ(display.reported, Reports{LR"(C:\a\B)"});
}

TEST_F(FolderTreeChanges, TellsNothingWhenAnotherFolderIsRenamed) {
    source.renameFolder(LR"(C:\k)", L"m");
    tree.onTick();
    EXPECT_TRUE(display.reported.empty());
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"m", L"users"}));
}

TEST_F(FolderTreeChanges, TakesFoldersMadeAtAnUnknownTimeForDifferentOnes) {
    auto& inside = source.folder(LR"(C:\a)").inside;
    inside[0].created = 0;
    source.touch(LR"(C:\a)");
    tree.onTick();
    display.reported.clear();
    source.renameFolder(LR"(C:\a\b)", L"other");
    tree.onTick();
    EXPECT_EQ(display.reported, Reports{LR"(C:\a)"});
    EXPECT_EQ(display.namesIn(shown({L"a"})), Texts{L"other"});
}

TEST_F(FolderTreeChanges, TakesNoFolderForARenamedOneWhereTwoCouldBe) {
    source.removeFolder(LR"(C:\a\b)");
    for (const wchar_t* name : {L"x", L"y"}) source.folder(LR"(C:\a)").inside.push_back({name, false, false, 1007});
    source.touch(LR"(C:\a)");
    tree.onTick();
    EXPECT_EQ(display.reported, Reports{LR"(C:\a)"});
    EXPECT_EQ(display.namesIn(shown({L"a"})), (Texts{L"x", L"y"}));
}

TEST_F(FolderTreeChanges, ShowsThatTheSelectedFolderHasFoldersNow) {
    source.removeFolder(LR"(C:\a\b\c)");
    tree.onTick();
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"a", L"b"})));
    source.addFolder(LR"(C:\a\b\n)");
    tree.onTick();
    EXPECT_TRUE(tree.mayHaveFolders(shown({L"a", L"b"})));
}

TEST_F(FolderTreeChanges, FollowsTheSelectedFolderAndThoseThatWereOpened) {
    EXPECT_EQ(source.watchedPaths(), (Texts{LR"(C:\)", LR"(C:\a)", LR"(C:\a\b)", LR"(C:\users\me\Desktop)"}));
    display.userSelects(computer());
    EXPECT_EQ(source.watchedPaths(), (Texts{LR"(C:\)", LR"(C:\a)", LR"(C:\users\me\Desktop)"}));
}

TEST_F(FolderTreeChanges, FollowsTheDrives) {
    source.setDrives({{L"(C:)", LR"(C:\)", 13}, {L"stick (E:)", LR"(E:\)", 15}});
    tree.onTick();
    EXPECT_EQ(display.namesIn(computer()), (Texts{L"(C:)", L"stick (E:)"}));
    EXPECT_EQ(selectedPath(), LR"(C:\a\b)");
    source.setDrives({{L"disk (C:)", LR"(C:\)", 13}});
    tree.onTick();
    EXPECT_EQ(display.namesIn(computer()), Texts{L"disk (C:)"});
    source.setDrives({});
    tree.onTick();
    EXPECT_EQ(display.reported, Reports{std::nullopt});
    EXPECT_EQ(display.selectedNode, computer());
}

TEST_F(FolderTreeChanges, KeepsAHiddenFolderAsLongAsItIsThere) {
    source.addFolder(LR"(C:\secret)", true);
    tree.selectFolder(LR"(C:\secret)");
    source.addFolder(LR"(C:\n)");
    tree.onTick();
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"k", L"n", L"users", L"secret"}));
    source.removeFolder(LR"(C:\secret)");
    tree.onTick();
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"k", L"n", L"users"}));
    EXPECT_EQ(selectedPath(), LR"(C:\)");
}

TEST_F(FolderTreeChanges, EmptiesADriveWhoseDiskIsGone) {
    source.folder(LR"(C:\)").error = FakeFolderSource::kNotReady;
    source.touch(LR"(C:\)");
    tree.onTick();
    EXPECT_TRUE(display.namesIn(drive()).empty());
    EXPECT_EQ(display.selectedNode, drive());
    EXPECT_TRUE(tree.mayHaveFolders(drive()));
    source.folder(LR"(C:\)").error = 0;
    EXPECT_TRUE(display.userExpands(drive()));
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"a", L"k", L"users"}));
}

TEST_F(FolderTreeChanges, EmptiesAFolderThatLostItsRights) {
    source.folder(LR"(C:\a)").error = FakeFolderSource::kAccessDenied;
    source.touch(LR"(C:\a)");
    tree.onTick();
    EXPECT_TRUE(display.namesIn(shown({L"a"})).empty());
    EXPECT_EQ(selectedPath(), LR"(C:\a)");
}

TEST_F(FolderTreeChanges, LooksAtEverythingAnewOnRequest) {
    source.canWatch = false;
    EXPECT_FALSE(tree.mayHaveFolders(shown({L"k"})));
    auto& inside = source.folder(LR"(C:\)").inside;
    inside.insert(inside.begin(), SubFolder{L"0"});
    source.folder(LR"(C:\k)").inside.push_back({L"new"});
    tree.refresh();
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"0", L"a", L"k", L"users"}));
    EXPECT_TRUE(tree.mayHaveFolders(shown({L"k"})));
    EXPECT_EQ(selectedPath(), LR"(C:\a\b)");
}

TEST_F(FolderTreeChanges, LooksAtNothingThatHasGoneWithItsFolder) {
    source.removeFolder(LR"(C:\a)");
    tree.refresh();
    EXPECT_EQ(selectedPath(), LR"(C:\)");
    EXPECT_EQ(display.namesIn(drive()), (Texts{L"k", L"users"}));
}

TEST_F(FolderTreeChanges, TakesAwayTwentyThousandFoldersAtOnce) {
    std::vector<SubFolder>& inside = source.folder(LR"(C:\k)").inside;
    for (int number = 0; number < 20000; ++number) inside.push_back({std::to_wstring(number)});
    display.userExpands(shown({L"k"}));
    EXPECT_EQ(display.namesIn(shown({L"k"})).size(), 20000U);
    inside.resize(10);
    source.touch(LR"(C:\k)");
    tree.onTick();
    EXPECT_EQ(display.namesIn(shown({L"k"})).size(), 10U);
}

}  // namespace
}  // namespace tovar::test
