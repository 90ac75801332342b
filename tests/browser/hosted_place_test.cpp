#include "browser/hosted_place.h"

#include <gtest/gtest.h>

namespace tovar::test {
namespace {

constexpr HostSize kHost{1000, 800}, kLeast{320, 200};
constexpr HostedPlace kCentred{200, 160, 600, 480};

TEST(HostedPlace, KeepsItsShareAndItsMiddle) {
    EXPECT_EQ(followHost(kCentred, kHost, {2000, 1600}, kLeast), (HostedPlace{400, 320, 1200, 960}));
    EXPECT_EQ(followHost(kCentred, kHost, {1000, 400}, kLeast), (HostedPlace{200, 80, 600, 240}));
}

TEST(HostedPlace, StaysWhereTheHostStaysAsItIs) { EXPECT_EQ(followHost(kCentred, kHost, kHost, kLeast), kCentred); }

TEST(HostedPlace, KeepsWhatIsLeftOverSharedOut) {
    // A fifth of what is left over lies to the left, nothing above.
    EXPECT_EQ(followHost({100, 0, 500, 400}, kHost, {2000, 800}, kLeast), (HostedPlace{200, 0, 1000, 400}));
}

TEST(HostedPlace, DoesNotBecomeTooSmallToWorkWith) {
    EXPECT_EQ(followHost(kCentred, kHost, {400, 800}, kLeast), (HostedPlace{40, 160, 320, 480}));
    EXPECT_EQ(followHost(kCentred, kHost, {200, 100}, kLeast), (HostedPlace{0, 0, 320, 200}));
}

TEST(HostedPlace, StaysSmallWhenItWasMadeSmall) {
    EXPECT_EQ(followHost({0, 0, 100, 100}, kHost, {500, 400}, kLeast), (HostedPlace{0, 0, 100, 100}));
}

TEST(HostedPlace, FillsAHostThatItFilled) {
    EXPECT_EQ(followHost({0, 0, 1000, 800}, kHost, {700, 500}, kLeast), (HostedPlace{0, 0, 700, 500}));
}

TEST(HostedPlace, CopesWithAHostOfNoSize) {
    EXPECT_EQ(followHost(kCentred, {0, 0}, kHost, kLeast), kCentred);
    EXPECT_EQ(followHost(kCentred, kHost, {0, 0}, kLeast), (HostedPlace{0, 0, 320, 200}));
}

}  // namespace
}  // namespace tovar::test
