#include "browser/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "browser/contents_list.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"
#include "shell/letter_case.h"

namespace tovar::test {
namespace {

enum Position : std::size_t { kName, kOriginal, kPacked, kRatio, kFileType, kModified, kAttr, kType, kCrc };
constexpr std::size_t kFolders = 3;

/// Members whose cells differ in all the ways that an order has to tell apart.
class RandomMembers {
public:
    std::vector<Member> make(std::size_t count) {
        std::vector<Member> members{{L"zeta/1"}, {L"Alpha/1"}, {L"beta/1"}};
        while (members.size() < count + kFolders) {
            members.push_back({.storedName = name(),
                               .original = size(),
                               .packed = size(),
                               .ratio = static_cast<std::int16_t>(below(65536)),
                               .date = static_cast<std::uint16_t>(below(65536)),
                               .time = static_cast<std::uint16_t>(below(65536)),
                               .crc = static_cast<std::uint32_t>(random_()),
                               .attributes = pick({L"a--w", L"A--W", L"d", L"", L"-rhs"}),
                               .type = pick({L"Deflate", L"deflate", L"Store", L"-lh5-", L"\u00C4", L"\u00E4"})});
        }
        return members;
    }

private:
    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }

    std::wstring pick(const std::vector<std::wstring>& choices) { return choices[below(choices.size())]; }

    std::uint64_t size() {
        std::uint64_t limit = 10;
        for (auto digits = below(19); digits > 0; --digits) limit *= 10;
        return below(limit);
    }

    std::wstring name() {
        std::wstring name =
            pick({L"", L"", L"same beginning of many names ", L"SAME beginning of many names ", L"a", L"A"});
        for (auto length = 1 + below(12); length > 0; --length) {
            name += pick({L"a", L"A", L"b", L"B", L"0", L"9", L" ", L"\u00C4", L"\u00E4", L"\u05D0", L"\u0301",
                          L"\uFFFD", L"\U00010400", L"\U00010428", std::wstring(1, L'\0')});
        }
        return name + pick({L"", L".txt", L".TXT", L".bin"});
    }

    std::mt19937_64 random_{20010517};
};

/// A desktop whose type names stand in another order than the extensions.
class ManyFileTypes final : public FileTypes {
public:
    [[nodiscard]] FileType ofFile(std::wstring_view fileName) override {
        if (fileName.ends_with(L".txt") || fileName.ends_with(L".TXT")) return {1, L"binary"};
        return {2, fileName.ends_with(L".bin") ? L"Text" : L"BINARY"};
    }
    [[nodiscard]] FileType ofFolder() override { return {0, L"Folder"}; }
    [[nodiscard]] int openFolderIcon() override { return 0; }
};

class RowOrderTest : public testing::Test {
protected:
    void list(const RegionalSettings& regional, std::size_t count = 1500) {
        driver_.members = RandomMembers().make(count);
        listMembers(regional);
    }
    void listMembers(const RegionalSettings& regional) {
        driver_.regional = regional;
        driver_.SetArcFile(L"a.zip");
        folders_.build(L"a.zip", driver_.entries());
        list_ = std::make_unique<ContentsList>(driver_, folders_, desktop_, regional);
        list_->show(FolderModel::kRoot);
    }

    /// What rows show, as numbers that do not change when rows move.
    [[nodiscard]] std::vector<std::uint32_t> shown() const {
        std::vector<std::uint32_t> shown;
        for (std::uint32_t row = 0; row < list_->rowCount(); ++row) {
            const auto folder = list_->folderAt(row);
            shown.push_back(folder ? *folder : 1'000'000 + list_->entryAt(row).value());
        }
        return shown;
    }

    /// Sorts the rows as they stand in the archive's order by `isLess`, folders as one block.
    template <class IsLess>
    [[nodiscard]] std::vector<std::uint32_t> sorted(bool descending, const IsLess& isLess) const {
        std::vector<std::uint32_t> rows(list_->rowCount());
        std::iota(rows.begin(), rows.end(), 0);
        const auto firstFile = rows.begin() + kFolders;
        const auto isBefore = [&](std::uint32_t left, std::uint32_t right) {
            return descending ? isLess(right, left) : isLess(left, right);
        };
        std::stable_sort(rows.begin(), firstFile, isBefore);
        std::stable_sort(firstFile, rows.end(), isBefore);
        if (descending) std::rotate(rows.begin(), firstFile, rows.end());
        const auto unsorted = shown();
        for (std::uint32_t& row : rows) row = unsorted[row];
        return rows;
    }

