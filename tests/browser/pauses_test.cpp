#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "browser/browser_presenter.h"
#include "browser/fakes/fake_browser_view.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/breather.h"
#include "shell/fakes/fake_file_system.h"

// Work that stops for breath: how often, in units of work, and what may happen then.
namespace tovar::test {
namespace {

enum Position : std::size_t { kName, kOriginal, kPacked, kRatio, kFileType, kModified, kAttr, kType, kCrc };
constexpr std::uint32_t kMany = 50'000;

/// Counts breaths, and lets something happen at one of them.
class FakeBreather final : public Breather {
public:
    std::uint32_t begun = 0, breaths = 0;
    std::uint32_t when = 0;  ///< at which breath something happens, from 1
    std::function<void()> happens;
    bool wanted = true;

    void begin() override { ++begun; }
    [[nodiscard]] bool breathe() override {
        if (++breaths == when && happens) happens();
        return wanted;
    }
};

TEST(PacedWork, BreathesAfterEachPortion) {
    FakeBreather breather;
    PacedWork work(&breather);
    EXPECT_EQ(breather.begun, 1U);
    for (std::uint32_t unit = 1; unit < PacedWork::kPortion; ++unit) work.done();
    EXPECT_EQ(breather.breaths, 0U);
    work.done();
    EXPECT_EQ(breather.breaths, 1U);
    for (std::uint32_t unit = 0; unit < 10 * PacedWork::kPortion; ++unit) work.done();
    EXPECT_EQ(breather.breaths, 11U);
}

TEST(PacedWork, BreathesAtOnceBehindAGreatPiece) {
    FakeBreather breather;
    PacedWork work(&breather);
    work.done(100 * PacedWork::kPortion);
    EXPECT_EQ(breather.breaths, 1U);
    work.done(PacedWork::kPortion - 1);
    EXPECT_EQ(breather.breaths, 1U);
}

TEST(PacedWork, EndsWhenItIsNoLongerWanted) {
    FakeBreather breather;
    breather.wanted = false;
    PacedWork work(&breather);
    EXPECT_THROW(work.done(PacedWork::kPortion), WorkAbandoned);
}

TEST(PacedWork, GoesOnWithoutABreather) {
    PacedWork work(nullptr);
    EXPECT_NO_THROW(work.done(10 * PacedWork::kPortion));
}

class PausesTest : public testing::Test {
protected:
    PausesTest() {
        files_.addFileOfSize(L"C:\\a.zip", 1);
        for (std::uint32_t number = 0; number < kMany; ++number) {
            driver_.members.push_back({.storedName = L"many/file" + std::to_wstring(number * 7919 % kMany) + L".txt",
                                       .original = number * 7919 % kMany});
        }
        for (std::uint32_t number = 0; number < 3; ++number) {
            driver_.members.push_back({.storedName = L"few/" + std::to_wstring(number)});
        }
    }
    void fill(std::wstring_view key = L"\\many\\") {
        ASSERT_TRUE(presenter_.fill(key));
        breather_.breaths = 0;
        breather_.begun = 0;
    }
    [[nodiscard]] Folder folder(std::wstring_view key) const { return presenter_.folders().find(key).value(); }
    [[nodiscard]] std::wstring nameIn(std::uint32_t row) const { return presenter_.contents().text(row, kName); }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBrowserView view_;
    FakeBreather breather_;
    BrowserPresenter presenter_{view_, {driver_, desktop_, files_, {}, nullptr, &breather_}, L"C:\\a.zip"};
};

TEST_F(PausesTest, BuildingFoldersBreathesOncePerPortion) {
    driver_.SetArcFile(L"C:\\a.zip");
    FolderModel folders;
    folders.build(L"a.zip", driver_.entries(), &breather_);
    // Two looks at each of 50,003 members, and one at each part of two paths.
    EXPECT_EQ(breather_.breaths, (2 * (kMany + 3) + 2) / PacedWork::kPortion);
    EXPECT_EQ(folders.size(), 3U);
}

TEST_F(PausesTest, ABuildThatIsGivenUpLeavesNoFolders) {
    driver_.SetArcFile(L"C:\\a.zip");
    FolderModel folders;
    breather_.wanted = false;
    EXPECT_THROW(folders.build(L"a.zip", driver_.entries(), &breather_), WorkAbandoned);
    EXPECT_EQ(folders.size(), 0U);
}

TEST_F(PausesTest, SortingBreathesEnoughInEveryColumnAndNotTooOften) {
    fill();
    for (const auto column : {kName, kOriginal, kPacked, kRatio, kFileType, kModified, kAttr, kType, kCrc}) {
        breather_.breaths = 0;
        presenter_.onHeaderClicked(column);
        // A comparison is a unit; sorting n rows takes n and more, and at most a few times n log n.
        EXPECT_GE(breather_.breaths, 2 * kMany / PacedWork::kPortion) << column;
        EXPECT_LE(breather_.breaths, 4 * 16 * kMany / PacedWork::kPortion) << column;
    }
}

TEST_F(PausesTest, FewRowsAreSortedWithoutABreath) {
    fill(L"\\few\\");
    presenter_.onHeaderClicked(kName);
    EXPECT_EQ(breather_.begun, 0U);
    EXPECT_EQ(breather_.breaths, 0U);
    EXPECT_FALSE(presenter_.takesLongToSort());
    EXPECT_FALSE(presenter_.takesLongToShow(folder(L"\\few\\")));
    EXPECT_TRUE(presenter_.takesLongToShow(folder(L"\\many\\")));
}

TEST_F(PausesTest, LendsTheBreatherToTheDriverForTheListingOnly) {
    Breather* lent = nullptr;
    driver_.whileListing = [&] { lent = driver_.breather; };
    fill();
    EXPECT_NE(lent, nullptr);
    EXPECT_EQ(driver_.breather, nullptr);
}

TEST_F(PausesTest, WhatArrivesWhileRowsAreSortedFindsABusyPresenter) {
    fill();
    const int shown = view_.timesContentsShown;
    breather_.when = 3;
    breather_.happens = [&] {
        EXPECT_TRUE(presenter_.isBusy());
        EXPECT_TRUE(presenter_.isFilling());
        EXPECT_FALSE(presenter_.fill(L"\\"));
        presenter_.onHeaderClicked(kOriginal);
        presenter_.onGoUp();
        presenter_.onRowOpened(0);
        presenter_.onAddressEntered(L"\\few\\");
        presenter_.onAddressAbandoned();
        presenter_.onRowsSelected(1);
        EXPECT_FALSE(presenter_.contents().sorting());  // the rows stand as before
        EXPECT_EQ(nameIn(0), L"file0.txt");
        EXPECT_EQ(nameIn(1), L"file7919.txt");
    };
    presenter_.onHeaderClicked(kName);
    EXPECT_GE(breather_.breaths, 3U);
    EXPECT_FALSE(presenter_.isBusy());
    EXPECT_EQ(view_.timesContentsShown, shown);
    EXPECT_EQ(presenter_.currentFolder(), folder(L"\\many\\"));
    EXPECT_EQ(presenter_.contents().sorting()->column, kName);
    EXPECT_EQ(nameIn(0), L"file9999.txt");
    EXPECT_EQ(view_.newRows.size(), kMany);
}

TEST_F(PausesTest, ASortIsGivenUpWhenTheWindowGoes) {
    fill();
    breather_.when = 3;
    breather_.happens = [&] {
        view_.window = nullptr;
        presenter_.onUnload();
    };
    presenter_.onHeaderClicked(kName);
    EXPECT_EQ(breather_.breaths, 3U);
    EXPECT_TRUE(view_.newRows.empty());
    EXPECT_FALSE(presenter_.currentFolder());
    EXPECT_EQ(presenter_.contents().rowCount(), 0U);
}

TEST_F(PausesTest, ASortIsGivenUpWhenTheWindowIsToCloseWhichItThenDoes) {
    fill();
    const int closed = view_.timesClosed;
    breather_.when = 3;
    breather_.happens = [&] { presenter_.cancelWork(); };
    presenter_.onHeaderClicked(kName);
    EXPECT_EQ(breather_.breaths, 3U);
    EXPECT_EQ(view_.timesClosed, closed + 1);
    EXPECT_TRUE(view_.newRows.empty());
}

TEST_F(PausesTest, AFolderThatIsSelectedMeanwhileIsShownInstead) {
    fill();
    breather_.when = 3;
    breather_.happens = [&] { presenter_.onFolderSelected(folder(L"\\few\\")); };
    presenter_.onHeaderClicked(kName);
    EXPECT_EQ(breather_.breaths, 3U);
    EXPECT_EQ(presenter_.currentFolder(), folder(L"\\few\\"));
    EXPECT_EQ(presenter_.contents().rowCount(), 3U);
    EXPECT_EQ(view_.address, L"a.zip\\few\\");
}

TEST_F(PausesTest, TheLastFolderOfSeveralSelectedOnesIsShown) {
    fill(L"\\few\\");
    presenter_.onHeaderClicked(kName);
    const int shown = view_.timesContentsShown;
    breather_.when = 2;
    breather_.happens = [&] {
        presenter_.onFolderSelected(FolderModel::kRoot);
        presenter_.onFolderSelected(folder(L"\\few\\"));
    };
    presenter_.onFolderSelected(folder(L"\\many\\"));
    EXPECT_EQ(presenter_.currentFolder(), folder(L"\\few\\"));
    EXPECT_EQ(nameIn(0), L"2");
    EXPECT_EQ(view_.timesContentsShown, shown + 1);
    EXPECT_FALSE(presenter_.isBusy());
}

TEST_F(PausesTest, SelectingManyRowsBreathesOncePerPortion) {
    fill();
    view_.rowCount = kMany;
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(breather_.breaths, kMany / PacedWork::kPortion);
    EXPECT_EQ(view_.selection.size(), kMany);
    EXPECT_EQ(view_.status, L"50000 Objects are selected.");
    EXPECT_FALSE(presenter_.isBusy());
    presenter_.onCommand(mnuEditSelectInvert);
    EXPECT_EQ(breather_.breaths, 2 * (kMany / PacedWork::kPortion));
    EXPECT_EQ(view_.status, L"0 Objects are selected.");
}

TEST_F(PausesTest, FewRowsAreSelectedWithoutABreath) {
    fill(L"\\few\\");
    view_.rowCount = 3;
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(breather_.begun, 0U);
    EXPECT_EQ(view_.status, L"3 Objects are selected.");
}

TEST_F(PausesTest, WhatArrivesWhileRowsAreSelectedFindsABusyPresenter) {
    fill();
    view_.rowCount = kMany;
    breather_.when = 2;
    breather_.happens = [&] {
        EXPECT_TRUE(presenter_.isBusy());
        presenter_.onHeaderClicked(kName);
        presenter_.onCommand(mnuEditSelectInvert);
        presenter_.onGoUp();
    };
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(view_.status, L"50000 Objects are selected.");
    EXPECT_FALSE(presenter_.contents().sorting());
    EXPECT_EQ(presenter_.currentFolder(), folder(L"\\many\\"));
}

TEST_F(PausesTest, WhatTheUserSelectsMeanwhileEndsTheCommand) {
    fill();
    view_.rowCount = kMany;
    breather_.when = 3;
    breather_.happens = [&] {
        view_.selection = {7};
        presenter_.onRowsSelected(1);
    };
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(breather_.breaths, 3U);
    EXPECT_EQ(view_.selection, std::vector<std::uint32_t>{7});
    EXPECT_EQ(view_.status, L"1 Objects are selected.");
    EXPECT_FALSE(presenter_.isBusy());
    breather_.happens = nullptr;
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(view_.status, L"50000 Objects are selected.");
}

TEST_F(PausesTest, AFolderThatIsSelectedWhileRowsAreIsShown) {
    fill();
    view_.rowCount = kMany;
    breather_.when = 2;
    breather_.happens = [&] { presenter_.onFolderSelected(folder(L"\\few\\")); };
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(breather_.breaths, 2U);
    EXPECT_EQ(presenter_.currentFolder(), folder(L"\\few\\"));
    EXPECT_EQ(view_.address, L"a.zip\\few\\");
}

TEST_F(PausesTest, SelectingIsGivenUpWhenTheWindowGoes) {
    fill();
    view_.rowCount = kMany;
    breather_.when = 2;
    breather_.happens = [&] {
        view_.window = nullptr;
        presenter_.onUnload();
    };
    presenter_.onCommand(mnuEditSelectAll);
    EXPECT_EQ(breather_.breaths, 2U);
    EXPECT_FALSE(presenter_.currentFolder());
}

TEST_F(PausesTest, AFillIsGivenUpWhenTheWindowGoesWhileFoldersAreBuilt) {
    breather_.when = 2;
    breather_.happens = [&] {
        view_.window = nullptr;
        presenter_.onUnload();
    };
    EXPECT_FALSE(presenter_.fill(L"\\"));
    EXPECT_EQ(breather_.breaths, 2U);
    EXPECT_EQ(presenter_.folders().size(), 0U);
    EXPECT_EQ(view_.timesFoldersShown, 0);
}

}  // namespace
}  // namespace tovar::test
