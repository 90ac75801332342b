#include "browser/browser_presenter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/fakes/fake_browser_view.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/fakes/fake_file_system.h"

namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;

constexpr wchar_t kArchive[] = L"C:\\files\\a.zip";

class BrowserPresenterTest : public testing::Test {
protected:
    BrowserPresenterTest() {
        auto& file = files_.addFileOfSize(kArchive, 1234567);
        file.status.modifiedDate = {2024, 3, 9};
        file.status.modifiedTime = {7, 5, 2};
    }

    void fill(const std::vector<std::wstring>& storedNames, std::wstring_view key = L"\\") {
        driver_.members = FakeDriver(storedNames).members;
        ASSERT_TRUE(presenter_.fill(key));
    }
    [[nodiscard]] std::wstring shownKey() const { return presenter_.folders().key(presenter_.currentFolder().value()); }
    [[nodiscard]] Texts rows() const {
        Texts names;
        for (std::uint32_t row = 0; row < presenter_.contents().rowCount(); ++row) {
            names.push_back(presenter_.contents().text(row, 0));
        }
        return names;
    }
    [[nodiscard]] Folder folder(std::wstring_view key) const { return presenter_.folders().find(key).value(); }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBrowserView view_;
    BrowserPresenter presenter_{view_, {driver_, desktop_, files_, {}}, kArchive};
};

TEST_F(BrowserPresenterTest, NamesTheWindowAfterTheArchive) {
    presenter_.onLoad();
    EXPECT_EQ(view_.title, L"a.zip");
    EXPECT_FALSE(view_.goUpEnabled);
    EXPECT_EQ(view_.status, L"");
}

TEST_F(BrowserPresenterTest, ListsTheArchiveWithTheWindowAsOwner) {
    fill({L"a.txt"});
    EXPECT_EQ(driver_.listed, Texts{kArchive});
    EXPECT_EQ(driver_.owners, std::vector<WindowHandle>{&view_});
}

TEST_F(BrowserPresenterTest, GivesTheDriverItsFormerOwnerBack) {
    int host = 0;
    driver_.setHWnd(&host);
    BrowserPresenter presenter(view_, {driver_, desktop_, files_, {}}, kArchive);
    presenter.fill(L"\\");
    EXPECT_EQ(driver_.hWnd(), &view_);
    presenter.onUnload();
    EXPECT_EQ(driver_.hWnd(), &host);
}

TEST_F(BrowserPresenterTest, ShowsTheRootOfAnArchive) {
    fill({L"a/b/one.txt", L"two.txt"});
    EXPECT_EQ(view_.timesFoldersShown, 1);
    EXPECT_EQ(view_.selected, FolderModel::kRoot);
    EXPECT_EQ(view_.expanded, std::vector<Folder>{FolderModel::kRoot});
    EXPECT_EQ(rows(), (Texts{L"a", L"two.txt"}));
    EXPECT_EQ(view_.address, L"a.zip\\");
    EXPECT_FALSE(view_.goUpEnabled);
}

TEST_F(BrowserPresenterTest, ShowsTheRequestedFolder) {
    fill({L"a/b/one.txt", L"two.txt"}, L"\\a\\b\\");
    EXPECT_EQ(view_.selected, folder(L"\\a\\b\\"));
    EXPECT_EQ(view_.expanded, std::vector<Folder>{folder(L"\\a\\b\\")});
    EXPECT_EQ(rows(), Texts{L"one.txt"});
    EXPECT_EQ(view_.address, L"a.zip\\a\\b\\");
    EXPECT_TRUE(view_.goUpEnabled);
}

TEST_F(BrowserPresenterTest, ShowsTheRootWhenTheRequestedFolderHasVanished) {
    fill({L"a/one.txt", L"two.txt"}, L"\\a\\");
    EXPECT_EQ(shownKey(), L"\\a\\");
    fill({L"two.txt"}, shownKey());
    EXPECT_EQ(view_.selected, FolderModel::kRoot);
    EXPECT_EQ(view_.expanded, std::vector<Folder>{FolderModel::kRoot});
    EXPECT_EQ(rows(), Texts{L"two.txt"});
}

