#include "drivers/entry_text.h"

#include <gtest/gtest.h>

#include "drivers/fakes/member.h"

namespace tovar {
namespace {

using test::dosDate;
using test::dosTime;

TEST(RatioText, HasOneDecimalAndAPercentSign) {
    const RegionalSettings regional;
    EXPECT_EQ(ratioText(0, regional), L"0.0%");
    EXPECT_EQ(ratioText(5, regional), L"0.5%");
    EXPECT_EQ(ratioText(425, regional), L"42.5%");
    EXPECT_EQ(ratioText(1000, regional), L"100.0%");
    EXPECT_EQ(ratioText(32767, regional), L"3276.7%");
}

TEST(RatioText, IsNegativeForAValueAbove32767) {
    const RegionalSettings regional;
    EXPECT_EQ(ratioText(static_cast<std::int16_t>(0xFFFF), regional), L"-0.1%");
    EXPECT_EQ(ratioText(static_cast<std::int16_t>(0x8000), regional), L"-3276.8%");
}

TEST(RatioText, UsesTheDecimalSeparator) {
    RegionalSettings regional;
    regional.decimalSeparator = L",";
    EXPECT_EQ(ratioText(425, regional), L"42,5%");
}

struct DateCase {
    const char* name;
    std::uint16_t word;
    std::wstring_view stored, read;
};

class DateWord : public testing::TestWithParam<DateCase> {};

TEST_P(DateWord, IsStoredWithItsYearSince1900) { EXPECT_EQ(storedDateText(GetParam().word), GetParam().stored); }

TEST_P(DateWord, ReadsAsYearMonthDay) { EXPECT_EQ(dateText(GetParam().word, {}), GetParam().read); }

INSTANTIATE_TEST_SUITE_P(Dates, DateWord,
                         testing::Values(DateCase{"Year2001", dosDate(2001, 5, 17), L"101-05-17", L"01/05/17"},
                                         DateCase{"Year1999", dosDate(1999, 5, 17), L"99-05-17", L"99/05/17"},
                                         DateCase{"Year2000", dosDate(2000, 1, 1), L"100-01-01", L"00/01/01"},
                                         DateCase{"First", dosDate(1980, 1, 1), L"80-01-01", L"80/01/01"},
                                         DateCase{"Last", dosDate(2107, 12, 31), L"207-12-31", L"07/12/31"},
                                         DateCase{"LeapDay", dosDate(2000, 2, 29), L"100-02-29", L"00/02/29"},
                                         DateCase{"NoLeapYear", dosDate(2100, 2, 29), L"200-02-29", L"200-02-29"},
                                         DateCase{"February30", dosDate(1999, 2, 30), L"99-02-30", L"99-02-30"},
                                         DateCase{"April31", dosDate(1999, 4, 31), L"99-04-31", L"99-04-31"},
                                         DateCase{"Nothing", 0, L"80-00-00", L"80-00-00"},
                                         DateCase{"MonthZero", dosDate(1999, 0, 17), L"99-00-17", L"99-00-17"},
                                         DateCase{"DayZero", dosDate(1999, 5, 0), L"99-05-00", L"99-05-00"},
                                         DateCase{"Month13", dosDate(1999, 13, 1), L"99-13-01", L"99-13-01"},
                                         DateCase{"AllBits", 0xFFFF, L"207-15-31", L"207-15-31"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(DateText, UsesTheDateSeparator) {
    RegionalSettings regional;
    regional.dateSeparator = L".";
    EXPECT_EQ(dateText(dosDate(2001, 5, 17), regional), L"01.05.17");
    EXPECT_EQ(dateText(0, regional), L"80-00-00");
}

TEST(CalendarDateOf, GivesTheNumbers) {
    const std::optional<CalendarDate> date = calendarDateOf(dosDate(2001, 5, 17));
    ASSERT_TRUE(date);
    EXPECT_EQ(date->year, 2001);
    EXPECT_EQ(date->month, 5);
    EXPECT_EQ(date->day, 17);
}

TEST(CalendarDateOf, IsNothingForNoDate) {
    EXPECT_FALSE(calendarDateOf(0));
    EXPECT_FALSE(calendarDateOf(dosDate(1999, 13, 1)));
    EXPECT_FALSE(calendarDateOf(dosDate(1999, 11, 31)));
}

TEST(TimeText, ShowsTheCountOfTwoSecondsAsItStands) {
    EXPECT_EQ(timeText(dosTime(17, 30, 29)), L"17:30:29");
    EXPECT_EQ(timeText(0), L"00:00:00");
    EXPECT_EQ(timeText(dosTime(1, 2, 3)), L"01:02:03");
    EXPECT_EQ(timeText(0xFFFF), L"31:63:31");
}

TEST(ClockTimeOf, GivesTheNumbers) {
    const std::optional<ClockTime> time = clockTimeOf(dosTime(17, 30, 29));
    ASSERT_TRUE(time);
    EXPECT_EQ(time->hour, 17);
    EXPECT_EQ(time->minute, 30);
    EXPECT_EQ(time->second, 29);
}

TEST(ClockTimeOf, IsNothingForNoTime) {
    EXPECT_FALSE(clockTimeOf(dosTime(24, 0, 0)));
    EXPECT_FALSE(clockTimeOf(dosTime(0, 60, 0)));
    EXPECT_FALSE(clockTimeOf(dosTime(0, 0, 30)));
    EXPECT_TRUE(clockTimeOf(dosTime(23, 59, 29)));
}

TEST(CrcText, KeepsTheLastFourDigits) {
    EXPECT_EQ(crcText(0x1A2B3C4D), L"3C4D");
    EXPECT_EQ(crcText(0x0000ABCD), L"ABCD");
    EXPECT_EQ(crcText(0x12), L"0012");
    EXPECT_EQ(crcText(0), L"0000");
    EXPECT_EQ(crcText(0xFFFFFFFF), L"FFFF");
}

}  // namespace
}  // namespace tovar
