#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "browser/contents_list.h"
#include "browser/fakes/fake_driver.h"
#include "browser/fakes/fake_file_types.h"

namespace tovar::test {
namespace {

using Texts = std::vector<std::wstring>;

enum Position : std::size_t { kName, kOriginal, kPacked, kRatio, kFileType, kModified, kAttr, kType, kCrc };

class ExactContents : public testing::Test {
protected:
    void show(const std::vector<Member>& members, const RegionalSettings& regional = {}) {
        driver_.members = members;
        driver_.SetArcFile(L"a.zip");
        folders_.build(L"a.zip", driver_.entries());
        list_ = std::make_unique<ContentsList>(driver_, folders_, desktop_, regional);
        list_->setExact(true);
        list_->show(FolderModel::kRoot);
    }
    [[nodiscard]] Texts column(std::size_t position) const {
        Texts texts;
        for (std::uint32_t row = 0; row < list_->rowCount(); ++row) texts.push_back(list_->text(row, position));
        return texts;
    }
    /// Names after one click on the header and after two.
    void expectSorted(std::size_t position, const Texts& descending, const Texts& ascending) {
        list_->sortBy(position);
        EXPECT_EQ(column(kName), descending);
        list_->sortBy(position);
        EXPECT_EQ(column(kName), ascending);
    }

