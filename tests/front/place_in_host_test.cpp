#include "front/place_in_host.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "front/fakes/fake_windows.h"

namespace tovar {
namespace {

struct ShareCase {
    const char* name;
    std::optional<double> extent;
    int pixels;
    int expected;  ///< 0.6 of it
};
class HostShare : public testing::TestWithParam<ShareCase> {};

TEST_P(HostShare, IsInProportionToTheRealWindow) {
    EXPECT_EQ(hostShareInPixels(0.6, GetParam().extent, GetParam().pixels), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Units, HostShare,
                         testing::Values(ShareCase{"Pixels", 800.0, 800, 480}, ShareCase{"Twips", 12000.0, 800, 480},
                                         ShareCase{"Inches", 8.333, 800, 480},
                                         ShareCase{"Millimetres", 211.7, 800, 480},
                                         ShareCase{"Unread", std::nullopt, 800, 480}, ShareCase{"Zero", 0.0, 800, 480},
                                         ShareCase{"Negative", -5.0, 800, 480},
                                         ShareCase{"Infinite", std::numeric_limits<double>::infinity(), 800, 480},
                                         ShareCase{"NotANumber", std::nan(""), 800, 480},
                                         ShareCase{"Huge", std::numeric_limits<double>::max(), 800, 480},
                                         ShareCase{"Tiny", std::numeric_limits<double>::denorm_min(), 800, 480},
                                         ShareCase{"Smallest", std::numeric_limits<double>::min(), 800, 480},
                                         ShareCase{"RoundedUp", 601.0, 601, 361},
                                         ShareCase{"EmptyWindow", 800.0, 0, 0}),
                         [](const auto& each) { return std::string(each.param.name); });

class PlaceInHostTest : public testing::Test {
protected:
    PlaceInHostTest() {
        windows.sizes[hostWindow] = {1000, 701};
        windows.sizes[window] = {300, 200};
        host.window = hostWindow;
        host.width = 15000;
        host.height = 10515;
    }

    const WindowHandle hostWindow = test::windowNumber(7), window = test::windowNumber(9);
    test::Journal journal;
    test::FakeWindowSystem windows{journal};
    test::FakeHost host;
};

TEST_F(PlaceInHostTest, MakesTheWindowAChildOfSixTenthsInTheMiddle) {
    PlaceInHost(window, &host, true, windows);
    // 701 * 0.6 = 420.6, so 421 high; (701 - 421) / 2 = 140 from the top
    EXPECT_EQ(journal, (test::Journal{L"parent of 9 is 7", L"move 9 to 200,140 size 600x421"}));
}

TEST_F(PlaceInHostTest, KeepsTheSizeWhenNotToldToResize) {
    PlaceInHost(window, &host, false, windows);
    EXPECT_EQ(journal, (test::Journal{L"parent of 9 is 7", L"move 9 to 350,250 size 300x200"}));
}

TEST_F(PlaceInHostTest, CentresAWindowThatIsLargerThanItsHost) {
    windows.sizes[window] = {1400, 800};
    PlaceInHost(window, &host, false, windows);
    EXPECT_EQ(journal, (test::Journal{L"parent of 9 is 7", L"move 9 to -200,-49 size 1400x800"}));
}

TEST_F(PlaceInHostTest, GivesTheSamePlaceInEveryUnit) {
    host.width = 1000;
    host.height = 701;
    PlaceInHost(window, &host, true, windows);
    host.width = std::nullopt;
    host.height = -1;
    PlaceInHost(window, &host, true, windows);
    EXPECT_EQ(journal.at(1), L"move 9 to 200,140 size 600x421");
    EXPECT_EQ(journal.at(3), L"move 9 to 200,140 size 600x421");
}

TEST_F(PlaceInHostTest, ChangesNothingWithoutAHost) {
    PlaceInHost(window, nullptr, true, windows);
    EXPECT_EQ(journal, test::Journal{});
}

TEST_F(PlaceInHostTest, ChangesNothingForAHostWithoutAUsableWindow) {
    host.window = nullptr;
    PlaceInHost(window, &host, true, windows);
    host.window = test::windowNumber(12345);  // of no window
    PlaceInHost(window, &host, true, windows);
    EXPECT_EQ(journal, test::Journal{});
}

TEST_F(PlaceInHostTest, NeverMakesAWindowItsOwnParent) {
    host.window = window;
    PlaceInHost(window, &host, true, windows);
    EXPECT_EQ(journal, test::Journal{});
}

TEST_F(PlaceInHostTest, ChangesNothingWhenTheSystemRefuses) {
    windows.refusesParents = true;
    PlaceInHost(window, &host, true, windows);
    EXPECT_EQ(journal, test::Journal{});
}

}  // namespace
}  // namespace tovar
