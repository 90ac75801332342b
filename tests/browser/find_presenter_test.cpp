#include "browser/find_presenter.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "browser/fakes/fake_browser_view.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/fakes/fake_file_system.h"

namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;

class FakeFindView final : public FindView {
public:
    bool shown = false, movesEnabled = true, failed = false, running = false;
    int timesEntered = 0;
    std::wstring state = L"as it was";

    void setShown(bool isShown) override { shown = isShown; }
    void enterText() override { ++timesEntered; }
    void enableMoves(bool enabled) override { movesEnabled = enabled; }
    void showState(std::wstring_view text, bool hasFailed) override {
        state = text;
        failed = hasFailed;
    }
    void runSlices(bool isRunning) override { running = isRunning; }
};

class FindPresenterTest : public testing::Test {
protected:
    void fill(const Texts& storedNames, std::wstring_view key = L"\\") {
        driver_.members = FakeDriver(storedNames).members;
        ASSERT_TRUE(browser_.fill(key));
        browserView_.focus = 0;  // as the window has it
    }
    void find(std::wstring_view text) {
        presenter_.onFind();
        presenter_.onTextChanged(text);
    }
    /// The selected item, with the key of its folder before it; empty when no row or more than one is selected.
    [[nodiscard]] std::wstring selected() const {
        if (!browser_.currentFolder() || browserView_.selection.size() != 1) return {};
        return browser_.folders().key(*browser_.currentFolder()) +
               browser_.contents().text(browserView_.selection.front(), 0);
    }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBrowserView browserView_;
    BrowserPresenter browser_{browserView_, {driver_, desktop_, files_, {}}, L"C:\\files\\a.zip"};
    FakeFindView view_;
    FindPresenter presenter_{view_, browser_, driver_.entries()};
};

TEST_F(FindPresenterTest, ShowsTheBarAndEntersItsText) {
    fill({L"a"});
    presenter_.onFind();
    EXPECT_TRUE(view_.shown);
    EXPECT_TRUE(presenter_.isShown());
    EXPECT_EQ(view_.timesEntered, 1);
    EXPECT_FALSE(view_.movesEnabled);
    EXPECT_EQ(view_.state, L"");
    presenter_.onFind();
    EXPECT_EQ(view_.timesEntered, 2);
}

TEST_F(FindPresenterTest, DoesNothingWithoutAnArchive) {
    presenter_.onFind();
    presenter_.onNext();
    EXPECT_FALSE(view_.shown);
    EXPECT_EQ(view_.timesEntered, 0);
}

TEST_F(FindPresenterTest, DoesNothingWhileTheArchiveIsListed) {
    fill({L"x"});
    presenter_.onFind();
    driver_.whileListing = [this] {
        presenter_.onListingGone();
        presenter_.onTextChanged(L"x");
        presenter_.onNext();
        presenter_.onSlice();
        EXPECT_EQ(view_.state, L"");
        EXPECT_FALSE(view_.running);
    };
    fill({L"x"});
    EXPECT_TRUE(browserView_.shownRows.empty());
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\x");
}

TEST_F(FindPresenterTest, FindsWhileTheTextIsTyped) {
    fill({L"bar", L"baz", L"d/bazaar"});
    find(L"b");
    EXPECT_EQ(selected(), L"\\bar");
    EXPECT_EQ(view_.state, L"");
    EXPECT_TRUE(view_.movesEnabled);
    presenter_.onTextChanged(L"ba");
    EXPECT_EQ(selected(), L"\\bar");
    presenter_.onTextChanged(L"baz");
    EXPECT_EQ(selected(), L"\\baz");
    presenter_.onTextChanged(L"baza");
    EXPECT_EQ(selected(), L"\\d\\bazaar");
    EXPECT_EQ(browserView_.selected, browser_.folders().find(L"\\d\\"));
    EXPECT_EQ(browserView_.status, L"1 Objects are selected.");
    EXPECT_EQ(view_.state, L"");
}

TEST_F(FindPresenterTest, StaysInTheFolderWhenTheNextIsThereToo) {
    fill({L"a", L"x1", L"x2"});
    const int shown = browserView_.timesContentsShown;
    find(L"x");
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\x2");
    EXPECT_EQ(browserView_.timesContentsShown, shown);
}

TEST_F(FindPresenterTest, BeginsAtTheCurrentRow) {
    fill({L"x1", L"x2", L"x3"});
    browserView_.focus = 1;
    find(L"x");
    EXPECT_EQ(selected(), L"\\x2");
}

