#include <gtest/gtest.h>

#include "archivers/formats/rar/filters.h"

/// Filters on bytes whose results were worked out by hand.
namespace archiver::rar {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes undone(FilterKind kind, Bytes bytes, std::uint32_t first = 0, std::uint32_t second = 0,
             std::uint32_t offset = 0) {
    const Filter filter{
        .kind = kind, .begin = 0, .length = static_cast<std::uint32_t>(bytes.size()), .first = first, .second = second};
    return undoFilter(filter, offset, bytes) ? bytes : Bytes{};
}

TEST(RarFilters, DeltaTakesChannelsApart) {
    EXPECT_EQ(undone(FilterKind::kDelta, {0xFF, 0xFF, 0xFF, 0x9C, 0x00, 0xF6}, 2), (Bytes{1, 100, 2, 100, 3, 110}));
    EXPECT_EQ(undone(FilterKind::kDelta, {0xFF, 0xFE, 0xFD}, 1), (Bytes{1, 3, 6}));
    EXPECT_EQ(undone(FilterKind::kDelta, {0xFF, 0xFE}, 1000), (Bytes{1, 2})) << "more channels than bytes";
    EXPECT_EQ(undone(FilterKind::kDelta, {0xFF}, 0), Bytes{}) << "no channel";
}

TEST(RarFilters, CallsBecomeRelative) {
    // The field stands at 0x1002; 0x2000 - 0x1002 = 0xFFE.
    EXPECT_EQ(undone(FilterKind::kCalls, {0x90, 0xE8, 0x00, 0x20, 0x00, 0x00, 0x90}, 0, 0, 0x1000),
              (Bytes{0x90, 0xE8, 0xFE, 0x0F, 0x00, 0x00, 0x90}));
    // Less than nothing, but not before the file: 16 MiB are added.
    EXPECT_EQ(undone(FilterKind::kCalls, {0xE8, 0xF0, 0xFF, 0xFF, 0xFF}, 0, 0, 0x1000),
              (Bytes{0xE8, 0xF0, 0xFF, 0xFF, 0x00}));
    EXPECT_EQ(undone(FilterKind::kCalls, {0xE8, 0xF0, 0xFF, 0xFF, 0xFF}), (Bytes{0xE8, 0xF0, 0xFF, 0xFF, 0xFF}))
        << "before the file";
    EXPECT_EQ(undone(FilterKind::kCalls, {0xE8, 0x00, 0x00, 0x00, 0x01}), (Bytes{0xE8, 0x00, 0x00, 0x00, 0x01}))
        << "beyond 16 MiB";
    EXPECT_EQ(undone(FilterKind::kCalls, {0x90, 0xE8, 0x10, 0x00, 0x00}), (Bytes{0x90, 0xE8, 0x10, 0x00, 0x00}))
        << "cut off";
    // What a call leads to is no call itself: its 4 bytes are left out.
    EXPECT_EQ(undone(FilterKind::kCalls, {0xE8, 0xE8, 0x00, 0x00, 0x00, 0x90, 0x90, 0x90, 0x90}),
              (Bytes{0xE8, 0xE7, 0x00, 0x00, 0x00, 0x90, 0x90, 0x90, 0x90}));
}

TEST(RarFilters, JumpsBecomeRelativeOnlyWithTheirOwnFilter) {
    const Bytes jump{0xE9, 0x11, 0x00, 0x00, 0x00};
    EXPECT_EQ(undone(FilterKind::kCallsAndJumps, jump), (Bytes{0xE9, 0x10, 0x00, 0x00, 0x00}));
    EXPECT_EQ(undone(FilterKind::kCalls, jump), jump);
    EXPECT_EQ(undone(FilterKind::kCallsAndJumps, {0xE8, 0x11, 0x00, 0x00, 0x00}),
              (Bytes{0xE8, 0x10, 0x00, 0x00, 0x00}));
}

TEST(RarFilters, PicturePredictsFromLeftAboveAndBetween) {
    // Two rows of two pixels: 6 bytes and 3 are told. The last pixel's channels take each another neighbour.
    const Bytes packed{0xF6, 0xF6, 0xF6, 0xF9, 0xF6, 0xCE, 0x30, 0xFF, 0xCE, 0xE2, 0x3A, 0xFB};
    EXPECT_EQ(undone(FilterKind::kPicture, packed, 9, 0), (Bytes{20, 10, 60, 80, 60, 140, 42, 12, 34, 98, 61, 116}));
    EXPECT_EQ(undone(FilterKind::kPicture, packed, 3, 0), Bytes{}) << "rows without pixels";
    EXPECT_EQ(undone(FilterKind::kPicture, packed, 13, 0), Bytes{}) << "rows longer than the picture";
    EXPECT_EQ(undone(FilterKind::kPicture, packed, 9, 3), Bytes{});
}

TEST(RarFilters, SoundLearns) {
    // Steps of 16; from the 34th byte on the first weight is 1, which adds an eighth of the last step.
    Bytes expected;
    for (int index = 1; index <= 33; ++index) expected.push_back(static_cast<std::uint8_t>(16 * index));
    expected.push_back(34);
    expected.push_back(52);
    EXPECT_EQ(undone(FilterKind::kSound, Bytes(35, 0xF0), 1), expected);
    EXPECT_EQ(undone(FilterKind::kSound, {0xF0, 0xF0, 0x01, 0x01}, 2), (Bytes{16, 255, 32, 254}));
    EXPECT_EQ(undone(FilterKind::kSound, {1}, 0), Bytes{}) << "no channel";
}

TEST(RarFilters, RefuseWhatTheMachineHasNoRoomFor) {
    const Bytes large(Filter::kMostBytes / 2 + 1, 1);
    EXPECT_EQ(undone(FilterKind::kDelta, large, 1), Bytes{});
    EXPECT_EQ(undone(FilterKind::kSound, large, 1), Bytes{});
    EXPECT_EQ(undone(FilterKind::kPicture, large, 9), Bytes{});
    EXPECT_EQ(undone(FilterKind::kCalls, large), large);
    EXPECT_EQ(undone(FilterKind::kUnknown, {1}), Bytes{});
}

}  // namespace
}  // namespace archiver::rar
