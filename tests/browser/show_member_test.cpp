#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "browser/browser_presenter.h"
#include "browser/fakes/fake_browser_view.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/fakes/fake_file_system.h"

namespace tovar::test {
namespace {

class ShowMemberTest : public testing::Test {
protected:
    void fill(const std::vector<std::wstring>& storedNames, std::wstring_view key = L"\\") {
        driver_.members = FakeDriver(storedNames).members;
        ASSERT_TRUE(presenter_.fill(key));
    }
    [[nodiscard]] Folder folder(std::wstring_view key) const { return presenter_.folders().find(key).value(); }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBrowserView view_;
    BrowserPresenter presenter_{view_, {driver_, desktop_, files_, {}}, L"C:\\files\\a.zip"};
};

TEST_F(ShowMemberTest, ShowsTheFolderAndTheRow) {
    fill({L"a/b/1", L"a/b/2", L"c"});
    EXPECT_TRUE(presenter_.showMember({folder(L"\\a\\b\\"), 1}));
    EXPECT_EQ(view_.selected, folder(L"\\a\\b\\"));
    EXPECT_EQ(view_.address, L"a.zip\\a\\b\\");
    EXPECT_EQ(view_.shownRows, std::vector<std::uint32_t>{1});
    EXPECT_EQ(view_.status, L"1 Objects are selected.");
}

TEST_F(ShowMemberTest, ShowsARowOfTheFolderThatIsThereAlready) {
    fill({L"a/1", L"b", L"c"});
    const int shown = view_.timesContentsShown;
    EXPECT_TRUE(presenter_.showMember({FolderModel::kRoot, 2}));
    EXPECT_TRUE(presenter_.showMember({FolderModel::kRoot, 0}));
    EXPECT_EQ(view_.shownRows, (std::vector<std::uint32_t>{2, 0}));
    EXPECT_EQ(view_.timesContentsShown, shown);
}

TEST_F(ShowMemberTest, ShowsTheRowWhereItStandsInASortedList) {
    fill({L"d/a", L"d/b", L"d/c"});
    presenter_.onHeaderClicked(0);  // descending
    EXPECT_TRUE(presenter_.showMember({folder(L"\\d\\"), 0}));
    EXPECT_EQ(view_.shownRows, std::vector<std::uint32_t>{2});
}

TEST_F(ShowMemberTest, RefusesWhatIsNotThere) {
    fill({L"a/1"});
    EXPECT_FALSE(presenter_.showMember({FolderModel::kRoot, 1}));
    EXPECT_FALSE(presenter_.showMember({2, 0}));
    EXPECT_TRUE(view_.shownRows.empty());
    presenter_.onUnload();
    EXPECT_FALSE(presenter_.showMember({FolderModel::kRoot, 0}));
}

TEST_F(ShowMemberTest, KnowsWhereTheFocusedRowBelongs) {
    EXPECT_EQ(presenter_.currentPlace(), std::nullopt);
    fill({L"a/1", L"b", L"c"});
    EXPECT_EQ(presenter_.currentPlace(), std::nullopt);
    view_.focus = 2;
    EXPECT_EQ(presenter_.currentPlace(), (MemberPlace{FolderModel::kRoot, 2}));
    presenter_.onHeaderClicked(0);  // c, b, a
    EXPECT_EQ(presenter_.currentPlace(), (MemberPlace{FolderModel::kRoot, 0}));
    view_.focus = 3;
    EXPECT_EQ(presenter_.currentPlace(), std::nullopt);
}

TEST_F(ShowMemberTest, OffersToFindWhileAnArchiveIsShown) {
    for (const BrowserCommand command : {kFind, kFindNext, kFindPrevious}) {
        EXPECT_FALSE(presenter_.isEnabled(command));
    }
    fill({});
    for (const BrowserCommand command : {kFind, kFindNext, kFindPrevious}) EXPECT_TRUE(presenter_.isEnabled(command));
}

}  // namespace
}  // namespace tovar::test
