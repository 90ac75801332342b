#include "archivers/convention/moment_forms.h"

#include <gtest/gtest.h>

namespace archiver {
namespace {

TEST(SecondsOf, StaysWithinTheResult) {
    EXPECT_EQ(secondsOf({0, 0}), 0U);
    EXPECT_EQ(secondsOf({990120658, 999999999}), 990120658U);
    EXPECT_EQ(secondsOf({-1, 0}), 0U);
    EXPECT_EQ(secondsOf({4294967294, 0}), 4294967294U);
    EXPECT_EQ(secondsOf({4294967295, 0}), 4294967294U) << "all bits set would be an error";
    EXPECT_EQ(secondsOf({INT64_MAX, 0}), 4294967294U);
    EXPECT_EQ(secondsOf({INT64_MIN, 0}), 0U);
}

std::uint64_t joined(const std::optional<FileTime>& time) {
    return time.has_value() ? std::uint64_t{time->high} << 32 | time->low : 0xDEAD;
}

// 116444736000000000 is the number of steps from 1601 to 1970 that the Windows SDK documentation gives.
TEST(FileTimeOf, CountsFrom1601) {
    EXPECT_EQ(joined(fileTimeOf({0, 0})), 116444736000000000U);
    EXPECT_EQ(joined(fileTimeOf({1, 250})), 116444736010000002U);
    EXPECT_EQ(joined(fileTimeOf({-1, 0})), 116444735990000000U);
    EXPECT_EQ(joined(fileTimeOf({-11644473600, 0})), 0U);
}

TEST(FileTimeOf, RefusesWhatItCanNotHold) {
    EXPECT_FALSE(fileTimeOf({-11644473601, 0}).has_value());
    EXPECT_FALSE(fileTimeOf({INT64_MIN, 0}).has_value());
    EXPECT_FALSE(fileTimeOf({INT64_MAX, 999999999}).has_value());
    // 2^63 - 1 steps are 922337203685.4775807 seconds from 1601.
    EXPECT_TRUE(fileTimeOf({910692730084, 999999900}).has_value());
    EXPECT_FALSE(fileTimeOf({910692730085, 477580700}).has_value());
}

}  // namespace
}  // namespace archiver