    FakeDriver driver_;
    FakeFileTypes desktop_;
    FolderModel folders_;
    std::unique_ptr<ContentsList> list_;
};

TEST_F(ExactContents, ShowsWholeSizes) {
    show({{.storedName = L"huge", .original = 18446744073709551615U, .packed = 1234567890123},
          {.storedName = L"small", .original = 999, .packed = 1000},
          {.storedName = L"empty"}});
    EXPECT_EQ(column(kOriginal), (Texts{L"18,446,744,073,709,551,615", L"999", L"0"}));
    EXPECT_EQ(column(kPacked), (Texts{L"1,234,567,890,123", L"1,000", L"0"}));
}

TEST_F(ExactContents, GroupsDigitsAsTheRegionWants) {
    RegionalSettings regional;
    regional.groupSeparator = L".";
    show({{.storedName = L"a", .original = 1234567}}, regional);
    EXPECT_EQ(column(kOriginal), Texts{L"1.234.567"});
}

TEST_F(ExactContents, ShowsTheWholeRatio) {
    show({{.storedName = L"a", .ratio = 425},
          {.storedName = L"b", .ratio = 0},
          {.storedName = L"c", .ratio = 32767},
          {.storedName = L"d", .ratio = -5}});
    EXPECT_EQ(column(kRatio), (Texts{L"42.5%", L"0.0%", L"3276.7%", L"-0.5%"}));
}

TEST_F(ExactContents, ShowsYearsOfFourDigitsAndSeconds) {
    RegionalSettings regional;
    regional.shortDate = L"dd.MM.yy";
    regional.timeSeparator = L".";
    show({{.storedName = L"a", .date = 0x2AB1, .time = 0x8BDD},   // 2001-05-17 17:30, step 29
          {.storedName = L"b", .date = 0x0021, .time = 0x0001}},  // 1980-01-01 00:00, step 1
         regional);
    EXPECT_EQ(column(kModified), (Texts{L"17.05.2001 17.30.58", L"01.01.1980 00.00.02"}));
}

TEST_F(ExactContents, ShowsNoDateWhereThereIsNone) {
    show({{.storedName = L"none", .date = 0, .time = 0}, {.storedName = L"odd", .date = 0x2AB1, .time = 0xC000}});
    EXPECT_EQ(column(kModified), (Texts{L"", L"5/17/2001 24:00:00"}));
}

TEST_F(ExactContents, ShowsTheWholeChecksum) {
    show({{.storedName = L"a", .crc = 0x1A2B3C4D}, {.storedName = L"b", .crc = 0x12}, {.storedName = L"none"}});
    EXPECT_EQ(column(kCrc), (Texts{L"1A2B3C4D", L"00000012", L""}));
}

TEST_F(ExactContents, ShowsChecksumsOfSixteenBitsWithFourDigits) {
    driver_.columns.crcDigits = 4;
    show({{.storedName = L"a", .crc = 0xABC}, {.storedName = L"zero"}, {.storedName = L"wide", .crc = 0x12345678}});
    EXPECT_EQ(column(kCrc), (Texts{L"0ABC", L"0000", L"12345678"}));
}

TEST_F(ExactContents, ShowsTheSameColumnsAndTheSameOtherTexts) {
    show({{L"d/x"}, {.storedName = L"a.txt", .attributes = L"-rhs", .type = L"Store"}});
    EXPECT_EQ(list_->columns().size(), 9U);
    EXPECT_EQ(column(kFileType), (Texts{L"File Folder", L"Text Document"}));
    EXPECT_EQ(column(kAttr), (Texts{L"", L"-rhs"}));
    EXPECT_EQ(column(kType), (Texts{L"", L"Store"}));
    for (const auto position : {kOriginal, kPacked, kRatio, kModified, kCrc}) EXPECT_EQ(list_->text(0, position), L"");
}

TEST_F(ExactContents, SortsSizesByValueWhateverTheirLength) {
    show({{.storedName = L"a", .original = 1'000'000'005},
          {.storedName = L"b", .original = 999'999'999},
          {.storedName = L"empty"},
          {.storedName = L"c", .original = 7}});
    expectSorted(kOriginal, {L"a", L"b", L"c", L"empty"}, {L"empty", L"c", L"b", L"a"});
}

TEST_F(ExactContents, SortsRatiosByValue) {
    show({{.storedName = L"a", .ratio = 10'000}, {.storedName = L"b", .ratio = -5}, {.storedName = L"c", .ratio = 95}});
    expectSorted(kRatio, {L"a", L"c", L"b"}, {L"b", L"c", L"a"});
}

TEST_F(ExactContents, SortsDatesByTimeAndMissingOnesBeforeAll) {
    show({{.storedName = L"a", .date = 0x2AB1},                  // 5/17/2001 17:30
          {.storedName = L"b", .date = 0x2B51},                  // 10/17/2001
          {.storedName = L"none", .date = 0, .time = 0xBF7D},    // no day at 23:59
          {.storedName = L"c", .date = 0x2AB1, .time = 0x8BDC},  // two seconds before a
          {.storedName = L"d", .date = 0x2AB1, .time = 0xC000},  // no time
          {.storedName = L"e", .date = 0x2AB1, .time = 0x0000}});
    expectSorted(kModified, {L"b", L"a", L"c", L"e", L"d", L"none"}, {L"none", L"d", L"e", L"c", L"a", L"b"});
}

TEST_F(ExactContents, SortsChecksumsByAllTheirDigits) {
    show({{.storedName = L"a", .crc = 0x20000001}, {.storedName = L"none"}, {.storedName = L"b", .crc = 0x10000002}});
    expectSorted(kCrc, {L"a", L"b", L"none"}, {L"none", L"b", L"a"});
}

TEST_F(ExactContents, KeepsFoldersAsOneBlockAndEqualRowsAsTheArchiveHasThem) {
    show({{L"x"}, {L"d/1"}, {L"y"}, {L"c/1"}, {.storedName = L"z", .original = 5}});
    expectSorted(kOriginal, {L"z", L"x", L"y", L"d", L"c"}, {L"d", L"c", L"x", L"y", L"z"});
}

TEST_F(ExactContents, OrdersAnewWhenTheDetailsChange) {
    show({{.storedName = L"a", .original = 1'000'000'005}, {.storedName = L"b", .original = 99'999'999}});
    EXPECT_TRUE(list_->setExact(false).empty());  // nothing is sorted yet
    list_->sortBy(kOriginal);
    EXPECT_EQ(column(kName), (Texts{L"b", L"a"}));  // of the cut texts
    EXPECT_EQ(list_->setExact(true), (std::vector<std::uint32_t>{1, 0}));
    EXPECT_EQ(column(kName), (Texts{L"a", L"b"}));
    EXPECT_TRUE(list_->setExact(true).empty());
    EXPECT_TRUE(list_->exact());
}

struct PictureCase {
    const char* name;
    std::wstring_view picture, expected;
};
class WholeYears : public testing::TestWithParam<PictureCase> {};
TEST_P(WholeYears, HaveFourDigits) { EXPECT_EQ(withWholeYears(GetParam().picture), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(Pictures, WholeYears,
                         testing::Values(PictureCase{"TwoDigits", L"d/M/yy", L"d/M/yyyy"},
                                         PictureCase{"OneDigit", L"y-M-d", L"yyyy-M-d"},
                                         PictureCase{"FourDigits", L"yyyy/MM/dd", L"yyyy/MM/dd"},
                                         PictureCase{"Quoted", L"d 'yy' M yy", L"d 'yy' M yyyy"},
                                         PictureCase{"Nothing", L"", L""}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::test