TEST_F(FindPresenterTest, BeginsAgainWhereItBeganForAnotherText) {
    fill({L"x1", L"abd", L"abc", L"ab"});
    browserView_.focus = 1;
    find(L"abc");
    EXPECT_EQ(selected(), L"\\abc");
    presenter_.onTextChanged(L"ab");  // a shorter one
    EXPECT_EQ(selected(), L"\\abd");
    presenter_.onTextChanged(L"abc");
    EXPECT_EQ(selected(), L"\\abc");
    presenter_.onTextChanged(L"b");
    EXPECT_EQ(selected(), L"\\abd");
}

TEST_F(FindPresenterTest, BeginsAgainWhereTheUserWent) {
    fill({L"x1", L"x2", L"x3", L"y"});
    find(L"x");
    EXPECT_EQ(selected(), L"\\x1");
    browserView_.focus = 2;
    presenter_.onTextChanged(L"");
    presenter_.onTextChanged(L"x");
    EXPECT_EQ(selected(), L"\\x3");
    browserView_.focus = 0;
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\x2");
}

TEST_F(FindPresenterTest, BeginsAgainAtTheOneThatWasGoneTo) {
    fill({L"xa", L"b", L"xab", L"xb"});
    find(L"x");
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\xab");
    presenter_.onTextChanged(L"b");
    EXPECT_EQ(selected(), L"\\xab");
}

TEST_F(FindPresenterTest, GoesToTheNextAndThePrevious) {
    fill({L"x1", L"d/x2", L"e/x3"});
    find(L"x");
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\d\\x2");
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\e\\x3");
    EXPECT_EQ(view_.state, L"");
    presenter_.onPrevious();
    EXPECT_EQ(selected(), L"\\d\\x2");
    EXPECT_EQ(view_.state, L"");
}

TEST_F(FindPresenterTest, SaysWhenItGoesRoundTheEnd) {
    fill({L"x1", L"d/x2"});
    find(L"x");
    presenter_.onNext();
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\x1");
    EXPECT_EQ(view_.state, L"Continued from the beginning");
    EXPECT_FALSE(view_.failed);
    presenter_.onPrevious();
    EXPECT_EQ(selected(), L"\\d\\x2");
    EXPECT_EQ(view_.state, L"Continued from the end");
    presenter_.onPrevious();
    EXPECT_EQ(view_.state, L"");
}

TEST_F(FindPresenterTest, SaysWhenThereIsNone) {
    fill({L"a", L"b"});
    find(L"b");
    presenter_.onTextChanged(L"bx");
    EXPECT_EQ(view_.state, L"Not found");
    EXPECT_TRUE(view_.failed);
    EXPECT_EQ(selected(), L"\\b");
    presenter_.onNext();
    EXPECT_EQ(view_.state, L"Not found");
    presenter_.onTextChanged(L"b");
    EXPECT_EQ(view_.state, L"");
    EXPECT_FALSE(view_.failed);
}

TEST_F(FindPresenterTest, FindsTheOnlyOneAgainAndAgain) {
    fill({L"a", L"x"});
    find(L"x");
    EXPECT_EQ(view_.state, L"");
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\x");
    EXPECT_EQ(view_.state, L"Continued from the beginning");
}

TEST_F(FindPresenterTest, LooksForNothingWithoutText) {
    fill({L"a"});
    find(L"x");
    presenter_.onTextChanged(L"");
    EXPECT_EQ(view_.state, L"");
    EXPECT_FALSE(view_.failed);
    EXPECT_FALSE(view_.movesEnabled);
    EXPECT_TRUE(browserView_.shownRows.empty());
}

TEST_F(FindPresenterTest, AsksForATextWhenThereIsNoneYet) {
    fill({L"a"});
    presenter_.onNext();
    EXPECT_TRUE(view_.shown);
    EXPECT_EQ(view_.timesEntered, 1);
    presenter_.onPrevious();
    EXPECT_EQ(view_.timesEntered, 2);
}

TEST_F(FindPresenterTest, GoesOnWithTheLastTextWhenTheBarIsClosed) {
    fill({L"x1", L"x2"});
    find(L"x");
    presenter_.onClose();
    EXPECT_FALSE(view_.shown);
    EXPECT_FALSE(presenter_.isShown());
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\x2");
    EXPECT_TRUE(view_.shown);
    EXPECT_EQ(view_.timesEntered, 1);  // the keyboard stays where it is
}

