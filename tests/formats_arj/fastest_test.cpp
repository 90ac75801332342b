#include <gtest/gtest.h>

#include <random>

#include "archivers/formats/arj/arj_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_arj/support/arj_builder.h"
#include "formats_arj/support/bit_writer.h"

/// Method 4: fixed codes.
namespace archiver::test {
namespace {

Unpacked decoded(const std::string& packed, const std::string& expected) {
    const OpenResult archive =
        openArj(inMemory(arjArchive({}, {{.name = "a", .content = expected, .packed = packed, .method = 4}})), {});
    return unpack(*archive.reader, "a");
}

void expectDecoded(const std::string& packed, const std::string& expected) {
    const Unpacked unpacked = decoded(packed, expected);
    EXPECT_EQ(unpacked.code, kOk);
    EXPECT_EQ(unpacked.bytes.size(), expected.size());
    EXPECT_TRUE(unpacked.bytes == expected);
}

BitWriter& literal(BitWriter& bits, char byte) { return bits.put("0").put(static_cast<unsigned char>(byte), 8); }

TEST(ArjFastest, GivesLiterals) {
    BitWriter bits;
    for (const char each : std::string("Hello, archive.")) literal(bits, each);
    expectDecoded(bits.bytes(), "Hello, archive.");
}

TEST(ArjFastest, GivesMatchesOfEveryLengthClass) {
    // The value is the length less 2; the distance of 1 is "0" and nine zeros.
    const struct {
        const char* bits;
        std::size_t length;
    } cases[] = {{"10 0", 3},
                 {"10 1", 4},
                 {"110 00", 5},
                 {"110 11", 8},
                 {"1110 000", 9},
                 {"11110 0000", 17},
                 {"111110 00000", 33},
                 {"1111110 000000", 65},
                 {"1111110 111111", 128},
                 {"1111111 0000000", 129},
                 {"1111111 1111111", 256}};
    for (const auto& each : cases) {
        BitWriter bits;
        literal(bits, 'x').put(each.bits).put("0 000000000");
        literal(bits, 'y');
        expectDecoded(bits.bytes(), std::string(1 + each.length, 'x') + 'y');
    }
}

TEST(ArjFastest, GivesMatchesOfEveryDistanceClass) {
    const struct {
        const char* bits;
        std::size_t distance;
    } cases[] = {{"0 000000000", 1},           {"0 111111111", 512},        {"10 0000000000", 513},
                 {"10 1111111111", 1536},      {"110 00000000000", 1537},   {"110 11111111111", 3584},
                 {"1110 000000000000", 3585},  {"1110 111111111111", 7680}, {"1111 0000000000000", 7681},
                 {"1111 1111111111111", 15872}};
    for (const auto& each : cases) {
        BitWriter bits;
        std::string expected;
        std::mt19937 random(3);
        for (int index = 0; index < 15872; ++index) {
            expected += static_cast<char>(random());
            literal(bits, expected.back());
        }
        bits.put("110 10").put(each.bits);  // 7 bytes
        for (int index = 0; index < 7; ++index) expected += expected[expected.size() - each.distance];
        expectDecoded(bits.bytes(), expected);
    }
}

TEST(ArjFastest, RefusesMatchesBeforeTheStart) {
    BitWriter bits;
    bits.put("10 0 0 000000000");
    EXPECT_EQ(decoded(bits.bytes(), "aaa").code, kHuffmanCode);
    BitWriter more;
    literal(more, 'a').put("10 0 0 000000001");
    EXPECT_EQ(decoded(more.bytes(), "aaaa").code, kHuffmanCode);
}

TEST(ArjFastest, MayEndInTheMiddleOfAMatch) {
    BitWriter bits;
    literal(bits, 'a').put("1111111 1111111 0 000000000");
    expectDecoded(bits.bytes(), std::string(100, 'a'));
}

TEST(ArjFastest, IgnoresWhatFollows) {
    // What follows would be a match from too far back.
    BitWriter bits;
    literal(literal(literal(bits, 'a'), 'b'), 'c').put("11111111111111111111111111111111");
    expectDecoded(bits.bytes(),
                  "a"
                  "b"
                  "c");
    expectDecoded(bits.bytes(),
                  "a"
                  "b");
    expectDecoded(bits.bytes(), "a");
}

TEST(ArjFastest, EndsWhenTheDataEnds) {
    BitWriter bits;
    for (int index = 0; index < 100; ++index) literal(bits, 'b');
    const Unpacked unpacked = decoded(bits.bytes(), std::string(50000, 'b'));
    EXPECT_EQ(unpacked.code, kHuffmanCode);
    EXPECT_LE(unpacked.bytes.size(), 200U);
    EXPECT_EQ(decoded("", std::string(100, 'b')).code, kHuffmanCode);
}

TEST(ArjFastest, GivesWhatWasPacked) {
    BitWriter bits;
    std::string expected;
    std::mt19937 random(11);
    // Literals and matches of 3 to 10 bytes, from 1 to 512 back.
    while (expected.size() < 500000) {
        if (expected.size() < 512 || random() % 3 == 0) {
            expected += static_cast<char>(random());
            literal(bits, expected.back());
            continue;
        }
        const std::uint32_t value = 1 + random() % 2;
        const std::uint32_t position = random() % 512;
        bits.put("10").put(value - 1, 1).put("0").put(position, 9);
        for (std::uint32_t index = 0; index < value + 2; ++index) expected += expected[expected.size() - position - 1];
    }
    expectDecoded(bits.bytes(), expected);
}

}  // namespace
}  // namespace archiver::test
