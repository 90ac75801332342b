#include "browser/win32/splitter.h"

#include <gtest/gtest.h>

namespace tovar::test {
namespace {

constexpr RECT kArea{0, 30, 1000, 530};

TEST(Splitter, KeepsItsShareUntilItIsMoved) {
    Splitter splitter;
    splitter.layOut(kArea, 96);
    EXPECT_EQ(splitter.bar().left, 280);
    EXPECT_EQ(splitter.bar().right, 285);
    EXPECT_EQ(splitter.bar().top, 30);
    EXPECT_EQ(splitter.bar().bottom, 530);
    splitter.layOut({0, 30, 500, 530}, 96);
    EXPECT_EQ(splitter.bar().left, 140);
}

TEST(Splitter, GrowsWithTheResolution) {
    Splitter splitter;
    splitter.layOut(kArea, 192);
    EXPECT_EQ(splitter.bar().right - splitter.bar().left, 10);
}

TEST(Splitter, FollowsADragAndStaysThere) {
    Splitter splitter;
    splitter.layOut(kArea, 96);
    splitter.beginDrag(282);
    EXPECT_TRUE(splitter.drag(402));
    EXPECT_FALSE(splitter.drag(402));
    splitter.layOut(kArea, 96);
    EXPECT_EQ(splitter.bar().left, 400);
    splitter.endDrag();
    EXPECT_FALSE(splitter.drag(500));
    splitter.layOut({0, 30, 800, 530}, 96);
    EXPECT_EQ(splitter.bar().left, 400);
}

TEST(Splitter, LeavesRoomForBothPanes) {
    Splitter splitter;
    splitter.layOut(kArea, 96);
    splitter.beginDrag(280);
    splitter.drag(-500);
    splitter.layOut(kArea, 96);
    EXPECT_EQ(splitter.bar().left, 80);
    splitter.drag(5000);
    splitter.layOut(kArea, 96);
    EXPECT_EQ(splitter.bar().right, 920);
}

TEST(Splitter, CopesWithNoRoomAtAll) {
    Splitter splitter;
    splitter.layOut({0, 0, 0, 0}, 96);
    EXPECT_EQ(splitter.bar().left, 0);
    splitter.layOut({0, 0, 50, 10}, 96);
    EXPECT_GE(splitter.bar().left, 0);
}

TEST(Splitter, IsWhereItsBarIs) {
    Splitter splitter;
    splitter.layOut(kArea, 96);
    EXPECT_TRUE(splitter.contains({282, 100}));
    EXPECT_FALSE(splitter.contains({279, 100}));
    EXPECT_FALSE(splitter.contains({285, 100}));
    EXPECT_FALSE(splitter.contains({282, 29}));
}

}  // namespace
}  // namespace tovar::test
