#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "browser/browser_presenter.h"
#include "browser/fakes/fake_browser_actions.h"
#include "browser/fakes/fake_browser_view.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/fakes/fake_file_system.h"

namespace tovar::test {
namespace {

using Rows = std::vector<std::uint32_t>;

constexpr wchar_t kArchive[] = L"C:\\files\\a.zip";
constexpr BrowserCommand kRowCommands[] = {kOpen, mnuEditDelete};
constexpr BrowserCommand kOfEditMenu[] = {kOpen,         mnuEditExtract,   mnuEditAdd,          mnuEditDelete,
                                          mnuEditSelect, mnuEditSelectAll, mnuEditSelectInvert, kFind,
                                          kFindNext,     kFindPrevious,    mnuEditExit};

class BrowserCommandsOfPresenter : public testing::Test {
protected:
    BrowserCommandsOfPresenter() {
        files_.addFileOfSize(kArchive, 1234567);
        driver_.changeable = true;
        presenter_.onLoad();
    }
    void fill(const std::vector<std::wstring>& storedNames, std::wstring_view key = L"\\") {
        driver_.members = FakeDriver(storedNames).members;
        ASSERT_TRUE(presenter_.fill(key));
        view_.rowCount = presenter_.contents().rowCount();
    }
    void select(const Rows& rows) {
        view_.selection = rows;
        presenter_.onRowsSelected(static_cast<std::uint32_t>(rows.size()));
    }
    [[nodiscard]] std::wstring shownKey() const { return presenter_.folders().key(presenter_.currentFolder().value()); }
    [[nodiscard]] Folder folder(std::wstring_view key) const { return presenter_.folders().find(key).value(); }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBrowserView view_;
    FakeBrowserActions actions_;
    BrowserPresenter presenter_{view_, {driver_, desktop_, files_, {}, &actions_}, kArchive};
};

TEST_F(BrowserCommandsOfPresenter, HasNoEditMenuWithoutAnArchive) {
    EXPECT_FALSE(view_.enabled.at(mnuEdit));
    EXPECT_FALSE(view_.enabled.at(Extract));
    EXPECT_FALSE(view_.enabled.at(Add));
    EXPECT_FALSE(view_.enabled.at(GoUp));
    for (const BrowserCommand command : kOfEditMenu) EXPECT_FALSE(presenter_.isEnabled(command)) << command;
    EXPECT_FALSE(presenter_.isEnabled(kRefresh));
    EXPECT_TRUE(presenter_.isEnabled(mnuView));
    EXPECT_TRUE(presenter_.isEnabled(mnuViewStyleList));
}

TEST_F(BrowserCommandsOfPresenter, HasTheEditMenuAndExtractWithAnArchive) {
    fill({L"a.txt"});
    EXPECT_TRUE(view_.enabled.at(mnuEdit));
    EXPECT_TRUE(view_.enabled.at(Extract));
    EXPECT_TRUE(presenter_.isEnabled(mnuEditExtract));
    EXPECT_TRUE(presenter_.isEnabled(mnuEditSelect));
    EXPECT_TRUE(presenter_.isEnabled(mnuEditExit));
    EXPECT_TRUE(presenter_.isEnabled(kRefresh));
}

TEST_F(BrowserCommandsOfPresenter, NeedsASelectedRowForCommandsThatActOnRows) {
    fill({L"a.txt", L"b.txt"});
    for (const BrowserCommand command : kRowCommands) EXPECT_FALSE(presenter_.isEnabled(command)) << command;
    select({1});
    for (const BrowserCommand command : kRowCommands) EXPECT_TRUE(presenter_.isEnabled(command)) << command;
    select({});
    for (const BrowserCommand command : kRowCommands) EXPECT_FALSE(presenter_.isEnabled(command)) << command;
}

TEST_F(BrowserCommandsOfPresenter, NeedsASelectedRowOfTheFolderShown) {
    fill({L"a/1", L"b.txt"});
    select({0});
    view_.selection.clear();  // the list selects nothing in a new folder
    presenter_.onFolderSelected(folder(L"\\a\\"));
    EXPECT_FALSE(presenter_.isEnabled(mnuEditDelete));
    EXPECT_FALSE(presenter_.isEnabled(kOpen));
}

TEST_F(BrowserCommandsOfPresenter, AddsAndDeletesOnlyInArchivesOfKindsThatCanBeChanged) {
    driver_.changeable = false;
    fill({L"a.txt"});
    select({0});
    EXPECT_FALSE(presenter_.isEnabled(mnuEditAdd));
    EXPECT_FALSE(presenter_.isEnabled(Add));
    EXPECT_FALSE(presenter_.isEnabled(mnuEditDelete));
    EXPECT_FALSE(view_.enabled.at(Add));
    EXPECT_TRUE(presenter_.isEnabled(mnuEditExtract));
    driver_.changeable = true;
    fill({L"a.txt"});
    EXPECT_TRUE(presenter_.isEnabled(mnuEditAdd));
    EXPECT_TRUE(view_.enabled.at(Add));
}

TEST_F(BrowserCommandsOfPresenter, TakesFilesOnlyForArchivesOfKindsThatCanBeChanged) {
    actions_.filesOnClipboard = true;
    driver_.changeable = false;
    fill({L"a.txt"});
    EXPECT_FALSE(presenter_.takesFiles());
    EXPECT_FALSE(presenter_.isEnabled(kPaste));
    EXPECT_FALSE(presenter_.isEnabled(kAddFolder));
    presenter_.onFilesDropped({L"C:\\x"});
    presenter_.onCommand(kPaste);
    presenter_.onCommand(kAddFolder);
    EXPECT_TRUE(actions_.owners.empty());
    driver_.changeable = true;
    fill({L"a.txt"});
    EXPECT_TRUE(presenter_.takesFiles());
    EXPECT_TRUE(presenter_.isEnabled(kPaste));
    EXPECT_TRUE(presenter_.isEnabled(kAddFolder));
}

TEST_F(BrowserCommandsOfPresenter, PastesWhenThereAreFilesOnTheClipboard) {
    fill({L"d/1"}, L"\\d\\");
    EXPECT_FALSE(presenter_.isEnabled(kPaste));
    presenter_.onCommand(kPaste);
    EXPECT_TRUE(actions_.pastedTo.empty());
    actions_.filesOnClipboard = true;
    EXPECT_TRUE(presenter_.isEnabled(kPaste));
    presenter_.onCommand(kPaste);
    EXPECT_EQ(actions_.pastedTo, std::vector<Folder>{folder(L"\\d\\")});
}

TEST_F(BrowserCommandsOfPresenter, AddsWhatIsDroppedAndListsAgain) {
    fill({L"d/1"}, L"\\d\\");
    actions_.changesArchive = true;
    actions_.whileWorking = [&] {
        driver_.members = FakeDriver({L"d/1", L"d/2"}).members;
        EXPECT_FALSE(presenter_.takesFiles()) << "while others are added";
        presenter_.onFilesDropped({L"C:\\other"});
    };
    presenter_.onFilesDropped({L"C:\\2", L"D:\\3"});
    EXPECT_EQ(actions_.dropped, (std::vector<std::vector<std::wstring>>{{L"C:\\2", L"D:\\3"}}));
    EXPECT_EQ(shownKey(), L"\\d\\");
    EXPECT_EQ(presenter_.contents().rowCount(), 2U);
}

TEST_F(BrowserCommandsOfPresenter, ShowsAnEmptyArchiveWhenItWentWithItsLastMember) {
    fill({L"d/1"}, L"\\d\\");
    select({0});
    actions_.changesArchive = true;
    actions_.whileWorking = [&] { files_.deleteFile(kArchive); };
    presenter_.onCommand(mnuEditDelete);
    EXPECT_EQ(shownKey(), L"\\");
    EXPECT_EQ(presenter_.contents().rowCount(), 0U);
    EXPECT_EQ(driver_.listed.size(), 1U) << "there is nothing to open";
    presenter_.onCommand(kRefresh);
    EXPECT_EQ(driver_.listed.size(), 1U);
    EXPECT_TRUE(presenter_.isEnabled(mnuEditAdd)) << "what is added makes it anew";
    actions_.whileWorking = [&] { files_.addFileOfSize(kArchive, 22); };
    presenter_.onCommand(mnuEditAdd);
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_EQ(presenter_.contents().rowCount(), 1U);
}

TEST_F(BrowserCommandsOfPresenter, AddsAFolderThatIsPicked) {
    fill({L"a.txt"});
    presenter_.onCommand(kAddFolder);
    EXPECT_EQ(actions_.foldersAddedTo, std::vector<Folder>{FolderModel::kRoot});
}

TEST_F(BrowserCommandsOfPresenter, DisablesWhatThePortDoesNotOffer) {
    actions_.offered = {mnuEditExtract};
    fill({L"a.txt", L"d/1"});
    select({1});  // the file
    EXPECT_TRUE(presenter_.isEnabled(mnuEditExtract));
    EXPECT_FALSE(presenter_.isEnabled(kOpen));
    EXPECT_FALSE(presenter_.isEnabled(mnuEditAdd));
    EXPECT_FALSE(presenter_.isEnabled(mnuEditDelete));
    EXPECT_FALSE(view_.enabled.at(Add));
    presenter_.onCommand(kOpen);
    presenter_.onRowOpened(1);
    presenter_.onCommand(Add);
    presenter_.onCommand(mnuEditDelete);
    EXPECT_TRUE(actions_.owners.empty());
    select({0});  // folders are opened by the window itself
    EXPECT_TRUE(presenter_.isEnabled(kOpen));
}

TEST_F(BrowserCommandsOfPresenter, DisablesEverythingThatNeedsAPortWithoutOne) {
    BrowserPresenter presenter(view_, {driver_, desktop_, files_, {}}, kArchive);
    driver_.members = FakeDriver({L"a.txt"}).members;
    ASSERT_TRUE(presenter.fill(L"\\"));
    view_.selection = {0};
    presenter.onRowsSelected(1);
    for (const BrowserCommand command : {kOpen, mnuEditExtract, mnuEditAdd, mnuEditDelete}) {
        EXPECT_FALSE(presenter.isEnabled(command)) << command;
        presenter.onCommand(command);
    }
    presenter.cancelWork();
    EXPECT_FALSE(view_.enabled.at(Extract));
}

TEST_F(BrowserCommandsOfPresenter, GoesUpOnlyFromAFolderWithAParent) {
    fill({L"a/1"}, L"\\a\\");
    EXPECT_TRUE(view_.enabled.at(GoUp));
    presenter_.onCommand(GoUp);
    EXPECT_EQ(shownKey(), L"\\");
    EXPECT_FALSE(view_.enabled.at(GoUp));
    EXPECT_FALSE(presenter_.isEnabled(GoUp));
}

TEST_F(BrowserCommandsOfPresenter, ExtractsTheSelectedRowsFromTopToBottom) {
    fill({L"x.txt", L"d/1", L"y.txt"});
    select({0, 2});
    presenter_.onCommand(mnuEditExtract);
    const ArchiveMember d{folder(L"\\d\\"), 0}, y{std::nullopt, 2};
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{d, y}}));
    EXPECT_EQ(actions_.owners, std::vector<WindowHandle>{&view_});
    EXPECT_EQ(actions_.archives, std::vector<std::wstring>{kArchive});
    EXPECT_EQ(driver_.listed.size(), 1U);
}