    void expectOrderOfTexts(std::size_t column) {
        list_ = std::make_unique<ContentsList>(driver_, folders_, desktop_, driver_.regional);
        list_->show(FolderModel::kRoot);
        std::vector<std::wstring> texts;
        for (std::uint32_t row = 0; row < list_->rowCount(); ++row) texts.push_back(foldCase(list_->text(row, column)));
        const auto isLess = [&](std::uint32_t left, std::uint32_t right) { return texts[left] < texts[right]; };
        const auto descending = sorted(true, isLess);
        const auto ascending = sorted(false, isLess);
        list_->sortBy(column);
        EXPECT_EQ(shown(), descending) << "column " << column;
        list_->sortBy(column);
        EXPECT_EQ(shown(), ascending) << "column " << column;
    }

    template <class ValueOf>
    void expectOrderOfValues(std::size_t column, const ValueOf& valueOf) {
        list_ = std::make_unique<ContentsList>(driver_, folders_, desktop_, driver_.regional);
        list_->show(FolderModel::kRoot);
        list_->setExact(true);
        const auto isLess = [&](std::uint32_t left, std::uint32_t right) {
            if (left < kFolders || right < kFolders) return false;
            return valueOf(driver_.members[left]) < valueOf(driver_.members[right]);
        };
        const auto descending = sorted(true, isLess);
        const auto ascending = sorted(false, isLess);
        list_->sortBy(column);
        EXPECT_EQ(shown(), descending) << "column " << column;
        list_->sortBy(column);
        EXPECT_EQ(shown(), ascending) << "column " << column;
    }