TEST_F(FindPresenterTest, LeavesTheStateOfAnOldSearchBehind) {
    fill({L"a"});
    find(L"x");
    EXPECT_TRUE(view_.failed);
    presenter_.onClose();
    presenter_.onFind();
    EXPECT_EQ(view_.state, L"");
    EXPECT_FALSE(view_.failed);
    EXPECT_TRUE(view_.movesEnabled);
}

TEST_F(FindPresenterTest, FindsInASortedList) {
    fill({L"a", L"x1", L"x2", L"z"});
    browser_.onHeaderClicked(0);  // z, x2, x1, a
    browserView_.focus = 3;
    find(L"x");
    EXPECT_EQ(browserView_.shownRows, std::vector<std::uint32_t>{2});
    presenter_.onNext();
    EXPECT_EQ(browserView_.shownRows, (std::vector<std::uint32_t>{2, 1}));
    EXPECT_EQ(selected(), L"\\x2");
}

TEST_F(FindPresenterTest, FindsFoldersAndPatterns) {
    fill({L"a/readme.txt", L"b/doc/readme.txt.bak", L"c/notes.txt"});
    find(L"doc");
    EXPECT_EQ(selected(), L"\\b\\doc");
    presenter_.onTextChanged(L"*.txt");
    EXPECT_EQ(selected(), L"\\a\\readme.txt");
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\c\\notes.txt");
}

TEST_F(FindPresenterTest, BeginsInAFolderWithoutRows) {
    fill({L"empty/", L"x"}, L"\\empty\\");
    browserView_.focus.reset();
    find(L"x");
    EXPECT_EQ(selected(), L"\\x");
    EXPECT_EQ(view_.state, L"Continued from the beginning");
}

TEST_F(FindPresenterTest, FindsNothingInAnEmptyArchive) {
    fill({});
    browserView_.focus.reset();
    find(L"*");
    EXPECT_EQ(view_.state, L"Not found");
}

TEST_F(FindPresenterTest, StartsAnewWhenTheArchiveIsListedAgain) {
    fill({L"a", L"b", L"x"});
    find(L"x");
    presenter_.onTextChanged(L"xy");
    presenter_.onListingGone();
    EXPECT_TRUE(presenter_.isShown());
    EXPECT_EQ(view_.state, L"");
    fill({L"xy"});
    presenter_.onNext();
    EXPECT_EQ(selected(), L"\\xy");
}

/// An archive of 200,000 members; a slice looks at 65,536 of them.
class SlicedFindTest : public FindPresenterTest {
protected:
    SlicedFindTest() {
        driver_.members.resize(200'000);
        for (Member& each : driver_.members) each.storedName = L"a";
        driver_.members.back().storedName = L"last";
        browser_.fill(L"\\");
        browserView_.focus = 0;
    }
};

TEST_F(SlicedFindTest, SearchesASliceAtATime) {
    find(L"last");
    EXPECT_EQ(view_.state, L"Searching...");
    EXPECT_TRUE(view_.running);
    int slices = 1;
    for (; view_.running && slices < 10; ++slices) {
        EXPECT_EQ(view_.state, L"Searching...");
        EXPECT_EQ(selected(), L"");
        presenter_.onSlice();
    }
    EXPECT_EQ(slices, 4);
    EXPECT_EQ(selected(), L"\\last");
    EXPECT_EQ(view_.state, L"");
}

TEST_F(SlicedFindTest, GivesUpAfterTheLastSlice) {
    find(L"nothing");
    for (int slices = 1; slices < 4; ++slices) presenter_.onSlice();
    EXPECT_EQ(view_.state, L"Not found");
    EXPECT_FALSE(view_.running);
}

TEST_F(SlicedFindTest, EndsTheSearchForATextThatChanges) {
    find(L"last");
    presenter_.onTextChanged(L"");
    EXPECT_FALSE(view_.running);
    EXPECT_EQ(view_.state, L"");
    for (int slices = 0; slices < 5; ++slices) presenter_.onSlice();
    EXPECT_EQ(selected(), L"");
    presenter_.onTextChanged(L"a");
    EXPECT_EQ(browserView_.shownRows, std::vector<std::uint32_t>{0});
}

TEST_F(SlicedFindTest, EndsTheSearchWithTheBar) {
    find(L"last");
    presenter_.onClose();
    EXPECT_FALSE(view_.running);
    for (int slices = 0; slices < 5; ++slices) presenter_.onSlice();
    EXPECT_TRUE(browserView_.shownRows.empty());
}

TEST_F(SlicedFindTest, EndsTheSearchWithTheListing) {
    find(L"last");
    presenter_.onListingGone();
    EXPECT_FALSE(view_.running);
    EXPECT_EQ(view_.state, L"");
    for (int slices = 0; slices < 5; ++slices) presenter_.onSlice();
    EXPECT_TRUE(browserView_.shownRows.empty());
}

TEST_F(SlicedFindTest, StopsATimeThatNobodyNeeds) {
    view_.running = true;
    presenter_.onSlice();
    EXPECT_FALSE(view_.running);
}

/// Stops for breath whenever it may, and does then what a test wants.
class FakeBreather final : public Breather {
public:
    std::function<void()> whileBreathing;

