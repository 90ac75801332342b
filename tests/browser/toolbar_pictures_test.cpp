#include "browser/toolbar_pictures.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tovar::test {
namespace {

std::uint32_t at(const std::vector<std::uint32_t>& pixels, int size, int x, int y) {
    return pixels.at(static_cast<std::size_t>(y * size + x));
}

TEST(ToolbarPictures, HaveTheSizeThatIsAskedFor) {
    for (const BrowserCommand command : {Add, Extract, GoUp}) {
        for (const int size : {1, 16, 20, 24, 32, 48}) {
            EXPECT_EQ(drawToolbarPicture(command, size).size(), static_cast<std::size_t>(size * size));
        }
    }
}

TEST(ToolbarPictures, AreThereForButtonsOnly) {
    EXPECT_TRUE(drawToolbarPicture(kOpen, 16).empty());
    EXPECT_TRUE(drawToolbarPicture(Add, 0).empty());
    EXPECT_TRUE(drawToolbarPicture(Add, -16).empty());
    EXPECT_TRUE(drawToolbarPicture(Add, 1025).empty());
}

TEST(ToolbarPictures, AreOpaqueWhereSomethingIsDrawnAndEmptyElsewhere) {
    const auto goUp = drawToolbarPicture(GoUp, 16);
    EXPECT_EQ(at(goUp, 16, 0, 0), 0U);
    EXPECT_EQ(at(goUp, 16, 3, 12), 0xFFF2C75CU);  // the folder
    EXPECT_EQ(at(goUp, 16, 8, 8), 0xFF36A84AU);   // the arrow
    const auto add = drawToolbarPicture(Add, 32);
    EXPECT_EQ(at(add, 32, 0, 0), 0U);
    EXPECT_EQ(at(add, 32, 22, 22), 0xFF36A84AU);  // the plus
    EXPECT_EQ(at(add, 32, 6, 20), 0xFFF2C75CU);   // the box
    const auto extract = drawToolbarPicture(Extract, 48);
    EXPECT_EQ(at(extract, 48, 42, 6), 0xFF3A86D8U);  // the arrow
}

TEST(ToolbarPictures, HaveSoftEdges) {
    const auto pixels = drawToolbarPicture(Extract, 24);
    const auto isSoft = [](std::uint32_t pixel) { return pixel >> 24 != 0 && pixel >> 24 != 0xFF; };
    EXPECT_TRUE(std::ranges::any_of(pixels, isSoft));
}

TEST(ToolbarPictures, Differ) {
    EXPECT_NE(drawToolbarPicture(Add, 16), drawToolbarPicture(Extract, 16));
    EXPECT_NE(drawToolbarPicture(Add, 16), drawToolbarPicture(GoUp, 16));
}

}  // namespace
}  // namespace tovar::test