TEST_F(BrowserPresenterTest, StaysInTheFolderThatIsStillThere) {
    fill({L"a/one.txt"}, L"\\a\\");
    fill({L"new/x", L"a/two.txt"}, L"\\a\\");
    EXPECT_EQ(shownKey(), L"\\a\\");
    EXPECT_EQ(rows(), Texts{L"two.txt"});
    EXPECT_EQ(view_.timesCleared, 2);
}

TEST_F(BrowserPresenterTest, ShowsAnEmptyRootOfAnEmptyArchive) {
    fill({});
    EXPECT_EQ(view_.selected, FolderModel::kRoot);
    EXPECT_TRUE(rows().empty());
    EXPECT_EQ(view_.address, L"a.zip\\");
}

TEST_F(BrowserPresenterTest, TellsCountSizeAndTimeOfTheArchiveAfterListing) {
    fill({L"a/", L"a/1", L"2"});
    EXPECT_EQ(view_.status, L"Archive has 3 files 1,234,567 Bytes 24/03/09 07:05:02");
}

TEST_F(BrowserPresenterTest, WritesTheStatusAsTheRegionWants) {
    RegionalSettings regional;
    regional.groupSeparator = L".";
    regional.dateSeparator = L"-";
    regional.timeSeparator = L".";
    BrowserPresenter presenter(view_, {driver_, desktop_, files_, regional}, kArchive);
    presenter.fill(L"\\");
    EXPECT_EQ(view_.status, L"Archive has 0 files 1.234.567 Bytes 24-03-09 07.05.02");
}

TEST_F(BrowserPresenterTest, LeavesOutSizeAndTimeOfAFileThatIsGone) {
    BrowserPresenter presenter(view_, {driver_, desktop_, files_, {}}, L"C:\\files\\gone.zip");
    presenter.fill(L"\\");
    EXPECT_EQ(view_.status, L"Archive has 0 files  Bytes ");
}

TEST_F(BrowserPresenterTest, TellsHowManyRowsAreSelected) {
    fill({L"1", L"2", L"3"});
    presenter_.onRowsSelected(2);
    EXPECT_EQ(view_.status, L"2 Objects are selected.");
    presenter_.onRowsSelected(0);
    EXPECT_EQ(view_.status, L"0 Objects are selected.");
}

TEST_F(BrowserPresenterTest, ForgetsTheSelectionWithTheFolder) {
    fill({L"a/1", L"2"});
    presenter_.onRowsSelected(1);
    presenter_.onFolderSelected(folder(L"\\a\\"));
    EXPECT_EQ(view_.status, L"0 Objects are selected.");
}

TEST_F(BrowserPresenterTest, KeepsTheArchivesStatusWhileNothingIsSelected) {
    fill({L"a/1", L"2"});
    presenter_.onFolderSelected(folder(L"\\a\\"));
    EXPECT_EQ(view_.status, L"Archive has 2 files 1,234,567 Bytes 24/03/09 07:05:02");
}

TEST_F(BrowserPresenterTest, ShowsTheFolderThatIsSelectedInTheTree) {
    fill({L"a/1", L"b/2"});
    presenter_.onFolderSelected(folder(L"\\b\\"));
    EXPECT_EQ(rows(), Texts{L"2"});
    EXPECT_EQ(view_.address, L"a.zip\\b\\");
    EXPECT_TRUE(view_.goUpEnabled);
}

TEST_F(BrowserPresenterTest, TakesTheSelectionThatItMadeItselfForNoNews) {
    fill({L"a/1"});
    const int shown = view_.timesContentsShown;
    presenter_.onFolderSelected(FolderModel::kRoot);
    EXPECT_EQ(view_.timesContentsShown, shown);
}

TEST_F(BrowserPresenterTest, KeepsTheRootOpen) {
    fill({L"a/1"});
    EXPECT_FALSE(presenter_.mayCollapse(FolderModel::kRoot));
    EXPECT_TRUE(presenter_.mayCollapse(folder(L"\\a\\")));
}

