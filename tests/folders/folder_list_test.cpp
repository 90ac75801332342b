#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "shell/folder_list_presenter.h"

namespace tovar::test {
namespace {

using Rows = std::vector<std::uint32_t>;

class FakeContents final : public FolderContents {
public:
    std::map<std::wstring, std::vector<FolderFile>> folders;
    std::wstring watched;
    bool changed = false;

    std::optional<Files> look(const std::wstring& path) override {
        watched = path;
        late.reset();
        if (slow) return std::nullopt;
        return filesIn(path);
    }
    std::optional<Files> takeLate() override { return std::exchange(late, std::nullopt); }
    void answer() { late = filesIn(watched); }
    [[nodiscard]] Files filesIn(const std::wstring& path) const {
        const auto found = folders.find(path);
        return found == folders.end() ? Files() : found->second;
    }
    bool slow = false;  ///< answers come late
    std::optional<Files> late;
    bool takeChange() override { return std::exchange(changed, false); }
};

class FakeListDisplay final : public FolderListDisplay {
public:
    std::uint32_t count = 99;
    Rows selected;
    std::vector<std::wstring> told, opened;

    void showRows(std::uint32_t rows) override {
        count = rows;
        selected.clear();
    }
    void selectRows(const Rows& rows) override { selected = rows; }
    [[nodiscard]] Rows selectedRows() const override { return selected; }
    void namesSelected(const std::wstring& names) override { told.push_back(names); }
    void folderOpened(const std::wstring& path) override { opened.push_back(path); }
};

class FolderList : public testing::Test {
protected:
    FolderList() {
        contents.folders[LR"(C:\a)"] = {{L"Inside", true}, {L"one.txt"}, {L"Two.txt"}};
        contents.folders[LR"(C:\)"] = {{L"a", true}};
    }
    void select(const Rows& rows) {
        display.selected = rows;
        list.onSelectionChanged();
    }