TEST_F(BrowserCommandsOfPresenter, ExtractsWithoutMembersWhenNoRowIsSelected) {
    fill({L"x.txt"});
    presenter_.onCommand(Extract);
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{}}));
}

TEST_F(BrowserCommandsOfPresenter, ExtractsRowsInTheOrderInWhichTheyStand) {
    fill({L"a", L"b", L"c"});
    presenter_.onHeaderClicked(0);  // c, b, a
    select({0, 2});
    presenter_.onCommand(mnuEditExtract);
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{{std::nullopt, 2}, {std::nullopt, 0}}}));
}

TEST_F(BrowserCommandsOfPresenter, OpensTheRowThatTheKeyboardIsAt) {
    fill({L"x.txt", L"y.txt", L"z.txt"});
    select({0, 2});
    view_.focus = 2;
    presenter_.onCommand(kOpen);
    view_.focus = 1;  // not selected
    presenter_.onCommand(kOpen);
    view_.focus.reset();
    presenter_.onCommand(kOpen);
    EXPECT_EQ(actions_.opened, (Rows{2, 0, 0}));
}

TEST_F(BrowserCommandsOfPresenter, OpensAFileThatIsDoubleClicked) {
    fill({L"d/1", L"x.txt"});
    presenter_.onRowOpened(1);
    EXPECT_EQ(actions_.opened, Rows{1});
    presenter_.onRowOpened(0);
    EXPECT_EQ(shownKey(), L"\\d\\");
    EXPECT_EQ(actions_.opened.size(), 1U);
}

