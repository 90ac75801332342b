#include "archivers/commands/amount_texts.h"

#include <gtest/gtest.h>

#include <ctime>

namespace archiver {
namespace {

struct SizeCase {
    const char* name;
    std::uint64_t bytes;
    const char* expected;
    const char* exact;
};
class SizeText : public ::testing::TestWithParam<SizeCase> {};

TEST_P(SizeText, HasThreeDigitsAndAUnit) { EXPECT_EQ(sizeText(GetParam().bytes), GetParam().expected); }

TEST_P(SizeText, CanHaveAllDigits) { EXPECT_EQ(exactSizeText(GetParam().bytes), GetParam().exact); }

INSTANTIATE_TEST_SUITE_P(
    Sizes, SizeText,
    ::testing::Values(
        SizeCase{"None", 0, "0 bytes", "0 bytes"}, SizeCase{"One", 1, "1 byte", "1 byte"},
        SizeCase{"Two", 2, "2 bytes", "2 bytes"}, SizeCase{"LastOfBytes", 1023, "1,023 bytes", "1,023 bytes"},
        SizeCase{"FirstOfKilobytes", 1024, "1.00 KB", "1,024 bytes (1.00 KB)"},
        SizeCase{"CutNotRounded", 2047, "1.99 KB", "2,047 bytes (1.99 KB)"},
        SizeCase{"ZeroTenths", 1075, "1.04 KB", "1,075 bytes (1.04 KB)"},
        SizeCase{"TwoDigits", 12'595, "12.2 KB", "12,595 bytes (12.2 KB)"},
        SizeCase{"ThreeDigits", 102'400, "100 KB", "102,400 bytes (100 KB)"},
        SizeCase{"LastOfKilobytes", 1'048'575, "1,023 KB", "1,048,575 bytes (1,023 KB)"},
        SizeCase{"FirstOfMegabytes", 1'048'576, "1.00 MB", "1,048,576 bytes (1.00 MB)"},
        SizeCase{"FourGigabytes", 4'294'967'296, "4.00 GB", "4,294,967,296 bytes (4.00 GB)"},
        SizeCase{"Terabytes", 1'234'567'890'123, "1.12 TB", "1,234,567,890,123 bytes (1.12 TB)"},
        SizeCase{"Petabytes", 1'125'899'906'842'624, "1.00 PB", "1,125,899,906,842,624 bytes (1.00 PB)"},
        SizeCase{"HalfOfAll", 9'223'372'036'854'775'808U, "8.00 EB", "9,223,372,036,854,775,808 bytes (8.00 EB)"},
        SizeCase{"All", 18'446'744'073'709'551'615U, "15.9 EB", "18,446,744,073,709,551,615 bytes (15.9 EB)"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(RateText, IsASizeASecond) {
    EXPECT_EQ(rateText(0), "0 bytes/s");
    EXPECT_EQ(rateText(5'945'426), "5.67 MB/s");
}

struct DurationCase {
    const char* name;
    std::uint64_t seconds;
    const char* expected;
};
class DurationText : public ::testing::TestWithParam<DurationCase> {};

TEST_P(DurationText, GrowsCoarser) { EXPECT_EQ(durationText(GetParam().seconds), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(
    Durations, DurationText,
    ::testing::Values(DurationCase{"None", 0, "less than a second"}, DurationCase{"OneSecond", 1, "1 second"},
                      DurationCase{"Seconds", 59, "59 seconds"}, DurationCase{"OneMinute", 60, "1 minute"},
                      DurationCase{"MinuteAndSecond", 61, "1 minute 1 second"},
                      DurationCase{"MinutesAndSeconds", 599, "9 minutes 59 seconds"},
                      DurationCase{"TenMinutes", 600, "10 minutes"}, DurationCase{"NoMoreSeconds", 659, "10 minutes"},
                      DurationCase{"LastOfMinutes", 3599, "59 minutes"}, DurationCase{"OneHour", 3600, "1 hour"},
                      DurationCase{"HourAndMinute", 3660, "1 hour 1 minute"},
                      DurationCase{"LastOfHours", 86399, "23 hours 59 minutes"},
                      DurationCase{"Day", 86400, "more than a day"},
                      DurationCase{"ForEver", 18'446'744'073'709'551'615U, "more than a day"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(TimeText, IsLocal) {
    std::tm local{};
    local.tm_year = 2026 - 1900;
    local.tm_mon = 10;
    local.tm_mday = 2;
    local.tm_hour = 4;
    local.tm_min = 3;
    local.tm_sec = 5;
    local.tm_isdst = -1;
    EXPECT_EQ(timeText(Moment{std::mktime(&local), 0}), "2026-11-02 04:03:05");
}

TEST(TimeText, IsUnknownWithoutATimeOrOutsideOfTheCalendar) {
    EXPECT_EQ(timeText(std::nullopt), "unknown");
    EXPECT_EQ(timeText(Moment{9'223'372'036'854'775'807, 0}), "unknown");
}

}  // namespace
}  // namespace archiver
