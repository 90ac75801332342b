#include "browser/toolbar_pictures.h"

#include <array>
#include <cstddef>
#include <span>

namespace tovar {
namespace {

constexpr double kGrid = 16;  ///< pictures are drawn on paper of this size
constexpr int kSamples = 4;   ///< of a pixel, in either direction
constexpr int kLargest = 1024;

struct Point {
    double x, y;
};
struct Shape {
    std::uint32_t colour;  ///< 0xRRGGBB
    std::span<const Point> corners;
};

constexpr std::uint32_t kOutline = 0x7A5A1E, kPaper = 0xF2C75C, kLid = 0xD9A63A, kGreenEdge = 0x1E6B2B,
                        kGreen = 0x36A84A, kBlueEdge = 0x184C8C, kBlue = 0x3A86D8;

constexpr Point kBoxEdge[] = {{0.5, 4.5}, {13.5, 4.5}, {13.5, 15}, {0.5, 15}};
constexpr Point kBoxFront[] = {{1.5, 8}, {12.5, 8}, {12.5, 14}, {1.5, 14}};
constexpr Point kBoxLid[] = {{1.5, 5.5}, {12.5, 5.5}, {12.5, 7}, {1.5, 7}};
constexpr Point kPlusEdge[] = {{9, 7},     {13, 7},   {13, 9}, {15, 9},   {15, 13}, {13, 13},
                               {13, 15.5}, {9, 15.5}, {9, 13}, {6.5, 13}, {6.5, 9}, {9, 9}};
constexpr Point kPlus[] = {{10, 8},    {12, 8},    {12, 10}, {14, 10},  {14, 12},  {12, 12},
                           {12, 14.5}, {10, 14.5}, {10, 12}, {7.5, 12}, {7.5, 10}, {10, 10}};
constexpr Point kOutEdge[] = {{7, 0.5}, {15.5, 0.5}, {15.5, 9}, {13, 6.5}, {8, 11.5}, {4.5, 8}, {9.5, 3}};
constexpr Point kOut[] = {{9.4, 1.5}, {14.5, 1.5}, {14.5, 6.6}, {13, 5.1}, {8, 10.1}, {5.9, 8}, {10.9, 3}};
constexpr Point kFolderEdge[] = {{0.5, 3}, {6, 3}, {7.5, 5}, {15.5, 5}, {15.5, 15}, {0.5, 15}};
constexpr Point kFolder[] = {{1.5, 4}, {5.5, 4}, {7, 6}, {14.5, 6}, {14.5, 14}, {1.5, 14}};
constexpr Point kUpEdge[] = {{9, 1}, {14.5, 7.2}, {11.5, 7.2}, {11.5, 12.5}, {6.5, 12.5}, {6.5, 7.2}, {3.5, 7.2}};
constexpr Point kUp[] = {{9, 2.5}, {12.3, 6.2}, {10.5, 6.2}, {10.5, 11.5}, {7.5, 11.5}, {7.5, 6.2}, {5.7, 6.2}};

// From the bottom to the top.
constexpr Shape kAddShapes[] = {
    {kOutline, kBoxEdge}, {kPaper, kBoxFront}, {kLid, kBoxLid}, {kGreenEdge, kPlusEdge}, {kGreen, kPlus}};
constexpr Shape kExtractShapes[] = {
    {kOutline, kBoxEdge}, {kPaper, kBoxFront}, {kLid, kBoxLid}, {kBlueEdge, kOutEdge}, {kBlue, kOut}};
constexpr Shape kGoUpShapes[] = {{kOutline, kFolderEdge}, {kPaper, kFolder}, {kGreenEdge, kUpEdge}, {kGreen, kUp}};

std::span<const Shape> shapesOf(BrowserCommand command) {
    switch (command) {
        case Add:
            return kAddShapes;
        case Extract:
            return kExtractShapes;
        case GoUp:
            return kGoUpShapes;
        default:
            return {};
    }
}

// A ray from the point to the right leaves a shape once more than it enters it.
bool contains(std::span<const Point> corners, Point point) {
    bool inside = false;
    for (std::size_t i = 0, previous = corners.size() - 1; i < corners.size(); previous = i++) {
        const Point &a = corners[i], &b = corners[previous];
        if ((a.y > point.y) != (b.y > point.y) && point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

std::uint32_t pixel(std::span<const Shape> shapes, int column, int row, double scale) {
    std::array<std::uint32_t, 3> sums{};
    std::uint32_t covered = 0;
    for (int sample = 0; sample < kSamples * kSamples; ++sample) {
        const Point point{(column + (sample % kSamples + 0.5) / kSamples) * scale,
                          (row + (sample / kSamples + 0.5) / kSamples) * scale};
        for (auto shape = shapes.rbegin(); shape != shapes.rend(); ++shape) {
            if (!contains(shape->corners, point)) continue;
            for (std::size_t part = 0; part < sums.size(); ++part) sums[part] += (shape->colour >> (8 * part)) & 0xFF;
            ++covered;
            break;
        }
    }
    if (covered == 0) return 0;
    const std::uint32_t opacity = covered * 255 / (kSamples * kSamples);
    return opacity << 24 | (sums[2] / covered) << 16 | (sums[1] / covered) << 8 | sums[0] / covered;
}

}  // namespace

std::vector<std::uint32_t> drawToolbarPicture(BrowserCommand command, int size) {
    const auto shapes = shapesOf(command);
    if (shapes.empty() || size < 1 || size > kLargest) return {};
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) pixels.push_back(pixel(shapes, column, row, kGrid / size));
    }
    return pixels;
}

}  // namespace tovar
