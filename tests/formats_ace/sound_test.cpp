#include "archivers/formats/ace/sound.h"

#include <gtest/gtest.h>

#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

constexpr unsigned kLzMode = 283, kSoundMode = 288;

TEST(AceSoundPredictor, RepeatsAtFirst) {
    ace::SoundPredictor predictor;
    EXPECT_EQ(predictor.prediction(), 0);
    predictor.update(5);
    EXPECT_EQ(predictor.prediction(), 5);
    predictor.update(7);
    EXPECT_EQ(predictor.prediction(), 7);
    predictor.update(200);
    EXPECT_EQ(predictor.prediction(), 200);
}

TEST(AceSoundPredictor, LearnsARamp) {
    // Every 32 samples the coefficient of the last difference grows by 1/8.
    ace::SoundPredictor predictor;
    for (int i = 1; i <= 255; ++i) {
        predictor.update(static_cast<std::uint8_t>(i));
        ASSERT_EQ(predictor.prediction(), i) << i;
    }
    predictor.update(0);
    EXPECT_EQ(predictor.prediction(), 1);
    for (int i = 1; i <= 300; ++i) {
        predictor.update(static_cast<std::uint8_t>(i & 0xFF));
        ASSERT_EQ(predictor.prediction(), (i + 1) & 0xFF) << i;
    }
}

Unpacked unpackOne(const BitWriter& bits, std::string content) {
    const AceFile file{.name = "x", .content = std::move(content), .packed = bits.bytes(), .method = 2};
    return unpack(*openBytes(aceArchive({}, {file})), "x");
}

TEST(AceSound, IsReadByHand) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 2, {'z', kLzMode}, {0}).modeChange(bits);
    bits.put(3, 8);
    // Symbols from 32 on are values, the lower ones runs of zeros; an even value adds its half, an odd one takes off.
    const auto values = bits.putTree(flatTree({2, 34, 35, 36, 132, kSoundMode}), 10);
    const auto high = bits.putTree(flatTree({33, 34}), 10);
    const auto behindZeros = bits.putTree(flatTree({4, kSoundMode}), 10);
    bits.put(8, 15);
    bits.put(values[36]);      // +2: 2
    bits.put(values[34]);      // +1: 3
    bits.put(values[2]);       // three times the same: 3 3 3
    bits.put(behindZeros[4]);  // +2: 5
    bits.put(values[35]);      // -2: 3
    bits.put(values[132]);     // +50: 53; from now on values count as high
    bits.put(high[33]);        // -1: 52
    bits.put(high[34]);        // +1: 53; the block ends, and the next one has its own trees
    const auto last = bits.putTree(flatTree({34}), 10);
    const auto ending = bits.putTree(flatTree({33, kSoundMode}), 10);
    bits.putTree(flatTree({0}), 10);
    bits.put(2, 15).put(ending[33]);  // -1: 52; still high
    bits.put(ending[kSoundMode]).put(0, 8);
    writer.literal(bits, 'z');
    EXPECT_EQ(last[34].width, 1U);
    const Unpacked unpacked = unpackOne(bits,
                                        "\x02\x03\x03\x03\x03\x05\x03"
                                        "5454z");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes,
              "\x02\x03\x03\x03\x03\x05\x03"
              "5454z");
}

TEST(AceSound, DamageShows) {
    {
        BitWriter bits;  // a symbol that does not exist
        Lz77Writer().block(bits, 1, {kLzMode}, {0}).modeChange(bits);
        bits.put(3, 8);
        const auto values = bits.putTree(flatTree({288, 289}), 10);
        bits.putTree(flatTree({0}), 10);
        bits.putTree(flatTree({0}), 10);
        bits.put(1, 15).put(values[289]);
        EXPECT_EQ(unpackOne(bits, "a").code, kHuffmanCode);
    }
    {
        BitWriter bits;  // a tree that is none
        Lz77Writer().block(bits, 1, {kLzMode}, {0}).modeChange(bits);
        bits.put(3, 8);
        bits.putTree({1, 1, 1}, 10);
        EXPECT_EQ(unpackOne(bits, "a").code, kHuffmanCode);
    }
    {
        BitWriter bits;  // blocks without symbols, for ever
        Lz77Writer().block(bits, 1, {kLzMode}, {0}).modeChange(bits);
        bits.put(3, 8);
        for (int i = 0; i < 100'000; ++i) bits.put(0, 32);
        EXPECT_EQ(unpackOne(bits, "a").code, kHuffmanCode);
    }
    {
        BitWriter bits;  // nothing
        Lz77Writer().block(bits, 1, {kLzMode}, {0}).modeChange(bits);
        bits.put(6, 8);
        EXPECT_NE(unpackOne(bits, "a").code, kOk);
    }
}

}  // namespace
}  // namespace archiver::test
