#include "shell/regional.h"

#include <gtest/gtest.h>

#include <limits>

namespace tovar {
namespace {

RegionalSettings german() {
    RegionalSettings settings;
    settings.groupSeparator = L".";
    settings.decimalSeparator = L",";
    settings.dateSeparator = L".";
    settings.shortDate = L"dd.MM.yyyy";
    return settings;
}

RegionalSettings grouped(const wchar_t* grouping) {
    RegionalSettings settings;
    settings.grouping = grouping;
    return settings;
}

RegionalSettings pictured(const wchar_t* picture) {
    RegionalSettings settings;
    settings.shortDate = picture;
    return settings;
}

TEST(GroupedNumber, PrintsNothingForZero) { EXPECT_EQ(groupedNumber(0, {}), L""); }

TEST(GroupedNumber, GroupsByThousands) {
    EXPECT_EQ(groupedNumber(7, {}), L"7");
    EXPECT_EQ(groupedNumber(999, {}), L"999");
    EXPECT_EQ(groupedNumber(1000, {}), L"1,000");
    EXPECT_EQ(groupedNumber(1234567, {}), L"1,234,567");
    EXPECT_EQ(groupedNumber(std::numeric_limits<std::uint64_t>::max(), {}), L"18,446,744,073,709,551,615");
}

TEST(GroupedNumber, UsesTheUsersSeparator) { EXPECT_EQ(groupedNumber(1234567, german()), L"1.234.567"); }

TEST(GroupedNumber, FollowsTheUsersGroups) {
    EXPECT_EQ(groupedNumber(123456789, grouped(L"3;2;0")), L"12,34,56,789");
    EXPECT_EQ(groupedNumber(123456789, grouped(L"3")), L"123456,789");
    EXPECT_EQ(groupedNumber(123456789, grouped(L"0")), L"123456789");
    EXPECT_EQ(groupedNumber(123456789, grouped(L"")), L"123456789");
    EXPECT_EQ(groupedNumber(123456789, grouped(L"4;0")), L"1,2345,6789");
}

TEST(TenthsText, HasOneDecimal) {
    EXPECT_EQ(tenthsText(425, {}), L"42.5");
    EXPECT_EQ(tenthsText(0, {}), L"0.0");
    EXPECT_EQ(tenthsText(5, {}), L"0.5");
    EXPECT_EQ(tenthsText(1000, {}), L"100.0");
    EXPECT_EQ(tenthsText(425, german()), L"42,5");
}

TEST(TenthsText, WritesNegativeValues) {
    EXPECT_EQ(tenthsText(-5, {}), L"-0.5");
    EXPECT_EQ(tenthsText(-32768, {}), L"-3276.8");
    EXPECT_EQ(tenthsText(std::numeric_limits<std::int32_t>::min(), {}), L"-214748364.8");
}

TEST(ShortDateText, FollowsThePicture) {
    const CalendarDate date{2001, 5, 7};
    EXPECT_EQ(shortDateText(date, {}), L"5/7/2001");
    EXPECT_EQ(shortDateText(date, german()), L"07.05.2001");
    EXPECT_EQ(shortDateText(date, pictured(L"yyyy-MM-dd")), L"2001-05-07");
    EXPECT_EQ(shortDateText(date, pictured(L"yy/M/d")), L"01/5/7");
    EXPECT_EQ(shortDateText(date, pictured(L"d.M.y")), L"7.5.1");
}

TEST(ShortDateText, WritesNames) {
    const CalendarDate date{2001, 5, 7};  // a Monday
    EXPECT_EQ(shortDateText(date, pictured(L"ddd, d MMM yyyy")), L"Mon, 7 May 2001");
    EXPECT_EQ(shortDateText({2000, 2, 29}, pictured(L"dddd d. MMMM yyyy")), L"Tuesday 29. February 2000");
    EXPECT_EQ(shortDateText({1999, 12, 31}, pictured(L"dddd")), L"Friday");
    EXPECT_EQ(shortDateText({2023, 1, 1}, pictured(L"ddd")), L"Sun");
}

TEST(ShortDateText, CopiesQuotedText) {
    EXPECT_EQ(shortDateText({2001, 5, 7}, pictured(L"d 'de' MMMM 'de' yyyy")), L"7 de May de 2001");
    EXPECT_EQ(shortDateText({2001, 5, 7}, pictured(L"d 'o''clock' M")), L"7 o'clock 5");
    EXPECT_EQ(shortDateText({2001, 5, 7}, pictured(L"d 'dM")), L"7 dM");
}

TEST(ShortDateText, LeavesTheEraOut) { EXPECT_EQ(shortDateText({2001, 5, 7}, pictured(L"yyyy/M/d gg")), L"2001/5/7 "); }

TEST(ShortDateText, WritesNumbersThatAreNoDate) {
    EXPECT_EQ(shortDateText({1980, 0, 0}, {}), L"0/0/1980");
    EXPECT_EQ(shortDateText({1980, 15, 31}, pictured(L"dddd MMMM yyyy")), L"31 15 1980");
    EXPECT_EQ(shortDateText({80, 1, 1}, {}), L"1/1/0080");
}

TEST(ShortTimeText, HasTwentyFourHours) {
    EXPECT_EQ(shortTimeText({17, 5, 59}, {}), L"17:05");
    EXPECT_EQ(shortTimeText({0, 0, 0}, {}), L"00:00");
}

TEST(ShortTimeText, UsesTheUsersSeparator) {
    RegionalSettings settings;
    settings.timeSeparator = L".";
    EXPECT_EQ(shortTimeText({7, 30, 0}, settings), L"07.30");
    EXPECT_EQ(hourMinuteSecondText({7, 30, 9}, settings), L"07.30.09");
}

TEST(YearMonthDayText, HasTwoDigitsEach) {
    EXPECT_EQ(yearMonthDayText({2001, 5, 17}, {}), L"01/05/17");
    EXPECT_EQ(yearMonthDayText({1999, 12, 1}, {}), L"99/12/01");
    EXPECT_EQ(yearMonthDayText({101, 5, 17}, {}), L"01/05/17");
    EXPECT_EQ(yearMonthDayText({2001, 5, 17}, german()), L"01.05.17");
}

TEST(HourMinuteSecondText, HasTwoDigitsEach) { EXPECT_EQ(hourMinuteSecondText({7, 3, 59}, {}), L"07:03:59"); }

}  // namespace
}  // namespace tovar