    FakeContents contents;
    FakeListDisplay display;
    FolderListPresenter list{contents, display};
};

TEST_F(FolderList, ShowsWhatIsInsideAFolder) {
    list.showFolder(LR"(C:\a)");
    EXPECT_EQ(display.count, 3U);
    EXPECT_EQ(list.files()[2].name, L"Two.txt");
    EXPECT_EQ(list.folder(), LR"(C:\a)");
    EXPECT_EQ(contents.watched, LR"(C:\a)");
    EXPECT_TRUE(display.told.empty());
}

TEST_F(FolderList, ShowsNothingWithoutAFolder) {
    list.showFolder(LR"(C:\a)");
    list.showFolder(std::nullopt);
    EXPECT_EQ(display.count, 0U);
    EXPECT_EQ(contents.watched, L"");
    list.refresh();
    EXPECT_EQ(display.count, 0U);
}

TEST_F(FolderList, ShowsNothingOfAFolderThatCannotBeListed) {
    list.showFolder(LR"(C:\missing)");
    EXPECT_EQ(display.count, 0U);
}

TEST_F(FolderList, TellsTheSelectedNames) {
    list.showFolder(LR"(C:\a)");
    select({1});
    select({0, 1, 2});
    select({0, 1, 2});
    select({});
    EXPECT_EQ(display.told, (std::vector<std::wstring>{L"one.txt", L"Inside\r\none.txt\r\nTwo.txt", L""}));
}

TEST_F(FolderList, TellsThatNothingIsSelectedInAnotherFolder) {
    list.showFolder(LR"(C:\a)");
    select({1});
    list.showFolder(LR"(C:\)");
    EXPECT_EQ(display.told, (std::vector<std::wstring>{L"one.txt", L""}));
}

TEST_F(FolderList, TakesNoRowsThatAreNotThere) {
    list.showFolder(LR"(C:\a)");
    select({2, 3, 4000});
    EXPECT_EQ(display.told, std::vector<std::wstring>{L"Two.txt"});
    list.onOpened(3);
    EXPECT_TRUE(display.opened.empty());
}

TEST_F(FolderList, OpensFoldersOnly) {
    list.showFolder(LR"(C:\a)");
    list.onOpened(1);
    list.onOpened(0);
    list.showFolder(LR"(C:\)");
    list.onOpened(0);
    EXPECT_EQ(display.opened, (std::vector<std::wstring>{LR"(C:\a\Inside)", LR"(C:\a)"}));
}

TEST_F(FolderList, FindsNamesByTheirBeginning) {
    list.showFolder(LR"(C:\a)");
    EXPECT_EQ(list.findName(L"tw", 0), 2U);
    EXPECT_EQ(list.findName(L"ONE", 0), 1U);
    EXPECT_EQ(list.findName(L"i", 1), 0U);
    EXPECT_EQ(list.findName(L"one.txt and more", 0), std::nullopt);
    list.showFolder(std::nullopt);
    EXPECT_EQ(list.findName(L"a", 0), std::nullopt);
}

TEST_F(FolderList, FollowsTheDisk) {
    list.showFolder(LR"(C:\a)");
    select({1, 2});
    contents.folders[LR"(C:\a)"] = {{L"Inside", true}, {L"New", true}, {L"Two.txt"}};
    list.onTick();
    EXPECT_EQ(display.count, 3U);
    contents.changed = true;
    list.onTick();
    EXPECT_EQ(list.files()[1].name, L"New");
    EXPECT_EQ(display.selected, Rows{2});
    EXPECT_EQ(display.told, (std::vector<std::wstring>{L"one.txt\r\nTwo.txt", L"Two.txt"}));
}

TEST_F(FolderList, IsEmptyOnceItsFolderIsGone) {
    list.showFolder(LR"(C:\a)");
    select({0});
    contents.folders.clear();
    contents.changed = true;
    list.onTick();
    EXPECT_EQ(display.count, 0U);
    EXPECT_EQ(display.told.back(), L"");
}

TEST_F(FolderList, ShowsThatItReadsWhereTheAnswerIsLate) {
    contents.slow = true;
    list.showFolder(LR"(C:\a)");
    EXPECT_TRUE(list.isReading());
    EXPECT_EQ(display.count, 1U);
    select({0});  // the row that tells so is no name
    EXPECT_TRUE(display.told.empty());
    list.onOpened(0);
    EXPECT_TRUE(display.opened.empty());
    list.onTick();
    EXPECT_TRUE(list.isReading());
    contents.answer();
    list.onTick();
    EXPECT_FALSE(list.isReading());
    EXPECT_EQ(display.count, 3U);
}

TEST_F(FolderList, ShowsAnEmptyFolderAsEmptyWhenTheAnswerIsThere) {
    contents.slow = true;
    list.showFolder(LR"(C:\none)");
    contents.answer();
    list.onTick();
    EXPECT_EQ(display.count, 0U);
    EXPECT_FALSE(list.isReading());
}

TEST_F(FolderList, GoesToAnotherFolderWithoutTheAnswer) {
    contents.slow = true;
    list.showFolder(LR"(C:\a)");
    contents.slow = false;
    list.showFolder(LR"(C:\)");
    EXPECT_FALSE(list.isReading());
    EXPECT_EQ(display.count, 1U);
    EXPECT_EQ(list.files()[0].name, L"a");
}

TEST_F(FolderList, KeepsShowingWhatItHasWhileItReadsAgain) {
    list.showFolder(LR"(C:\a)");
    select({1});
    contents.slow = true;
    contents.changed = true;
    list.onTick();
    EXPECT_FALSE(list.isReading());
    EXPECT_EQ(list.files().size(), 3U);
    contents.folders[LR"(C:\a)"] = {{L"new.txt"}, {L"one.txt"}};
    contents.changed = true;  // meanwhile
    contents.answer();
    list.onTick();
    EXPECT_EQ(list.files().size(), 2U);
    EXPECT_EQ(display.selected, Rows{1});
    EXPECT_EQ(display.told, (std::vector<std::wstring>{L"one.txt"}));
    EXPECT_FALSE(contents.late);  // asked anew, because of the second change
    contents.folders[LR"(C:\a)"] = {{L"one.txt"}};
    contents.answer();
    list.onTick();
    EXPECT_EQ(list.files().size(), 1U);
}

}  // namespace
}  // namespace tovar::test