    FakeDriver driver_;
    ManyFileTypes desktop_;
    FolderModel folders_;
    std::unique_ptr<ContentsList> list_;
};

TEST_F(RowOrderTest, IsThatOfTheTextsInEveryColumn) {
    list({}, 4000);
    for (const auto column : {kName, kOriginal, kPacked, kRatio, kFileType, kModified, kAttr, kType, kCrc}) {
        expectOrderOfTexts(column);
    }
}

// Names that fit into 8 bits a character are put in order more of them at a time, as long as all in a folder do.
TEST_F(RowOrderTest, OfNamesWithoutRareCharactersIsThatOfTheTexts) {
    driver_.members = RandomMembers().make(12'000);
    std::erase_if(driver_.members, [](const Member& member) {
        return std::ranges::any_of(member.storedName,
                                   [](wchar_t each) { return static_cast<std::uint32_t>(each) > 0xFF; });
    });
    ASSERT_GT(driver_.members.size(), 1000U);
    driver_.members.push_back({L"same beginning of many names \u00FF"});
    listMembers({});
    expectOrderOfTexts(kName);
    driver_.members.push_back({L"same beginning of many names \u0100"});
    listMembers({});
    expectOrderOfTexts(kName);
}

TEST_F(RowOrderTest, OfSizesIsThatOfTheTextsForEveryWayToGroupDigits) {
    RegionalSettings regional;
    for (const wchar_t* separator : {L",", L".", L"", L" ", L"\u00A0", L"'", L"ab", L"  ", L" , ", L"7"}) {
        for (const wchar_t* grouping : {L"3;0", L"3;2;0", L"4;0", L"3", L"", L"1;0", L"9;0"}) {
            SCOPED_TRACE(testing::Message() << "separator " << testing::PrintToString(std::wstring(separator))
                                            << ", grouping " << testing::PrintToString(std::wstring(grouping)));
            regional.groupSeparator = separator;
            regional.grouping = grouping;
            list(regional, 400);
            expectOrderOfTexts(kOriginal);
        }
    }
}

TEST_F(RowOrderTest, OfRatiosIsThatOfTheTextsForEveryDecimalSeparator) {
    RegionalSettings regional;
    for (const wchar_t* separator : {L",", L"", L"::"}) {
        regional.decimalSeparator = separator;
        list(regional, 600);
        expectOrderOfTexts(kRatio);
    }
}

TEST_F(RowOrderTest, OfDatesIsThatOfTheTextsForEveryPicture) {
    RegionalSettings regional;
    regional.shortWeekdays = {L"Mo", L"Mo 1", L"mo", L"Mo 17", L"A", L"", L"Mo 1 "};  // some begin like others
    for (const wchar_t* picture : {L"M/d/yyyy", L"dd.MM.yy", L"yyyy-MM-dd", L"yyyy/M/d", L"d. M. yyyy", L"M", L"",
                                   L"MMMM d", L"ddd", L"d ddd"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(picture)));
        regional.shortDate = picture;
        list(regional, 800);
        expectOrderOfTexts(kModified);
    }
}

TEST_F(RowOrderTest, OfExactDetailsIsThatOfTheirValues) {
    list({}, 4000);
    expectOrderOfValues(kOriginal, [](const Member& member) { return member.original; });
    expectOrderOfValues(kPacked, [](const Member& member) { return member.packed; });
    expectOrderOfValues(kRatio, [](const Member& member) { return member.ratio; });
    expectOrderOfValues(kCrc, [](const Member& member) { return member.crc; });
    expectOrderOfValues(kModified, [](const Member& member) -> std::int64_t {
        const int month = member.date >> 5 & 15, day = member.date & 31, year = 1980 + (member.date >> 9);
        const int days[] = {0, 31, year % 4 == 0 && year != 2100 ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        if (month < 1 || month > 12 || day < 1 || day > days[month]) return -1;
        const int hour = member.time >> 11, minute = member.time >> 5 & 63, step = member.time & 31;
        const bool isTime = hour < 24 && minute < 60 && step < 30;
        return member.date * 100'000LL + (isTime ? 1 + hour * 3600 + minute * 60 + step * 2 : 0);
    });
}

TEST_F(RowOrderTest, OfTheOtherExactColumnsIsThatOfTheTexts) {
    list({});
    for (const auto column : {kName, kFileType, kAttr, kType}) {
        list_->setExact(true);
        expectOrderOfTexts(column);
    }
}

TEST_F(RowOrderTest, StaysTheArchivesForNamesThatAreAllAlike) {
    for (int member = 0; member < 1000; ++member) driver_.members.push_back({L"Name"});
    driver_.SetArcFile(L"a.zip");
    folders_.build(L"a.zip", driver_.entries());
    ContentsList list(driver_, folders_, desktop_, {});
    list.show(FolderModel::kRoot);
    for (int click = 0; click < 2; ++click) {
        list.sortBy(kName);
        for (std::uint32_t row = 0; row < 1000; ++row) ASSERT_EQ(list.entryAt(row), row);
    }
}

/// Names that each share all but the last character with the next one: the work grows with what is read, not with its
/// square.
TEST_F(RowOrderTest, LooksAtEachCharacterOfNestedBeginningsOnce) {
    class CountingBreather final : public Breather {
    public:
        std::uint64_t breaths = 0;
        void begin() override {}
        [[nodiscard]] bool breathe() override {
            ++breaths;
            return true;
        }
    };
    const auto breathsFor = [&](std::size_t count) {
        driver_.members.clear();
        for (std::size_t length = count; length > 0; --length) driver_.members.push_back({std::wstring(length, L'x')});
        driver_.SetArcFile(L"a.zip");
        folders_.build(L"a.zip", driver_.entries());
        ContentsList list(driver_, folders_, desktop_, {});
        CountingBreather breather;
        list.setBreather(&breather);
        list.show(FolderModel::kRoot);
        list.sortBy(kName);
        EXPECT_EQ(list.text(0, kName).size(), count);
        EXPECT_EQ(list.text(static_cast<std::uint32_t>(count - 1), kName).size(), 1U);
        return breather.breaths;
    };
    const auto once = breathsFor(500);
    EXPECT_LT(once, 200U);
    EXPECT_LT(2 * breathsFor(1000), 13 * once);  // of four times as many characters
}

}  // namespace
}  // namespace tovar::test
