#include <gtest/gtest.h>

#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

constexpr unsigned kMode = 283;

Unpacked unpackOne(const BitWriter& bits, std::string content) {
    const AceFile file{.name = "x", .content = std::move(content), .packed = bits.bytes(), .method = 2};
    return unpack(*openBytes(aceArchive({}, {file})), "x");
}

/// Goes to the picture mode and says how wide it is.
Lz77Writer putStart(BitWriter& bits, std::uint32_t width, std::uint32_t planes) {
    Lz77Writer writer;
    writer.block(bits, 3, {'z', kMode}, {0}).modeChange(bits);
    bits.put(7, 8).putGolombRice(width, 12).putGolombRice(planes, 2);
    return writer;
}

TEST(AcePicture, IsReadByHand) {
    BitWriter bits;
    Lz77Writer writer = putStart(bits, 3, 1);
    bits.put("1");
    bits.put("100 110");   // 0 and 10 more: 10
    bits.put("000 1110");  // another context; 0 and 12 more: 12
    bits.put("0001 0");    // the same context, which now looks to the left and expects 8 to 15: 12 and 1 less: 11
    bits.put("1");
    bits.put("000 0");  // as above: 10
    bits.put("010 0");  // 12 above and 1 more: 13
    bits.put("000 0");  // as above: 11
    bits.put("0").put(0, 8);
    writer.literal(bits, 'z');
    const Unpacked unpacked = unpackOne(bits, "\x0A\x0C\x0B\x0A\x0D\x0Bz");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, "\x0A\x0C\x0B\x0A\x0D\x0Bz");
}

TEST(AcePicture, RowAtTheEndIsCut) {
    BitWriter bits;
    putStart(bits, 2, 1);
    bits.put("1").put("100 110").put("000 1110");
    EXPECT_EQ(unpackOne(bits, "\x0A").code, kOk);
}

TEST(AcePicture, MeasuresAreClaims) {
    for (const auto& [width, planes] : {std::pair{0U, 1U}, {1U, 0U}, {1U, 2U}, {(4U << 20) + 1, 1U}}) {
        BitWriter bits;
        putStart(bits, width, planes);
        bits.put("1").put(0, 32);
        EXPECT_EQ(unpackOne(bits, "a").code, kFileCrc) << width << ' ' << planes;
    }
    BitWriter endless;
    Lz77Writer().block(endless, 3, {'z', kMode}, {0}).modeChange(endless);
    endless.put(7, 8);
    for (int i = 0; i < 10'000; ++i) endless.put(0xFFFFFFFF, 32);
    EXPECT_EQ(unpackOne(endless, "a").code, kFileCrc);
}

TEST(AcePicture, DamageShows) {
    {
        BitWriter bits;  // a kind of plane that does not exist
        putStart(bits, 2, 2);
        bits.put("1").put("000 0").put("11").put(0, 32);
        EXPECT_EQ(unpackOne(bits, std::string(2, '\0')).code, kFileCrc);
    }
    {
        BitWriter bits;  // rows that are not there
        putStart(bits, 1000, 1);
        bits.put("1");
        EXPECT_EQ(unpackOne(bits, std::string(1000, '\0')).code, kFileCrc);
    }
    {
        BitWriter bits;  // a difference of millions
        putStart(bits, 1, 1);
        for (int i = 0; i < 100'000; ++i) bits.put(0xFFFFFFFF, 32);
        EXPECT_EQ(unpackOne(bits, "a").code, kFileCrc);
    }
}

}  // namespace
}  // namespace archiver::test