    void begin() override {}
    [[nodiscard]] bool breathe() override {
        if (whileBreathing) std::exchange(whileBreathing, nullptr)();
        return true;
    }
};

/// A sorted list, and a folder of 30,000 members that takes long to put in order.
class PausedFindTest : public testing::Test {
protected:
    PausedFindTest() {
        driver_.members = FakeDriver({L"first", L"other"}).members;
        for (int number = 10'000; number < 40'000; ++number) {
            driver_.members.push_back({.storedName = L"many/x" + std::to_wstring(number)});
        }
        browser_.fill(L"\\");
        browserView_.focus = 0;
        browser_.onHeaderClicked(0);  // other, first, many
        presenter_.onFind();
    }
    [[nodiscard]] std::wstring selected() const {
        return browserView_.selection.size() == 1 ? browser_.contents().text(browserView_.selection.front(), 0) : L"";
    }

    FakeFileSystem files_;
    FakeFileTypes desktop_;
    FakeDriver driver_;
    FakeBreather breather_;
    FakeBrowserView browserView_;
    BrowserPresenter browser_{browserView_, {driver_, desktop_, files_, {}, nullptr, &breather_}, L"C:\\a.zip"};
    FakeFindView view_;
    FindPresenter presenter_{view_, browser_, driver_.entries()};
};

TEST_F(PausedFindTest, ShowsALargeFolderOutsideOfTheTextsOwnMessage) {
    presenter_.onTextChanged(L"x20000");
    EXPECT_EQ(view_.state, L"Searching...");
    EXPECT_TRUE(view_.running);
    EXPECT_EQ(browser_.currentFolder(), FolderModel::kRoot);
    presenter_.onSlice();
    EXPECT_EQ(selected(), L"x20000");
    EXPECT_EQ(view_.state, L"");
    EXPECT_FALSE(view_.running);
    // The folder is there now.
    presenter_.onTextChanged(L"x20001");
    EXPECT_EQ(selected(), L"x20001");
}

TEST_F(PausedFindTest, LooksForATextThatIsTypedWhileRowsAreOrdered) {
    presenter_.onTextChanged(L"x2");
    breather_.whileBreathing = [this] {
        presenter_.onTextChanged(L"x2000");
        presenter_.onSlice();  // waits
        presenter_.onTextChanged(L"x20001");
        presenter_.onNext();
        EXPECT_EQ(view_.state, L"Searching...");
    };
    presenter_.onSlice();
    ASSERT_FALSE(breather_.whileBreathing);
    EXPECT_EQ(selected(), L"x20000");
    EXPECT_EQ(view_.state, L"Searching...");
    ASSERT_TRUE(view_.running);
    presenter_.onSlice();
    EXPECT_EQ(selected(), L"x20001");
    EXPECT_EQ(view_.state, L"");
    EXPECT_FALSE(view_.running);
}

TEST_F(PausedFindTest, LeavesTheUserWhoGoesElsewhereMeanwhile) {
    presenter_.onTextChanged(L"x2");
    breather_.whileBreathing = [this] { browser_.onFolderSelected(FolderModel::kRoot); };
    presenter_.onSlice();
    ASSERT_FALSE(breather_.whileBreathing);
    EXPECT_EQ(browser_.currentFolder(), FolderModel::kRoot);
    EXPECT_EQ(view_.state, L"");
    EXPECT_FALSE(view_.failed);
    EXPECT_TRUE(browserView_.shownRows.empty());
}

TEST_F(PausedFindTest, EndsWithTheBarThatIsClosedMeanwhile) {
    presenter_.onTextChanged(L"x2");
    breather_.whileBreathing = [this] {
        presenter_.onTextChanged(L"x3");
        presenter_.onClose();
    };
    presenter_.onSlice();
    ASSERT_FALSE(breather_.whileBreathing);
    EXPECT_FALSE(view_.shown);
    EXPECT_FALSE(view_.running);
}

}  // namespace
}  // namespace tovar::test
