#include <gtest/gtest.h>

#include "archivers/formats/ace/bit_reader.h"
#include "archivers/formats/ace/code_table.h"
#include "formats_ace/support/bit_writer.h"

namespace archiver::test {
namespace {

class Bytes final : public ace::ByteSource {
public:
    explicit Bytes(std::string bytes) : bytes_(std::move(bytes)) {}
    std::size_t fill(std::span<char> into) override {
        const std::size_t count = bytes_.copy(into.data(), into.size(), at_);
        at_ += count;
        return count;
    }

private:
    std::string bytes_;
    std::size_t at_ = 0;
};

TEST(AceBits, AreTakenFromTheTopOfLittleEndianWords) {
    Bytes source(
        "\x04\x03\x02\x81"
        "\x01\0\0\0"
        "\xFF");
    ace::BitReader reader(source);
    EXPECT_EQ(reader.take(1), 1U);
    EXPECT_EQ(reader.take(7), 1U);
    EXPECT_EQ(reader.take(0), 0U);
    EXPECT_EQ(reader.take(8), 2U);
    EXPECT_EQ(reader.take(16), 0x0304U);
    EXPECT_EQ(reader.take(32), 1U);
    EXPECT_FALSE(reader.overrun());
}

TEST(AceBits, BehindTheEndAreZeros) {
    const std::string word("\x01\0\0\0", 4);
    Bytes source(word);
    ace::BitReader reader(source);
    EXPECT_EQ(reader.take(31), 0U);
    EXPECT_EQ(reader.peek32(), 0x80000000U);
    EXPECT_FALSE(reader.overrun());
    EXPECT_EQ(reader.take(1), 1U);
    EXPECT_FALSE(reader.overrun());
    EXPECT_EQ(reader.take(1), 0U);
    EXPECT_TRUE(reader.overrun());
    EXPECT_EQ(reader.take(32), 0U);
    EXPECT_TRUE(reader.overrun());
}

TEST(AceBits, OfAnUnfinishedWordAreFilledUp) {
    Bytes source("\x01\x02");
    ace::BitReader reader(source);
    EXPECT_EQ(reader.take(32), 0x00000201U);
    EXPECT_FALSE(reader.overrun());
    Bytes nothing("");
    ace::BitReader empty(nothing);
    EXPECT_EQ(empty.take(1), 0U);
    EXPECT_TRUE(empty.overrun());
}

TEST(AceBits, GoOnOverManyBuffers) {
    BitWriter bits;
    for (std::uint32_t i = 0; i < 40'000; ++i) bits.put(i % 8192, 13);
    Bytes source(bits.bytes());
    ace::BitReader reader(source);
    for (std::uint32_t i = 0; i < 40'000; ++i) ASSERT_EQ(reader.take(13), i % 8192);
    EXPECT_FALSE(reader.overrun());
}

TEST(AceBits, OfGolombRiceNumbersAreRead) {
    BitWriter bits;
    bits.put("101 0").put("11 1110").put("0").put("1110").put("0000 1");
    for (int i = 0; i < 40; ++i) bits.put(1, 1);
    bits.put("0");
    Bytes source(bits.bytes());
    ace::BitReader reader(source);
    std::uint32_t value = 99;
    EXPECT_TRUE(reader.takeGolombRice(3, value));
    EXPECT_EQ(value, 5U);
    EXPECT_TRUE(reader.takeGolombRice(2, value));
    EXPECT_EQ(value, 3U + 3 * 4);
    EXPECT_TRUE(reader.takeGolombRice(0, value));
    EXPECT_EQ(value, 0U);
    EXPECT_TRUE(reader.takeGolombRice(0, value));
    EXPECT_EQ(value, 3U);
    EXPECT_TRUE(reader.takeGolombRice(4, value));
    EXPECT_EQ(value, 41U * 16);
}

TEST(AceBits, OfEndlessNumbersAreRefused) {
    Bytes source(std::string(4 << 20, '\xFF'));
    ace::BitReader reader(source);
    std::uint32_t value = 0;
    EXPECT_FALSE(reader.takeGolombRice(0, value));
    EXPECT_FALSE(reader.takeGolombRice(12, value));
}

TEST(AceCodes, AreSortedInTheFormatsOwnOrder) {
    // From the description of the format.
    std::vector<std::uint8_t> widths = {1, 0, 0, 1, 2, 0, 0};
    std::vector<std::uint16_t> symbols = {0, 1, 2, 3, 4, 5, 6};
    ace::sortByWidth(widths, symbols);
    EXPECT_EQ(widths, (std::vector<std::uint8_t>{2, 1, 1, 0, 0, 0, 0}));
    EXPECT_EQ(symbols, (std::vector<std::uint16_t>{4, 0, 3, 5, 6, 2, 1}));
    ace::sortByWidth({}, {});
}

/// Reads a table of 11 bits over 284 symbols.
bool reads(const BitWriter& bits, ace::CodeTable<11, 284>& table) {
    Bytes source(bits.bytes());
    ace::BitReader reader(source);
    return table.read(reader);
}

unsigned symbolOf(const ace::CodeTable<11, 284>& table, std::uint32_t bits) {
    ace::BitWindow window{static_cast<std::uint64_t>(bits) << 32, 64, nullptr, nullptr};
    return table.take(window);
}

TEST(AceCodes, AreReadFromPackedWidths) {
    // Three symbols of widths 2, 2, 1: "lower" 0, "upper" 3, and a width tree of four codes of two bits. The sort turns
    // symbols of one width around, and codes are handed out from the last to the first: each is its own number.
    // Behind it the differences 2, 0, 2 modulo 3.
    BitWriter bits;
    bits.put(2, 9).put(0, 4).put(3, 4).put("010 010 010 010").put("10 00 10");
    bits.put(0, 32);
    ace::CodeTable<11, 284> table;
    ASSERT_TRUE(reads(bits, table));
    // The sort leaves 0, 1, 2 here; so 2 is 0, 1 is 10, 0 is 11.
    EXPECT_EQ(symbolOf(table, 0x00000000), 2U);
    EXPECT_EQ(symbolOf(table, 0x7FFFFFFF), 2U);
    EXPECT_EQ(symbolOf(table, 0x80000000), 1U);
    EXPECT_EQ(symbolOf(table, 0xC0000000), 0U);
}

TEST(AceCodes, OfOneSymbolTakeOneBit) {
    ace::CodeTable<11, 284> table;
    BitWriter one;
    one.putTree({0, 0, 0, 7});
    ASSERT_TRUE(reads(one, table));
    EXPECT_EQ(symbolOf(table, 0x00000000), 3U);
    EXPECT_EQ(symbolOf(table, 0x80000000), ace::CodeEntry::kNoSymbol);
    BitWriter none;
    none.putTree({0});
    ASSERT_TRUE(reads(none, table));
    EXPECT_EQ(symbolOf(table, 0x00000000), 0U);
}

TEST(AceCodes, TooManyOrTooWideAreRefused) {
    ace::CodeTable<11, 284> table;
    BitWriter three;
    three.putTree({1, 1, 1});
    EXPECT_FALSE(reads(three, table));
    BitWriter wide;
    wide.putTree({1, 12});
    EXPECT_FALSE(reads(wide, table));
    BitWriter widest;
    widest.putTree({1, 11});
    EXPECT_TRUE(reads(widest, table));
    // "lower" is added to each width.
    BitWriter lowered;
    lowered.put(1, 9).put(15, 4).put(1, 4).put("001 001").put("1 1").put(0, 32);
    EXPECT_TRUE(reads(lowered, table));  // no symbol with a code: the first gets one
    BitWriter cut;
    cut.put(283, 9);
    EXPECT_FALSE(reads(cut, table));
    BitWriter widthTree;
    widthTree.put(2, 9).put(0, 4).put(3, 4).put("001 001 001 001").put(0, 32);
    EXPECT_FALSE(reads(widthTree, table));
}

TEST(AceCodes, ZerosComeInRuns) {
    // "upper" 1: symbol 0 is a value, symbol 1 a run of 4 and more zeros; so all 285 widths are 0.
    BitWriter bits;
    bits.put(511, 9).put(0, 4).put(1, 4).put("001 001");
    for (int i = 0; i < 15; ++i) bits.put("0 1111");  // 19 zeros each
    bits.put(0, 32);
    ace::CodeTable<11, 284> table;
    EXPECT_TRUE(reads(bits, table));
}

}  // namespace
}  // namespace archiver::test