TEST_F(BrowserPresenterTest, GoesUpToTheRootAndNoFurther) {
    fill({L"a/b/1"}, L"\\a\\b\\");
    presenter_.onGoUp();
    EXPECT_EQ(shownKey(), L"\\a\\");
    EXPECT_EQ(view_.selected, folder(L"\\a\\"));
    EXPECT_EQ(view_.address, L"a.zip\\a\\");
    EXPECT_TRUE(view_.goUpEnabled);
    presenter_.onGoUp();
    EXPECT_EQ(shownKey(), L"\\");
    EXPECT_FALSE(view_.goUpEnabled);
    const int shown = view_.timesContentsShown;
    presenter_.onGoUp();
    EXPECT_EQ(view_.timesContentsShown, shown);
}

TEST_F(BrowserPresenterTest, OpensAFolderRow) {
    fill({L"1.txt", L"a/2"});
    presenter_.onRowOpened(0);
    EXPECT_EQ(shownKey(), L"\\a\\");
    EXPECT_EQ(view_.selected, folder(L"\\a\\"));
    presenter_.onRowOpened(0);  // a file
    presenter_.onRowOpened(7);  // nothing
    EXPECT_EQ(shownKey(), L"\\a\\");
}

TEST_F(BrowserPresenterTest, SortsOnAHeaderClick) {
    fill({L"b", L"c", L"a"});
    presenter_.onHeaderClicked(0);
    EXPECT_EQ(rows(), (Texts{L"c", L"b", L"a"}));
    EXPECT_EQ(view_.newRows, (std::vector<std::uint32_t>{1, 0, 2}));
    presenter_.onHeaderClicked(99);
    EXPECT_EQ(rows(), (Texts{L"c", L"b", L"a"}));
}

TEST_F(BrowserPresenterTest, KeepsAHistoryOfAddressesEachOnce) {
    fill({L"a/1", L"A/2"});
    presenter_.onFolderSelected(folder(L"\\a\\"));
    presenter_.onFolderSelected(folder(L"\\A\\"));
    presenter_.onFolderSelected(FolderModel::kRoot);
    EXPECT_EQ(view_.addresses, (Texts{L"a.zip\\", L"a.zip\\a\\", L"a.zip\\A\\"}));
    EXPECT_EQ(view_.address, L"a.zip\\");
}

TEST_F(BrowserPresenterTest, GoesToTheAddressThatWasEntered) {
    fill({L"a/b/1"});
    presenter_.onAddressEntered(L"a.zip\\a\\b\\");
    EXPECT_EQ(shownKey(), L"\\a\\b\\");
    EXPECT_EQ(view_.expanded.back(), folder(L"\\a\\b\\"));
    EXPECT_EQ(view_.timesCaretMoved, 1);
    presenter_.onAddressEntered(L"\\a\\");
    EXPECT_EQ(shownKey(), L"\\a\\");
}

TEST_F(BrowserPresenterTest, DoesNothingForAnEmptyAddress) {
    fill({L"a/1"}, L"\\a\\");
    presenter_.onAddressEntered(L"");
    EXPECT_EQ(view_.timesCaretMoved, 0);
    EXPECT_EQ(shownKey(), L"\\a\\");
}

TEST_F(BrowserPresenterTest, RemovesTheArchivesNameWhereverItStands) {
    fill({L"a/1"});
    presenter_.onAddressEntered(L"a.zip\\aa.zip\\");
    EXPECT_EQ(shownKey(), L"\\a\\");
}

TEST_F(BrowserPresenterTest, FindsAFolderNamedLikeTheArchive) {
    fill({L"a.zip/1"});
    presenter_.onAddressEntered(L"a.zip\\a.zip\\");
    EXPECT_EQ(shownKey(), L"\\a.zip\\");
}

TEST_F(BrowserPresenterTest, StaysForAnotherFormOfItsOwnAddress) {
    fill({L"a/1", L"A/2"}, L"\\a\\");
    const int shown = view_.timesContentsShown;
    for (const wchar_t* text : {L"a.zip\\A\\", L"\\a\\", L"a.zip\\a", L"a.zip/a/"}) {
        view_.address = text;
        presenter_.onAddressEntered(text);
        EXPECT_EQ(shownKey(), L"\\a\\");
        EXPECT_EQ(view_.timesContentsShown, shown);
        EXPECT_EQ(view_.address, L"a.zip\\a\\");
    }
}