TEST_F(BrowserCommandsOfPresenter, AddsToTheFolderShownAndListsTheArchiveAgain) {
    fill({L"d/1"}, L"\\d\\");
    actions_.changesArchive = true;
    actions_.whileWorking = [&] { driver_.members = FakeDriver({L"d/1", L"d/2"}).members; };
    presenter_.onCommand(Add);
    EXPECT_EQ(actions_.addedTo.size(), 1U);
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_EQ(shownKey(), L"\\d\\");
    EXPECT_EQ(presenter_.contents().rowCount(), 2U);
}

TEST_F(BrowserCommandsOfPresenter, DeletesTheSelectedRowsAndListsTheArchiveAgain) {
    fill({L"d/1", L"x.txt"});
    select({1});
    actions_.changesArchive = true;
    presenter_.onCommand(mnuEditDelete);
    EXPECT_EQ(actions_.deleted, (std::vector<std::vector<ArchiveMember>>{{{std::nullopt, 1}}}));
    EXPECT_EQ(driver_.listed.size(), 2U);
}

TEST_F(BrowserCommandsOfPresenter, ShowsTheRootWhenAFolderGoesWithItsLastMember) {
    fill({L"d/1", L"x.txt"}, L"\\d\\");
    select({0});
    actions_.changesArchive = true;
    actions_.whileWorking = [&] { driver_.members = FakeDriver({L"x.txt"}).members; };
    presenter_.onCommand(mnuEditDelete);
    EXPECT_EQ(shownKey(), L"\\");
    EXPECT_EQ(view_.selected, FolderModel::kRoot);
}

