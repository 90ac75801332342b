#include "shell/splitter_place.h"

#include <gtest/gtest.h>

namespace tovar::test {
namespace {

SplitterPlace placedIn(int width, int dpi = 96) {
    SplitterPlace place;
    place.layOut(width, dpi);
    return place;
}

TEST(SplitterPlace, KeepsItsShareUntilItIsMoved) {
    SplitterPlace place = placedIn(1000);
    EXPECT_EQ(place.left(), 280);
    EXPECT_EQ(place.right(), 285);
    place.layOut(500, 96);
    EXPECT_EQ(place.left(), 140);
}

TEST(SplitterPlace, GrowsWithTheScale) {
    EXPECT_EQ(placedIn(1000, 144).right() - placedIn(1000, 144).left(), 8);  // 7.5
    EXPECT_EQ(placedIn(1000, 192).right() - placedIn(1000, 192).left(), 10);
    EXPECT_EQ(placedIn(1000, 288).right() - placedIn(1000, 288).left(), 15);
}

TEST(SplitterPlace, StaysWhereItWasMovedTo) {
    SplitterPlace place = placedIn(1000);
    EXPECT_TRUE(place.moveTo(400));
    EXPECT_FALSE(place.moveTo(400));
    EXPECT_EQ(place.left(), 400);
    place.layOut(800, 96);
    EXPECT_EQ(place.left(), 400);
}

TEST(SplitterPlace, ComesBackWhenItsAreaGrowsAgain) {
    SplitterPlace place = placedIn(1000);
    place.moveTo(600);
    place.layOut(400, 96);
    EXPECT_EQ(place.right(), 320);
    place.layOut(1000, 96);
    EXPECT_EQ(place.left(), 600);
}

TEST(SplitterPlace, ScalesThePlaceThatWasChosen) {
    SplitterPlace place = placedIn(1000);
    place.moveTo(300);
    place.layOut(2000, 192);
    EXPECT_EQ(place.left(), 600);
    place.layOut(1000, 96);
    EXPECT_EQ(place.left(), 300);
}

TEST(SplitterPlace, LeavesRoomForBothPanes) {
    SplitterPlace place = placedIn(1000);
    place.moveTo(-500);
    EXPECT_EQ(place.left(), 80);
    place.moveTo(5000);
    EXPECT_EQ(place.right(), 920);
    place.layOut(3000, 96);
    EXPECT_EQ(place.left(), 915);  // what was beyond the limits is forgotten
    place.layOut(2000, 192);
    place.moveTo(0);
    EXPECT_EQ(place.left(), 160);
}

TEST(SplitterPlace, MovesByStepsAndToItsLimits) {
    SplitterPlace place = placedIn(1000);
    EXPECT_TRUE(place.moveBySteps(1));
    EXPECT_EQ(place.left(), 288);
    EXPECT_TRUE(place.moveBySteps(-2));
    EXPECT_EQ(place.left(), 272);
    EXPECT_TRUE(place.moveToStart());
    EXPECT_EQ(place.left(), 80);
    EXPECT_FALSE(place.moveBySteps(-1));
    EXPECT_TRUE(place.moveToEnd());
    EXPECT_EQ(place.left(), 915);
    place.layOut(2000, 192);
    place.moveTo(500);
    place.moveBySteps(1);
    EXPECT_EQ(place.left(), 516);
}

TEST(SplitterPlace, HalvesAnAreaThatIsTooNarrowForTwoPanes) {
    EXPECT_EQ(placedIn(105).left(), 50);
    EXPECT_EQ(placedIn(105).right(), 55);
}

TEST(SplitterPlace, CopesWithNoRoomAtAll) {
    EXPECT_EQ(placedIn(0).left(), 0);
    EXPECT_EQ(placedIn(3).left(), 0);
    EXPECT_EQ(placedIn(-20).left(), 0);
}

TEST(SplitterPlace, CopesWithAreasOfAnyWidth) { EXPECT_EQ(placedIn(2000000000).left(), 560000000); }

}  // namespace
}  // namespace tovar::test
