#include <gtest/gtest.h>

#include "formats/support/listing.h"
#include "formats_ace/support/ace_builder.h"
#include "formats_ace/support/bit_writer.h"
#include "formats_ace/support/memory_disk.h"

namespace archiver::test {
namespace {

AceFile packed(const BitWriter& bits, std::string content) {
    return {.name = "x", .content = std::move(content), .packed = bits.bytes(), .method = 1};
}

Unpacked unpackOne(const AceFile& file) { return unpack(*openBytes(aceArchive({}, {file})), "x"); }

void expectContent(const BitWriter& bits, const std::string& content) {
    const Unpacked unpacked = unpackOne(packed(bits, content));
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes, content);
}

TEST(AceLz77, CopiesWithNewAndOldDistances) {
    BitWriter bits;
    Lz77Writer writer;
    // Distance values 3, 1, 0 and so on: one less than the bytes to go back. Lengths: 2 more than the symbol for near
    // ones and the first two of the history, 3 more for the others of it.
    writer.block(bits, 14, {'a', 'b', 'c', 'd', 256, 257, 258, 259, 260, 261, 262}, {0, 1, 5});
    writer.literals(bits, "abcd");
    writer.match(bits, 3, 1);  // abc; history 3 0 0 0
    writer.match(bits, 1, 0);  // bc -> "bc"; history 1 3 0 0
    writer.match(bits, 0, 5);  // ccccccc; history 0 1 3 0
    writer.literals(bits, "ab");
    writer.fromHistory(bits, 2, 1);  // distance 3, 4 bytes: "ccab"; history 3 0 1 0
    writer.fromHistory(bits, 0, 0);  // distance 3, 2 bytes: "cc"
    writer.fromHistory(bits, 1, 1);  // distance 0, 3 bytes: "ccc"; history 0 3 1 0
    writer.fromHistory(bits, 3, 0);  // distance 0, 3 bytes; history 0 0 3 1
    writer.fromHistory(bits, 3, 0);  // distance 1, 3 bytes
    expectContent(bits,
                  "abcdabcbcccccccc"
                  "abccabccccccccccc");
}

TEST(AceLz77, HistoryStartsWithZeros) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 3, {'a', 256, 259}, {0});
    writer.literal(bits, 'a').fromHistory(bits, 0, 0).fromHistory(bits, 3, 0);
    expectContent(bits, "aaaaaa");
}