TEST_F(BrowserCommandsOfPresenter, DoesNotListAnArchiveThatWasNotChanged) {
    fill({L"x.txt"});
    select({0});
    presenter_.onCommand(mnuEditDelete);
    presenter_.onCommand(mnuEditAdd);
    EXPECT_EQ(driver_.listed.size(), 1U);
}

TEST_F(BrowserCommandsOfPresenter, TurnsOtherWorkAwayWhileACommandWorks) {
    fill({L"x.txt", L"d/1"});
    select({1});
    actions_.whileWorking = [&] {
        EXPECT_TRUE(presenter_.isBusy());
        EXPECT_FALSE(presenter_.isFilling());
        EXPECT_FALSE(view_.enabled.at(Extract));
        EXPECT_FALSE(view_.enabled.at(Add));
        for (const BrowserCommand command : {kOpen, mnuEditExtract, mnuEditAdd, mnuEditDelete, kRefresh, mnuEditExit}) {
            EXPECT_FALSE(presenter_.isEnabled(command)) << command;
            presenter_.onCommand(command);
        }
        presenter_.onRowOpened(1);
        presenter_.onFolderCommand(mnuEditExtract, FolderModel::kRoot);
        EXPECT_FALSE(presenter_.fill(L"\\"));
        presenter_.onFolderSelected(folder(L"\\d\\"));  // looking around is no work
        EXPECT_EQ(shownKey(), L"\\d\\");
    };
    presenter_.onCommand(mnuEditExtract);
    EXPECT_EQ(actions_.extracted.size(), 1U);
    EXPECT_TRUE(actions_.opened.empty());
    EXPECT_EQ(driver_.listed.size(), 1U);
    EXPECT_FALSE(presenter_.isBusy());
    EXPECT_TRUE(view_.enabled.at(Extract));
}

TEST_F(BrowserCommandsOfPresenter, GoesOnAfterACommandThatFailed) {
    fill({L"x.txt"});
    actions_.whileWorking = [] { throw std::runtime_error("no memory"); };
    EXPECT_NO_THROW(presenter_.onCommand(mnuEditAdd));
    EXPECT_FALSE(presenter_.isBusy());
    EXPECT_TRUE(view_.enabled.at(Extract));
    EXPECT_EQ(driver_.listed.size(), 1U);
}

