#include "browser/contents_list.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"

namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;

// Positions in the list that shows all columns.
enum Position : std::size_t { kName, kOriginal, kPacked, kRatio, kFileType, kModified, kAttr, kType, kCrc };

class ContentsListTest : public testing::Test {
protected:
    void show(const std::vector<Member>& members, std::wstring_view folder = L"\\") {
        driver_.members = members;
        driver_.SetArcFile(L"a.zip");
        folders_.build(L"a.zip", driver_.entries());
        list_.show(folders_.find(folder).value());
    }
    [[nodiscard]] Texts column(std::size_t position) const {
        Texts texts;
        for (std::uint32_t row = 0; row < list_.rowCount(); ++row) texts.push_back(list_.text(row, position));
        return texts;
    }

    FakeDriver driver_;
    FakeFileTypes desktop_;
    FolderModel folders_;
    ContentsList list_{driver_, folders_, desktop_, {}};
};

TEST_F(ContentsListTest, ShowsFoldersAndThenFilesInTheOrderOfTheArchive) {
    show({{L"zebra.txt"}, {L"b/1"}, {L"apple.txt"}, {L"a/c/2"}, {L"b/3"}});
    EXPECT_EQ(column(kName), (Texts{L"b", L"a", L"zebra.txt", L"apple.txt"}));
    EXPECT_EQ(list_.folderAt(0), folders_.find(L"\\b\\"));
    EXPECT_FALSE(list_.entryAt(0));
    EXPECT_FALSE(list_.folderAt(2));
    EXPECT_EQ(list_.entryAt(2), 0U);
    EXPECT_EQ(list_.entryAt(3), 2U);
}

TEST_F(ContentsListTest, ShowsOnlyWhatLiesDirectlyInTheFolder) {
    show({{L"top.txt"}, {L"a/one.txt"}, {L"a/b/two.txt"}, {L"a/b/c/three.txt"}}, L"\\a\\");
    EXPECT_EQ(column(kName), (Texts{L"b", L"one.txt"}));
}

TEST_F(ContentsListTest, KnowsTheRowOfEveryItem) {
    show({{L"b/1"}, {L"z"}, {L"a/2"}, {L"c"}});
    for (const std::uint32_t item : {0U, 1U, 2U, 3U}) {
        EXPECT_EQ(list_.rowOf(item), item);
        EXPECT_EQ(list_.itemAt(item), item);
    }
    EXPECT_EQ(list_.rowOf(4), std::nullopt);
    EXPECT_THROW(static_cast<void>(list_.itemAt(4)), std::out_of_range);
}

TEST_F(ContentsListTest, KnowsTheRowOfEveryItemInASortedList) {
    show({{L"a/1"}, {L"z"}, {L"b/2"}, {L"c"}, {L"d"}});
    list_.sortBy(kName);
    ASSERT_EQ(column(kName), (Texts{L"z", L"d", L"c", L"b", L"a"}));
    // The items are a, b, z, c and d.
    constexpr std::uint32_t kRows[] = {4, 3, 0, 2, 1};
    for (std::uint32_t item = 0; item < 5; ++item) {
        EXPECT_EQ(list_.rowOf(item), kRows[item]);
        EXPECT_EQ(list_.itemAt(kRows[item]), item);
    }
    EXPECT_EQ(list_.rowOf(5), std::nullopt);
}

TEST_F(ContentsListTest, JustifiesSizesToTenCharacters) {
    show({{.storedName = L"million", .original = 1234567, .packed = 999},
          {.storedName = L"empty", .original = 0, .packed = 0},
          {.storedName = L"exact", .original = 99999999, .packed = 1000}});
    EXPECT_EQ(column(kOriginal), (Texts{L" 1,234,567", L"          ", L"99,999,999"}));
    EXPECT_EQ(column(kPacked), (Texts{L"       999", L"          ", L"     1,000"}));
}

TEST_F(ContentsListTest, KeepsTheLastTenCharactersOfALongerSize) {
    show({{.storedName = L"huge", .original = 1234567890123}});
    EXPECT_EQ(list_.text(0, kOriginal), L"67,890,123");
}

TEST_F(ContentsListTest, GroupsDigitsAsTheSystemDoes) {
    RegionalSettings regional;
    regional.groupSeparator = L".";
    show({{.storedName = L"million", .original = 1234567}});
    ContentsList list(driver_, folders_, desktop_, regional);
    list.show(FolderModel::kRoot);
    EXPECT_EQ(list.text(0, kOriginal), L" 1.234.567");
}