struct AddressCase {
    const char* name;
    std::wstring_view text;
};
class WrittenAddress : public BrowserPresenterTest, public testing::WithParamInterface<AddressCase> {};
TEST_P(WrittenAddress, NamesTheFolder) {
    fill({L"Docs/Old/1"});
    presenter_.onAddressEntered(GetParam().text);
    EXPECT_EQ(shownKey(), L"\\Docs\\Old\\");
    EXPECT_EQ(view_.address, L"a.zip\\Docs\\Old\\");
}
INSTANTIATE_TEST_SUITE_P(
    Forms, WrittenAddress,
    testing::Values(AddressCase{"Key", L"\\Docs\\Old\\"}, AddressCase{"OtherCase", L"a.zip\\docs\\OLD\\"},
                    AddressCase{"NoSeparatorAtTheEnd", L"a.zip\\Docs\\Old"}, AddressCase{"NoSeparators", L"Docs\\Old"},
                    AddressCase{"Slashes", L"a.zip/Docs/Old/"}, AddressCase{"Blanks", L"  a.zip\\Docs\\Old\\ "},
                    AddressCase{"ArchiveInOtherCase", L"A.ZIP\\Docs\\Old\\"},
                    AddressCase{"FullPath", L"c:\\files\\A.zip\\Docs\\Old"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(BrowserPresenterTest, PutsItsOwnAddressBackForOneThatNamesNoFolder) {
    fill({L"a/1"}, L"\\a\\");
    for (const wchar_t* text : {L"a.zip\\b\\", L"   ", L"\\\\?\\", L"b.zip\\a\\"}) {
        view_.address = text;
        presenter_.onAddressEntered(text);
        EXPECT_EQ(shownKey(), L"\\a\\");
        EXPECT_EQ(view_.address, L"a.zip\\a\\");
    }
    EXPECT_EQ(view_.addresses, Texts{L"a.zip\\a\\"});
}

TEST_F(BrowserPresenterTest, PutsItsOwnAddressBackWhenTheUserGivesUp) {
    fill({L"a/1"}, L"\\a\\");
    view_.address = L"something";
    presenter_.onAddressAbandoned();
    EXPECT_EQ(view_.address, L"a.zip\\a\\");
}

TEST_F(BrowserPresenterTest, FindsNothingToActOnWhileItLists) {
    fill({L"a/1", L"2"});
    const std::wstring before = view_.status;
    bool nested = true;
    driver_.whileListing = [&] {
        EXPECT_TRUE(presenter_.isFilling());
        nested = presenter_.fill(L"\\a\\");
        presenter_.onGoUp();
        presenter_.onRowOpened(0);
        presenter_.onRowsSelected(1);
        presenter_.onHeaderClicked(0);
        presenter_.onFolderSelected(1);
        presenter_.onAddressEntered(L"\\a\\");
        presenter_.onAddressAbandoned();
        EXPECT_EQ(presenter_.contents().rowCount(), 0U);
    };
    ASSERT_TRUE(presenter_.fill(L"\\"));
    EXPECT_FALSE(nested);
    EXPECT_FALSE(presenter_.isFilling());
    EXPECT_EQ(driver_.listed.size(), 2U);
    EXPECT_EQ(shownKey(), L"\\");
    EXPECT_EQ(view_.status, before);
    EXPECT_FALSE(presenter_.contents().sorting());
}

TEST_F(BrowserPresenterTest, GivesUpWhenTheWindowGoesWhileItLists) {
    driver_.members = FakeDriver({L"1"}).members;
    driver_.whileListing = [&] { view_.window = nullptr; };
    EXPECT_FALSE(presenter_.fill(L"\\"));
    EXPECT_EQ(view_.timesFoldersShown, 0);
    EXPECT_FALSE(presenter_.fill(L"\\"));
    EXPECT_EQ(driver_.listed.size(), 1U);
}

TEST_F(BrowserPresenterTest, DoesNotMindThatTheWantedKeyIsItsOwnText) {
    fill({L"a/1"}, L"\\a\\");
    const std::wstring own = shownKey();
    EXPECT_TRUE(presenter_.fill(own));
    EXPECT_EQ(shownKey(), L"\\a\\");
}

}  // namespace
}  // namespace tovar::test