TEST_F(BrowserCommandsOfPresenter, DoesNothingMoreWhenTheWindowGoesWhileACommandWorks) {
    fill({L"x.txt"});
    actions_.changesArchive = true;
    actions_.whileWorking = [&] {
        view_.window = nullptr;
        presenter_.onUnload();
        EXPECT_EQ(actions_.timesCancelled, 1);
    };
    presenter_.onCommand(mnuEditAdd);
    EXPECT_EQ(driver_.listed.size(), 1U);
}

TEST_F(BrowserCommandsOfPresenter, CancelsOnlyWhatIsAtWork) {
    fill({L"x.txt"});
    presenter_.cancelWork();
    EXPECT_EQ(actions_.timesCancelled, 0);
    actions_.whileWorking = [&] { presenter_.cancelWork(); };
    presenter_.onCommand(mnuEditExtract);
    EXPECT_EQ(actions_.timesCancelled, 1);
}

TEST_F(BrowserCommandsOfPresenter, SelectsAllRows) {
    fill({L"d/1", L"x.txt", L"y.txt"});
    select({1});
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(view_.selection, (Rows{0, 1, 2}));
    EXPECT_EQ(view_.status, L"3 Objects are selected.");
    EXPECT_TRUE(presenter_.isEnabled(mnuEditDelete));
}

TEST_F(BrowserCommandsOfPresenter, InvertsTheSelectionOfEveryRow) {
    fill({L"d/1", L"x.txt", L"y.txt"});
    select({1});
    presenter_.onCommand(mnuEditSelectInvert);
    EXPECT_EQ(view_.selection, (Rows{0, 2}));
    EXPECT_EQ(view_.status, L"2 Objects are selected.");
    presenter_.onCommand(mnuEditSelectInvert);
    EXPECT_EQ(view_.selection, Rows{1});
    EXPECT_EQ(view_.status, L"1 Objects are selected.");
    presenter_.onCommand(mnuEditSelectAll);
    presenter_.onCommand(mnuEditSelectInvert);
    EXPECT_EQ(view_.status, L"0 Objects are selected.");
    EXPECT_FALSE(presenter_.isEnabled(mnuEditDelete));
}

TEST_F(BrowserCommandsOfPresenter, SelectsNothingInAnEmptyFolder) {
    fill({});
    EXPECT_FALSE(presenter_.isEnabled(mnuEditSelectAll));
    EXPECT_FALSE(presenter_.isEnabled(mnuEditSelectInvert));
}

TEST_F(BrowserCommandsOfPresenter, ListsTheArchiveAgainAndStaysInTheFolder) {
    fill({L"d/1", L"x.txt"}, L"\\d\\");
    driver_.members = FakeDriver({L"x.txt", L"d/2", L"d/3"}).members;
    presenter_.onCommand(kRefresh);
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_EQ(shownKey(), L"\\d\\");
    EXPECT_EQ(presenter_.contents().rowCount(), 2U);
}

TEST_F(BrowserCommandsOfPresenter, ClearsListAndTreeAndClosesTheWindowOnExit) {
    fill({L"d/1"});
    presenter_.onCommand(mnuEditExit);
    EXPECT_EQ(view_.timesCleared, 2);  // once when it was filled
    EXPECT_EQ(view_.timesClosed, 1);
    EXPECT_EQ(presenter_.contents().rowCount(), 0U);
    EXPECT_EQ(presenter_.currentFolder(), std::nullopt);
    EXPECT_FALSE(view_.enabled.at(mnuEdit));
    EXPECT_FALSE(view_.enabled.at(Extract));
}

TEST_F(BrowserCommandsOfPresenter, ChangesTheViewStyle) {
    fill({L"x.txt"});
    EXPECT_EQ(presenter_.viewStyle(), ViewStyle::Details);
    presenter_.onCommand(mnuViewStyleLargeIcons);
    EXPECT_EQ(view_.style, ViewStyle::LargeIcons);
    EXPECT_EQ(presenter_.viewStyle(), ViewStyle::LargeIcons);
    EXPECT_FALSE(presenter_.contents().exact());
    presenter_.onCommand(mnuViewStyleExactDetails);
    EXPECT_EQ(view_.style, ViewStyle::ExactDetails);
    EXPECT_TRUE(presenter_.contents().exact());
    presenter_.onCommand(mnuViewStyleDetails);
    EXPECT_FALSE(presenter_.contents().exact());
}