TEST_F(ContentsListTest, JustifiesRatiosToSixCharacters) {
    show({{.storedName = L"a", .ratio = 425},
          {.storedName = L"b", .ratio = 1000},
          {.storedName = L"c", .ratio = 0},
          {.storedName = L"d", .ratio = 32767}});
    EXPECT_EQ(column(kRatio), (Texts{L" 42.5%", L"100.0%", L"  0.0%", L"276.7%"}));
}

TEST_F(ContentsListTest, WritesTheTimeOfChangeInTheShortForms) {
    show({{.storedName = L"a", .date = 0x2AB1, .time = 0x8BDD}, {.storedName = L"b", .date = 0x0021, .time = 0x0000}});
    EXPECT_EQ(column(kModified), (Texts{L"5/17/2001 17:30", L"1/1/1980 00:00"}));
}

TEST_F(ContentsListTest, WritesTheTimeOfChangeAsTheRegionWants) {
    RegionalSettings german;
    german.shortDate = L"dd.MM.yyyy";
    german.dateSeparator = L".";
    show({{L"a"}});
    ContentsList list(driver_, folders_, desktop_, german);
    list.show(FolderModel::kRoot);
    EXPECT_EQ(list.text(0, kModified), L"17.05.2001 17:30");
}

TEST_F(ContentsListTest, ShowsWhatIsNoDateOrTimeAsItIsStored) {
    show({{.storedName = L"a", .date = 0x0000, .time = 0x8BDD}, {.storedName = L"b", .date = 0x2AB1, .time = 0xC000}});
    EXPECT_EQ(column(kModified), (Texts{L"80-00-00 17:30", L"5/17/2001 24:00:00"}));
}

TEST_F(ContentsListTest, TakesTypesAndIconsFromTheDesktop) {
    show({{L"d/x"}, {L"read.me.txt"}, {L"core"}});
    EXPECT_EQ(column(kFileType), (Texts{L"File Folder", L"Text Document", L"File"}));
    EXPECT_EQ(list_.icon(0), 1);
    EXPECT_EQ(list_.icon(1), 3);
    EXPECT_EQ(list_.icon(2), 4);
}

TEST_F(ContentsListTest, TakesTheOtherTextsAsTheyStand) {
    show({{.storedName = L"a", .crc = 0x1A2B3C4D, .attributes = L"-rhs", .type = L"Store"}});
    EXPECT_EQ(list_.text(0, kAttr), L"-rhs");
    EXPECT_EQ(list_.text(0, kType), L"Store");
    EXPECT_EQ(list_.text(0, kCrc), L"3C4D");
}

TEST_F(ContentsListTest, ShowsOfAFolderOnlyNameAndType) {
    show({{L"d/x"}});
    EXPECT_EQ(list_.text(0, kName), L"d");
    EXPECT_EQ(list_.text(0, kFileType), L"File Folder");
    for (const auto position : {kOriginal, kPacked, kRatio, kModified, kAttr, kType, kCrc}) {
        EXPECT_EQ(list_.text(0, position), L"");
    }
}

TEST_F(ContentsListTest, MovesTheCellsOfLaterColumnsUpWhenAColumnIsMissing) {
    driver_.columns = {.attributes = false, .packed = false, .ratio = false};
    ContentsList list(driver_, folders_, desktop_, {});
    show({{.storedName = L"a.txt", .original = 5, .crc = 0x12, .type = L"ustar"}});
    list.show(FolderModel::kRoot);
    EXPECT_EQ(list.text(0, 2), L"Text Document");
    EXPECT_EQ(list.text(0, 4), L"ustar");
    EXPECT_EQ(list.text(0, 5), L"0012");
    EXPECT_THROW((void)list.text(0, 6), std::out_of_range);
}

TEST_F(ContentsListTest, RefusesRowsThatAreNotThere) {
    show({{L"a"}});
    EXPECT_THROW((void)list_.text(1, kName), std::out_of_range);
    EXPECT_THROW((void)list_.icon(1), std::out_of_range);
    EXPECT_THROW((void)list_.folderAt(1), std::out_of_range);
    list_.clear();
    EXPECT_EQ(list_.rowCount(), 0U);
    EXPECT_THROW((void)list_.entryAt(0), std::out_of_range);
}