TEST(AceLz77, FarMatchesAreLonger) {
    // 2, 3 and 4 bytes more than the length symbol: up to distance values of 255, of 8191, and beyond.
    for (const auto& [distance, added] : {std::pair{255U, 2U}, {256U, 3U}, {8191U, 3U}, {8192U, 4U}}) {
        std::string content;
        for (std::uint32_t i = 0; i <= distance; ++i) content += "abcdefgh"[(i * i / 7) % 8];
        BitWriter bits;
        Lz77Writer writer;
        writer.block(bits, distance + 2, {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', distanceSymbol(distance)}, {10});
        writer.literals(bits, content).match(bits, distance, 10);
        content += content.substr(0, 10 + added);
        expectContent(bits, content);
    }
}

TEST(AceLz77, LongestMatchesCrossPieces) {
    BitWriter bits;
    Lz77Writer writer;
    std::string content = "ab";
    writer.block(bits, 2 + 1000, {'a', 'b', 261}, {255});
    writer.literals(bits, content);
    for (int i = 0; i < 1000; ++i) writer.match(bits, 1, 255);
    while (content.size() < 2 + 1000 * 257) content += "ab"[content.size() % 2];
    expectContent(bits, content);
}

TEST(AceLz77, EndsInsideAMatch) {
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 2, {'a', 260}, {255}).literal(bits, 'a').match(bits, 0, 255);
    expectContent(bits, "aaaaa");
}

TEST(AceLz77, BlocksCanBeEmptyAndMany) {
    BitWriter bits;
    Lz77Writer writer;
    std::string content;
    for (int i = 0; i < 50; ++i) {
        writer.block(bits, 0, {'x'}, {0});
        const char letter = static_cast<char>('a' + i % 26);
        writer.block(bits, 2, {static_cast<unsigned char>(letter), 257}, {3});
        writer.literal(bits, letter).fromHistory(bits, 1, 3);
        content += std::string(6, letter);
    }
    expectContent(bits, content);
}

TEST(AceLz77, ReachesFourMebibytesBack) {
    constexpr std::uint32_t kFarthest = (4U << 20) - 1;
    std::string first;
    std::uint32_t random = 1;
    while (first.size() < 4'500'000) first += static_cast<char>((random = random * 1664525 + 1013904223) >> 24);
    BitWriter bits;
    Lz77Writer writer;
    writer.block(bits, 2, {distanceSymbol(kFarthest)}, {200});
    writer.match(bits, kFarthest, 200).match(bits, kFarthest, 200);
    const std::string content = first.substr(first.size() - kFarthest - 1, 2 * 204);
    AceFile second = packed(bits, content);
    const auto reader = openBytes(aceArchive({.flags = 0x8100}, {{.name = "first", .content = first}, second}));
    const Unpacked unpacked = unpack(*reader, "x");
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_TRUE(unpacked.bytes == content);
}

TEST(AceLz77, DamageShows) {
    const auto code = [](const BitWriter& bits, std::string content) {
        return unpackOne(packed(bits, std::move(content))).code;
    };
    {
        BitWriter bits;  // goes back to before the first byte
        Lz77Writer().block(bits, 2, {'a', 261}, {0}).literal(bits, 'a').match(bits, 1, 0);
        EXPECT_EQ(code(bits, "aaa"), kFileCrc);
    }
    {
        BitWriter bits;  // nothing to go back to
        Lz77Writer().block(bits, 1, {256}, {0}).fromHistory(bits, 0, 0);
        EXPECT_EQ(code(bits, "aa"), kFileCrc);
    }
    {
        BitWriter bits;  // a mode instruction where there are no modes
        Lz77Writer().block(bits, 2, {'a', 283}, {0}).literal(bits, 'a').modeChange(bits);
        bits.put(0, 8);
        EXPECT_EQ(code(bits, "aa"), kFileCrc);
    }
    {
        BitWriter bits;  // a symbol that does not exist
        bits.putTree(flatTree({284}));
        bits.putTree(flatTree({0}));
        bits.put(1, 15).put(0, 1);
        EXPECT_EQ(code(bits, "a"), kHuffmanCode);
    }
    {
        BitWriter bits;  // bits that are no code
        Lz77Writer().block(bits, 1, {'a'}, {0});
        bits.put(1, 1);
        EXPECT_EQ(code(bits, "a"), kHuffmanCode);
    }
    {
        BitWriter bits;  // a length that is none
        const auto main = bits.putTree(flatTree({'a', 256}));
        bits.putTree(flatTree({0}));
        bits.put(2, 15).put(main['a']).put(main[256]).put(1, 1);
        EXPECT_EQ(code(bits, "aaa"), kHuffmanCode);
    }
    {
        BitWriter bits;  // too few bytes
        Lz77Writer().block(bits, 1, {'a'}, {0}).literal(bits, 'a');
        EXPECT_NE(code(bits, std::string(1000, 'a')), kOk);
    }
    BitWriter empty;
    EXPECT_NE(code(empty, "a"), kOk);
}

TEST(AceLz77, EmptyBlocksOnlyComeToAnEnd) {
    // All zero bits are trees of one symbol and blocks of no symbols, again and again.
    const AceFile file{.name = "x", .packed = std::string(8 << 20, '\0'), .method = 1, .originalSize = 100};
    EXPECT_EQ(unpackOne(file).code, kHuffmanCode);
}

}  // namespace
}  // namespace archiver::test