TEST_F(BrowserCommandsOfPresenter, KeepsStyleAndOrderInOtherFoldersAndAfterListing) {
    fill({L"d/1", L"d/2", L"x.txt"});
    presenter_.onHeaderClicked(0);
    presenter_.onCommand(mnuViewStyleExactDetails);
    presenter_.onFolderSelected(folder(L"\\d\\"));
    presenter_.onCommand(kRefresh);
    EXPECT_EQ(presenter_.viewStyle(), ViewStyle::ExactDetails);
    EXPECT_TRUE(presenter_.contents().exact());
    EXPECT_EQ(presenter_.contents().text(0, 0), L"2");
    EXPECT_EQ(presenter_.contents().text(1, 0), L"1");
}

TEST_F(BrowserCommandsOfPresenter, TellsTheListWhenExactDetailsStandInAnotherOrder) {
    driver_.members = {{.storedName = L"small", .original = 99'999'999},
                       {.storedName = L"big", .original = 2'345'678'901}};
    ASSERT_TRUE(presenter_.fill(L"\\"));
    presenter_.onHeaderClicked(1);
    presenter_.onHeaderClicked(1);  // ascending by the texts "99,999,999" and "45,678,901"
    ASSERT_EQ(presenter_.contents().text(0, 0), L"big");
    presenter_.onCommand(mnuViewStyleExactDetails);
    EXPECT_EQ(presenter_.contents().text(0, 0), L"small");
    EXPECT_EQ(view_.newRows, (Rows{1, 0}));
}

TEST_F(BrowserCommandsOfPresenter, OpensAFolderOfTheTree) {
    fill({L"a/b/1"});
    presenter_.onFolderCommand(kOpen, folder(L"\\a\\b\\"));
    EXPECT_EQ(shownKey(), L"\\a\\b\\");
    presenter_.onFolderCommand(kOpen, 99);
    EXPECT_EQ(shownKey(), L"\\a\\b\\");
}

TEST_F(BrowserCommandsOfPresenter, ExtractsAFolderOfTheTree) {
    fill({L"a/1", L"b/2"});
    select({0});
    presenter_.onFolderCommand(mnuEditExtract, folder(L"\\b\\"));
    presenter_.onFolderCommand(mnuEditExtract, FolderModel::kRoot);
    const ArchiveMember b{folder(L"\\b\\"), 0};
    EXPECT_EQ(actions_.extracted, (std::vector<std::vector<ArchiveMember>>{{b}, {}}));
    EXPECT_EQ(shownKey(), L"\\");
    presenter_.onFolderCommand(mnuEditDelete, folder(L"\\b\\"));
    EXPECT_TRUE(actions_.deleted.empty());
}

TEST_F(BrowserCommandsOfPresenter, HasNoCommandsWhileTheArchiveIsListed) {
    fill({L"x.txt"});
    driver_.whileListing = [&] {
        EXPECT_FALSE(view_.enabled.at(mnuEdit));
        EXPECT_FALSE(view_.enabled.at(Extract));
        for (const BrowserCommand command : kOfEditMenu) {
            EXPECT_FALSE(presenter_.isEnabled(command)) << command;
            presenter_.onCommand(command);
        }
        presenter_.onFolderCommand(kOpen, FolderModel::kRoot);
    };
    presenter_.onCommand(kRefresh);
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_TRUE(actions_.owners.empty());
    EXPECT_TRUE(view_.enabled.at(mnuEdit));
}

TEST_F(BrowserCommandsOfPresenter, DoesNothingForWhatIsNoCommand) {
    fill({L"x.txt"});
    for (const BrowserCommand command : {kNoCommand, mnuEdit, mnuView, mnuEditSelect, static_cast<BrowserCommand>(9)}) {
        presenter_.onCommand(command);
    }
    EXPECT_TRUE(actions_.owners.empty());
    EXPECT_EQ(view_.timesClosed, 0);
    EXPECT_EQ(driver_.listed.size(), 1U);
}

}  // namespace
}  // namespace tovar::test