TEST_F(ContentsListTest, AsksTheDesktopForNothingBeforeARowIsShown) {
    show({{L"a.txt"}, {L"b/c"}});
    EXPECT_TRUE(desktop_.asked.empty());
    EXPECT_EQ(desktop_.askedForFolder, 0);
}

TEST_F(ContentsListTest, SortsDescendingFirstAndTurnsRoundWithEveryClick) {
    show({{L"m.txt"}, {L"y/1"}, {L"Z.txt"}, {L"x/1"}, {L"a.txt"}});
    EXPECT_FALSE(list_.sorting());
    list_.sortBy(kName);
    EXPECT_EQ(column(kName), (Texts{L"Z.txt", L"m.txt", L"a.txt", L"y", L"x"}));
    EXPECT_TRUE(list_.sorting()->descending);
    list_.sortBy(kName);
    EXPECT_EQ(column(kName), (Texts{L"x", L"y", L"a.txt", L"m.txt", L"Z.txt"}));
    EXPECT_FALSE(list_.sorting()->descending);
    list_.sortBy(kOriginal);
    EXPECT_TRUE(list_.sorting()->descending);
    EXPECT_EQ(list_.sorting()->column, kOriginal);
}

TEST_F(ContentsListTest, SortsSizesAndRatiosLikeNumbers) {
    show({{.storedName = L"a", .original = 900, .ratio = 95},
          {.storedName = L"b", .original = 1000, .ratio = 1000},
          {.storedName = L"c", .original = 0, .ratio = 425},
          {.storedName = L"d", .original = 20, .ratio = 0}});
    list_.sortBy(kOriginal);
    EXPECT_EQ(column(kName), (Texts{L"b", L"a", L"d", L"c"}));
    list_.sortBy(kRatio);
    EXPECT_EQ(column(kName), (Texts{L"d", L"a", L"c", L"b"}));
}

TEST_F(ContentsListTest, SortsDatesByTheirText) {
    show({{.storedName = L"a", .date = 0x2AB1}, {.storedName = L"b", .date = 0x2B51}});  // 5/17/2001, 10/17/2001
    list_.sortBy(kModified);
    EXPECT_EQ(column(kName), (Texts{L"a", L"b"}));
}

TEST_F(ContentsListTest, KeepsEqualRowsInTheOrderOfTheArchive) {
    show({{L"c"}, {L"a"}, {L"b"}});
    list_.sortBy(kType);
    EXPECT_EQ(column(kName), (Texts{L"c", L"a", L"b"}));
    list_.sortBy(kType);
    EXPECT_EQ(column(kName), (Texts{L"c", L"a", L"b"}));
}

TEST_F(ContentsListTest, TellsWhereEachRowWent) {
    show({{L"b"}, {L"c"}, {L"a"}});
    EXPECT_EQ(list_.sortBy(kName), (std::vector<std::uint32_t>{1, 0, 2}));  // now c, b, a
    EXPECT_EQ(list_.sortBy(kName), (std::vector<std::uint32_t>{2, 1, 0}));  // now a, b, c
    EXPECT_TRUE(list_.sortBy(9).empty());
    EXPECT_EQ(list_.sorting()->column, kName);
}

TEST_F(ContentsListTest, KeepsTheOrderForTheNextFolder) {
    show({{L"d/a"}, {L"d/c"}, {L"d/b"}});
    list_.sortBy(kName);
    list_.show(folders_.find(L"\\d\\").value());
    EXPECT_EQ(column(kName), (Texts{L"c", L"b", L"a"}));
    list_.sortBy(kName);
    EXPECT_EQ(column(kName), (Texts{L"a", L"b", L"c"}));
}

TEST_F(ContentsListTest, FindsNamesByTheirBeginning) {
    show({{L"alpha/1"}, {L"beta.txt"}, {L"Alphabet"}, {L"gamma"}});
    EXPECT_EQ(list_.findName(L"al", 0), 0U);
    EXPECT_EQ(list_.findName(L"AL", 1), 2U);
    EXPECT_EQ(list_.findName(L"beta", 3), 1U);
    EXPECT_FALSE(list_.findName(L"delta", 0));
    list_.clear();
    EXPECT_FALSE(list_.findName(L"a", 0));
}

}  // namespace
}  // namespace tovar::test
