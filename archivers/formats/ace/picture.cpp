#include "archivers/formats/ace/picture.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace archiver::ace {
namespace {

/// Wider rows are no pictures of the format's days; a claim must not take memory.
constexpr std::uint32_t kWidest = 4U << 20;

/// Ways to see a pixel: as it is, or as the difference from the plane before.
enum Kind : unsigned { kPlain = 0, kDifference = 1, kScaledDifference = 2, kKinds = 3 };

/// Reads a pixel of the previous plane as the kind weighs it.
int weigh(unsigned kind, int pixel) noexcept { return kind == kDifference ? pixel : pixel * 11 >> 4; }

/// Steps of a difference between neighbours, -4 to 4.
constexpr std::array<std::int8_t, 511> makeSteps() {
    std::array<std::int8_t, 511> steps{};
    for (int i = 0; i < 511; ++i) {
        const int difference = i - 255;
        const int size = difference < 0 ? -difference : difference;
        const int step = size == 0 ? 0 : size <= 2 ? 1 : size <= 6 ? 2 : size <= 20 ? 3 : 4;
        steps[static_cast<std::size_t>(i)] = static_cast<std::int8_t>(difference < 0 ? -step : step);
    }
    return steps;
}
constexpr std::array<std::int8_t, 511> kSteps = makeSteps();

int stepOf(int difference) noexcept { return kSteps[static_cast<unsigned>(difference + 255)]; }

/// Bits that a difference would take.
std::uint32_t costOf(int difference) noexcept {
    constexpr int kModulus = 256;
    const int wrapped = difference & (kModulus - 1);
    const int folded = wrapped < kModulus / 2 ? 2 * wrapped : 2 * (kModulus - wrapped) - 1;
    return static_cast<std::uint32_t>(std::bit_width(static_cast<unsigned>(folded)));
}

/// Pixels around the one that is to come.
struct Neighbours {
    int aboveLeft, above, aboveRight, left;
};

std::array<int, 4> predictionsOf(const Neighbours& around) noexcept {
    return {around.above, around.left, (around.above + around.left) >> 1,
            (around.above + around.left - around.aboveLeft) & 0xFF};
}

std::size_t contextOf(const Neighbours& around) noexcept {
    return static_cast<std::size_t>(std::abs(81 * stepOf(around.aboveRight - around.above) +
                                             9 * stepOf(around.above - around.aboveLeft) +
                                             stepOf(around.aboveLeft - around.left)));
}

bool readPixel(BitReader& reader, PictureContext& context, const Neighbours& around, int& pixel) {
    constexpr std::uint32_t kMostUsed = 128, kMostErrors = 127;
    ++context.used;
    const auto width = static_cast<unsigned>(std::bit_width(context.average / context.used));
    std::uint32_t coded = 0;
    if (!reader.takeGolombRice(width, coded)) return false;
    const int half = static_cast<int>(coded >> 1);
    const int offset = coded % 2 != 0 ? -half - 1 : half;

    const std::array<int, 4> predictions = predictionsOf(around);
    pixel = (predictions[context.predictor] + offset) & 0xFF;

    context.average += static_cast<std::uint32_t>(std::abs(offset));
    if (context.used == kMostUsed) {
        context.used /= 2;
        context.average /= 2;
    }
    bool tooMany = false;
    for (std::size_t i = 0; i < predictions.size(); ++i) {
        context.errors[i] += costOf(pixel - predictions[i]);
        tooMany = tooMany || context.errors[i] > kMostErrors;
    }
    context.predictor = static_cast<std::uint8_t>(std::min_element(context.errors.begin(), context.errors.end()) -
                                                  context.errors.begin());
    if (tooMany) {
        for (std::uint32_t& each : context.errors) each /= 2;
    }
    return true;
}

}  // namespace

ReturnCode Picture::start(BitReader& reader) {
    std::uint32_t width = 0;
    std::uint32_t planes = 0;
    if (!reader.takeGolombRice(12, width) || !reader.takeGolombRice(2, planes)) return kFileCrc;
    if (width == 0 || width > kWidest || planes == 0 || planes > width) return kFileCrc;
    width_ = width;
    planes_ = planes;
    row_.assign(width_ + planes_, 0);
    previous_.assign(width_ + planes_, 0);
    contexts_ = {};
    return kOk;
}

bool Picture::readPlane(BitReader& reader, std::size_t plane, unsigned kind) {
    Contexts& contexts = contexts_[plane == 0 ? 0 : 1];
    const auto aboveAt = [&](std::size_t column) {
        const int pixel = previous_[column];
        return kind == kPlain ? pixel : (128 + pixel - weigh(kind, previous_[column - 1])) & 0xFF;
    };
    const int first = kind == kPlain ? 0 : 128;
    Neighbours around{first, first, aboveAt(plane), first};
    int pixel = first;
    for (std::size_t column = plane; column < width_; column += planes_) {
        around = {around.above, around.aboveRight, aboveAt(column + planes_), pixel};
        if (!readPixel(reader, contexts[contextOf(around)], around, pixel)) return false;
        const int value = kind == kPlain ? pixel : pixel + weigh(kind, row_[column - 1]) - 128;
        row_[column] = static_cast<std::uint8_t>(value & 0xFF);
    }
    return true;
}

Run Picture::decode(BitReader& reader) {
    Run run;
    if (reader.take(1) == 0) {
        run.modeChange = true;
        if (reader.overrun()) run.code = kFileCrc;
        return run;
    }
    std::swap(row_, previous_);
    for (std::size_t plane = 0; plane < planes_; ++plane) {
        const unsigned kind = plane == 0 ? kPlain : reader.take(2);
        if (kind >= kKinds || !readPlane(reader, plane, kind) || reader.overrun()) {
            run.code = kFileCrc;
            return run;
        }
    }
    run.bytes = {reinterpret_cast<const char*>(row_.data()), width_};
    return run;
}

}  // namespace archiver::ace
