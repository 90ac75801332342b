#include "archivers/formats/moments.h"

#include <gtest/gtest.h>

#include "formats/support/files.h"

namespace archiver {
namespace {

constexpr DosStamp stampOf(int year, int month, int day, int hour, int minute, int second) {
    return {static_cast<std::uint16_t>((year - 1980) << 9 | month << 5 | day),
            static_cast<std::uint16_t>(hour << 11 | minute << 5 | second / 2)};
}

TEST(DosStamp, IsLocalTime) {
    {
        const test::TimeZone zone("UTC0");
        EXPECT_EQ(dosStampOf({990120658, 0}), stampOf(2001, 5, 17, 17, 30, 58));
    }
    const test::TimeZone zone("JST-9");
    EXPECT_EQ(dosStampOf({990120658, 0}), stampOf(2001, 5, 18, 2, 30, 58));
}

TEST(DosStamp, RoundsOddSecondsDown) {
    const test::TimeZone zone("UTC0");
    EXPECT_EQ(dosStampOf({990120659, 999'999'999}), stampOf(2001, 5, 17, 17, 30, 58));
}

TEST(DosStamp, StaysInsideItsRange) {
    const test::TimeZone zone("UTC0");
    const DosStamp first = stampOf(1980, 1, 1, 0, 0, 0);
    const DosStamp last = stampOf(2107, 12, 31, 23, 59, 58);
    EXPECT_EQ(dosStampOf({315532800, 0}), first);
    EXPECT_EQ(dosStampOf({315532799, 0}), first);
    EXPECT_EQ(dosStampOf({0, 0}), first);
    EXPECT_EQ(dosStampOf({-1, 0}), first);
    EXPECT_EQ(dosStampOf({INT64_MIN, 0}), first);
    EXPECT_EQ(dosStampOf({4354819199, 0}), last);
    EXPECT_EQ(dosStampOf({4354819200, 0}), last);
    EXPECT_EQ(dosStampOf({INT64_MAX, 0}), last);
}

TEST(MomentOfDosStamp, ReadsLocalTime) {
    const test::TimeZone zone("JST-9");
    EXPECT_EQ(momentOfDosStamp(stampOf(2001, 5, 18, 2, 30, 58)).value().seconds, 990120658);
    EXPECT_EQ(momentOfDosStamp(stampOf(2001, 5, 18, 2, 30, 58)).value().nanoseconds, 0U);
}

TEST(MomentOfDosStamp, RefusesWhatIsNoDate) {
    const test::TimeZone zone("UTC0");
    EXPECT_FALSE(momentOfDosStamp({0, 0}).has_value());
    EXPECT_FALSE(momentOfDosStamp(stampOf(2001, 13, 1, 0, 0, 0)).has_value());
    EXPECT_FALSE(momentOfDosStamp(stampOf(2001, 1, 0, 0, 0, 0)).has_value());
    EXPECT_FALSE(momentOfDosStamp(stampOf(2001, 1, 1, 24, 0, 0)).has_value());
    EXPECT_FALSE(momentOfDosStamp(stampOf(2001, 1, 1, 0, 60, 0)).has_value());
    EXPECT_FALSE(momentOfDosStamp(stampOf(2001, 1, 1, 0, 0, 60)).has_value());
}

TEST(DosStamp, RangeIsThatOfLocalTime) {
    const test::TimeZone zone("JST-9");
    EXPECT_EQ(dosStampOf({4354819199, 0}), stampOf(2107, 12, 31, 23, 59, 58));
    EXPECT_EQ(dosStampOf({315532800 - 9 * 3600, 0}), stampOf(1980, 1, 1, 0, 0, 0));
    EXPECT_EQ(dosStampOf({315532800 - 9 * 3600 + 3662, 0}), stampOf(1980, 1, 1, 1, 1, 2));
}

TEST(FileTime, CountsFrom1601) {
    const Moment start = momentOfFileTime(0);
    EXPECT_EQ(start.seconds, -11644473600);
    EXPECT_EQ(start.nanoseconds, 0U);
    const Moment moment = momentOfFileTime(126345942581234567);  // 2001-05-17 17:30:58.1234567
    EXPECT_EQ(moment.seconds, 990120658);
    EXPECT_EQ(moment.nanoseconds, 123456700U);
}

}  // namespace
}  // namespace archiver
